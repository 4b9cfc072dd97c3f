#include "render/weightMap.h"

#include "graph/graph.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "mel/interpreter.h"
#include "nodes/geometry.h"
#include "session.h"
#include "tools/tools.h"
#include "types/error.h"

#include <functional>

namespace workbench {

namespace {

using host::Node;
using host::Plug;

constexpr const char* kToolCommand = "morvaneContext";
constexpr int kLongestHistory = 200;

std::string ask(host::Session& session, const char* flag)
{
    const std::string question =
        std::string(kToolCommand) + " -q -" + flag + " \"" + session.tools().current() + "\"";
    return session.mel().execute(question).toString();
}

/// The plug that feeds the geometry of a shape, or that a deformer (or history node) reads it from.
Plug geometryInput(Node& node, std::uint32_t geometry)
{
    if (node.findAttribute("inputGeometry")) {
        Plug input = node.plug("inputGeometry");
        // Of a deformer it is a child of the array "input".
        if (!input.attribute()->parent)
            return input;
        return node.plug("input").element(geometry).child("inputGeometry");
    }
    for (const char* name : {"inMesh", "create", "latticeInput"}) {
        if (node.findAttribute(name))
            return node.plug(name);
    }
    return {};
}

/// A node upstream of a shape that a test accepts, with the index of the shape's geometry there.
struct History {
    Node* node = nullptr;
    std::uint32_t geometry = 0;
};

History upstream(Node& shape, const std::function<bool(Node&)>& accepts)
{
    Plug input = geometryInput(shape, 0);
    for (int step = 0; step < kLongestHistory && !input.isNull(); ++step) {
        const Plug source = input.source();
        if (source.isNull())
            break;
        const bool indexed = source.isElement();
        const History found{source.node(), indexed ? source.logicalIndex() : 0};
        if (accepts(*found.node))
            return found;
        input = geometryInput(*found.node, found.geometry);
    }
    return {};
}

std::optional<std::uint32_t> logicalIndexOf(Node& skin, Node& influence)
{
    const Plug matrices = skin.plug("matrix");
    for (const std::uint32_t logical : matrices.existingIndices()) {
        const Plug source = matrices.element(logical).source();
        if (!source.isNull() && source.node() == &influence)
            return logical;
    }
    return std::nullopt;
}

std::optional<std::vector<double>> skinMap(host::DagNode& shape, std::size_t count, Node& influence)
{
    const History skin = upstream(shape, [](Node& node) { return node.type().isA("skinCluster"); });
    const auto column = skin.node ? logicalIndexOf(*skin.node, influence) : std::nullopt;
    if (!column)
        return std::nullopt;
    const host::WeightRows* rows = skin.node->plug("weightList").rows();
    std::vector<double> weights(count, 0.0);
    for (std::size_t vertex = 0; rows && vertex < count; ++vertex)
        weights[vertex] = rows->get(static_cast<std::uint32_t>(vertex), *column);
    return weights;
}

std::optional<std::vector<double>> deformerMap(host::DagNode& shape, std::size_t count,
                                               const std::string& deformer)
{
    const History found = upstream(shape, [&](Node& node) { return node.name() == deformer; });
    if (!found.node || !found.node->findAttribute("weightList"))
        return std::nullopt;
    const Plug list = found.node->plug("weightList").element(found.geometry).child("weights");
    std::vector<double> weights(count, list.attribute()->defaultNumber);
    if (const host::NumericArray* numbers = list.numbers())
        numbers->gather(nullptr, count, weights.data());
    return weights;
}

} // namespace

EditedWeights editedWeights(host::Session& session)
{
    const std::string current = "\"" + session.tools().current() + "\"";
    EditedWeights edited;
    try {
        if (!session.mel().knows(kToolCommand) ||
            !session.mel().execute(std::string(kToolCommand) + " -exists " + current).toBool())
            return edited;
        edited.mode = ask(session, "weightMode");
        edited.deformer = ask(session, "deformer");
        edited.influence = ask(session, "influence");
    } catch (const host::Error&) {
        // Another plug-in's command of that name: it is not the tool whose weights can be shown.
        return {};
    }
    return edited;
}

std::optional<std::vector<double>> weightMap(host::DagNode& shape, const EditedWeights& edited)
{
    const host::GeometryRef geometry = host::shapeGeometry(shape);
    if (!geometry)
        return std::nullopt;
    if (edited.mode == "skinCluster" && !edited.influence.empty()) {
        Node* influence = shape.graph().find(edited.influence);
        return influence ? skinMap(shape, geometry->count(), *influence) : std::nullopt;
    }
    if (edited.mode == "default" && !edited.deformer.empty())
        return deformerMap(shape, geometry->count(), edited.deformer);
    return std::nullopt;
}

} // namespace workbench
