#include "render/weightMap.h"

#include "graph/graph.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "mel/interpreter.h"
#include "nodes/filterAccess.h"
#include "nodes/geometry.h"
#include "nodes/skinWeights.h"
#include "render/layerMap.h"
#include "session.h"
#include "tools/tools.h"
#include "types/error.h"

#include <algorithm>

namespace workbench {

namespace {

using host::Node;
using host::Plug;
using Weights = std::optional<std::vector<double>>;

constexpr const char* kToolCommand = "morvaneContext";

std::string ask(host::Session& session, const char* flag)
{
    const std::string question =
        std::string(kToolCommand) + " -q -" + flag + " \"" + session.tools().current() + "\"";
    return session.mel().execute(question).toString();
}

/// A deformer that works on a shape, with the index of the shape's geometry there.
struct Deformation {
    Node* deformer = nullptr;
    std::uint32_t geometry = 0;
};

Deformation deformationBy(Node* deformer, const host::DagNode& shape)
{
    if (!deformer || !deformer->findAttribute("inputGeometry"))
        return {};
    const auto geometry = host::filterIndexOf(*deformer, shape);
    return geometry ? Deformation{deformer, *geometry} : Deformation{};
}

Deformation skinOf(host::Graph& graph, const host::DagNode& shape)
{
    for (const host::Ref<Node>& node : graph.nodes()) {
        if (!node->type().isA("skinCluster"))
            continue;
        const Deformation found = deformationBy(node.get(), shape);
        if (found.deformer)
            return found;
    }
    return {};
}

/// The logical index under which a skin knows an influence.
std::optional<std::uint32_t> columnOf(Node& skin, const std::string& influencePath)
{
    const Node* influence = skin.graph().find(influencePath);
    const host::SkinInfluences influences(skin);
    const std::uint32_t physical = influence && influence->asDag() ? influences.physical(*influence->asDag())
                                                                   : host::SkinInfluences::kNone;
    if (physical != host::SkinInfluences::kNone)
        return influences.logical[physical];
    return std::nullopt;
}

std::vector<double> numbersOf(const Plug& array, std::size_t count)
{
    std::vector<double> weights(count, array.attribute()->defaultNumber);
    if (const host::NumericArray* numbers = array.numbers())
        numbers->gather(nullptr, count, weights.data());
    return weights;
}

/// A map of a deformer that is shaped as its weight list: an array in an element of an array of compounds.
Weights namedMap(const Deformation& by, const std::string& name, std::size_t count)
{
    const host::Attribute* map = by.deformer->findAttribute(name);
    if (!map || !map->flags.array || !map->parent || !map->parent->flags.array)
        return std::nullopt;
    return numbersOf(by.deformer->plug(map->parent->longName).element(by.geometry).child(map->longName),
                     count);
}

Weights influenceMap(const Deformation& skin, const std::string& influence, std::size_t count)
{
    const auto column = columnOf(*skin.deformer, influence);
    if (!column)
        return std::nullopt;
    const host::WeightRows* rows = skin.deformer->plug("weightList").rows();
    std::vector<double> weights(count, 0.0);
    for (std::size_t point = 0; rows && point < count; ++point)
        weights[point] = rows->get(static_cast<std::uint32_t>(point), *column);
    return weights;
}

std::optional<std::uint32_t> targetIndex(Node& blendShape, const std::string& target)
{
    try {
        const Plug weight = blendShape.plugByPath(target);
        if (weight.isElement() && weight.attribute()->longName == "weight")
            return weight.logicalIndex();
    } catch (const host::Error&) {
        // A target that is not there is the tool's to report; it has no map.
    }
    return std::nullopt;
}

/// Targets are edited on the first geometry, whichever the shape.
Weights blendShapeMap(const Deformation& by, const EditedWeights& edited, std::size_t count)
{
    if (!by.deformer->findAttribute("inputTarget"))
        return std::nullopt;
    const Plug first = by.deformer->plug("inputTarget").element(0);
    if (edited.mode == "blendShapeBase")
        return numbersOf(first.child("baseWeights"), count);
    const auto target = targetIndex(*by.deformer, edited.target);
    if (!target)
        return std::nullopt;
    return numbersOf(first.child("inputTargetGroup").element(*target).child("targetWeights"), count);
}

Weights skinModeMap(host::Session& session, host::DagNode& shape, const Deformation& skin,
                    const EditedWeights& edited, std::size_t count)
{
    if (edited.mode == "skinCluster")
        return influenceMap(skin, edited.influence, count);
    if (edited.mode == "dualQuaternion")
        return numbersOf(skin.deformer->plug("blendWeights"), count);
    std::string paintTarget = edited.mode == "ngMask" ? "mask" : "dq";
    if (edited.mode == "ngInfluence") {
        const auto column = columnOf(*skin.deformer, edited.influence);
        if (!column)
            return std::nullopt;
        paintTarget = std::to_string(*column);
    }
    return layerMap(session, shape, edited.layer, paintTarget, count);
}

bool isSkinMode(const std::string& mode)
{
    return mode == "skinCluster" || mode == "dualQuaternion" || mode.compare(0, 2, "ng") == 0;
}

Weights deformerModeMap(const Deformation& by, const EditedWeights& edited, std::size_t count)
{
    if (edited.mode == "default" || edited.mode == "plug")
        return namedMap(by, edited.mode == "default" ? "weights" : edited.plug, count);
    return blendShapeMap(by, edited, count);
}

std::vector<bool> membersOf(const Deformation& by, std::size_t count)
{
    const std::vector<int> points = host::filterMembers(*by.deformer, by.geometry);
    if (points.size() == count)
        return {};
    std::vector<bool> members(count, false);
    for (const int point : points)
        members.at(static_cast<std::size_t>(point)) = true;
    return members;
}

} // namespace

Color WeightMap::color(std::size_t point) const
{
    return isMember(point) ? weightColor(static_cast<float>(weights[point])) : kOutsiderColor;
}

EditedWeights editedWeights(host::Session& session)
{
    const std::string current = "\"" + session.tools().current() + "\"";
    EditedWeights edited;
    try {
        if (!session.mel().knows(kToolCommand) ||
            !session.mel().execute(std::string(kToolCommand) + " -exists " + current).toBool())
            return edited;
        edited.deformer = ask(session, "deformer");
        edited.plug = ask(session, "plug");
        edited.target = ask(session, "target");
        edited.layer = ask(session, "ngLayer");
        edited.influence = ask(session, "influence");
        edited.mode = ask(session, "weightMode");
    } catch (const host::Error&) {
        // Another plug-in's command of that name: it is not the tool whose weights can be shown.
        return {};
    }
    return edited;
}

std::optional<WeightMap> weightMap(host::Session& session, host::DagNode& shape, const EditedWeights& edited)
{
    const host::GeometryRef geometry = edited.mode.empty() ? nullptr : host::shapeGeometry(shape);
    if (!geometry)
        return std::nullopt;
    const bool skinned = isSkinMode(edited.mode);
    host::Graph& graph = session.graph();
    const Deformation by = skinned ? skinOf(graph, shape) : deformationBy(graph.find(edited.deformer), shape);
    if (!by.deformer)
        return std::nullopt;
    Weights weights = skinned ? skinModeMap(session, shape, by, edited, geometry->count())
                              : deformerModeMap(by, edited, geometry->count());
    if (!weights)
        return std::nullopt;
    return WeightMap{std::move(*weights), membersOf(by, geometry->count())};
}

} // namespace workbench
