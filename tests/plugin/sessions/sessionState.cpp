#include "plugin/sessions/sessionState.h"

#include "graph/graph.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "mel/interpreter.h"
#include "messages.h"
#include "nodes/geometry.h"
#include "nodes/shapeEvaluation.h"
#include "selection/selectionState.h"
#include "support/weights.h"
#include "types/error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <utility>

namespace testing_support {

namespace {

using host::Node;
using host::Plug;

class Collector {
public:
    Collector(Node& deformer, StoredWeights& found) : owner(deformer.uuid()), weights(found)
    {
        for (const auto& root : deformer.type().roots)
            if (!root->flags.output)
                below(Plug(&deformer, root.get()));
    }

private:
    void below(const Plug& plug)
    {
        if (plug.isArray()) {
            array(plug);
            return;
        }
        const auto& children = plug.attribute()->children;
        for (unsigned position = 0; position < children.size(); ++position)
            below(plug.child(position));
    }

    void array(const Plug& plug)
    {
        const std::string path = owner + plug.attributePath(false);
        if (const host::NumericArray* numbers = plug.numbers()) {
            for (const std::uint32_t index : numbers->indices())
                weights[{path, 0, index}] = numbers->get(index);
        } else if (const host::WeightRows* rows =
                       plug.attribute()->flags.weightRows ? plug.rows() : nullptr) {
            for (const std::uint32_t row : rows->rowIndices())
                for (const auto& entry : rows->row(row))
                    weights[{path, static_cast<int>(entry.column), row}] = entry.weight;
        } else {
            for (const std::uint32_t index : plug.storedIndices())
                below(plug.element(index));
        }
    }

    std::string owner;
    StoredWeights& weights;
};

/// Without what every save writes anew: the lines of the head.
std::string withoutHead(const std::string& text)
{
    std::string kept;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (line.compare(0, 2, "//") != 0 && line.compare(0, 9, "fileInfo ") != 0)
            kept += line + "\n";
    return kept;
}

/// Nodes keep results of what feeds them, in the scene: everybody looks at everything.
void lookAtAllShapes(host::Session& session)
{
    for (const auto& node : session.graph().nodes())
        try {
            if (node->type().isA("geometryFilter"))
                node->evaluate(*node->findAttribute("outputGeometry"));
            else if (host::shapeAttributes(*node))
                host::shapeGeometry(*node);
        } catch (const host::Error&) {
            // A history that cannot be computed.
        }
}

} // namespace

std::string stateOf(host::Session& session)
{
    lookAtAllShapes(session);
    std::string state = withoutHead(sceneText(session)) + "selected:";
    for (const std::string& name : session.mel().execute("ls -sl").toStringArray())
        state += " " + name;
    return state + "\n";
}

std::string sceneOf(const std::string& state)
{
    return state.substr(0, state.rfind("selected:"));
}

StoredWeights storedWeights(host::Session& session)
{
    StoredWeights weights;
    for (const auto& node : session.graph().nodes())
        if (node->type().isA("geometryFilter"))
            Collector(*node, weights);
    return weights;
}

std::string notFinite(const StoredWeights& weights)
{
    for (const auto& [place, value] : weights)
        if (!std::isfinite(value))
            return std::get<0>(place) + " of point " + std::to_string(std::get<2>(place));
    return {};
}

std::set<int> changedPoints(const StoredWeights& before, const StoredWeights& after)
{
    std::set<int> points;
    for (const auto& [one, other] : {std::pair(&before, &after), std::pair(&after, &before)})
        for (const auto& [place, value] : *one) {
            const auto found = other->find(place);
            // A weight that is written for the first time had the attribute's default, which is 1 or 0.
            const bool same = found == other->end() ? value == 0.0 || value == 1.0 : found->second == value;
            if (!same)
                points.insert(static_cast<int>(std::get<2>(place)));
        }
    return points;
}

std::set<int> selectedPoints(host::Session& session)
{
    std::set<int> points;
    for (const host::SelectionItem& item : session.selection().active().items)
        if (item.component && item.node->asDag())
            for (const int point : host::pointIndices(*item.node->asDag(), item.component.get()))
                points.insert(point);
    return points;
}

std::string firstDifference(const std::string& before, const std::string& after)
{
    std::istringstream one(before), other(after);
    std::string left, right;
    do {
        left = right = "(nothing)";
        std::getline(one, left);
        std::getline(other, right);
    } while (left == right && one && other);
    return left == right ? "" : left + "\n   and " + right;
}

Reopening::Reopening() : path(::testing::TempDir() + "reopening" + std::to_string(getpid()) + ".ma")
{
    session.messages().setSink([](host::Messages::Kind, const std::string&) {});
    session.messages().setPrintSink([](const std::string&) {});
}

std::string Reopening::operator()(const std::string& text)
{
    host::Session& before = host::Session::current();
    session.makeCurrent();
    std::ofstream(path, std::ios::binary) << text;
    session.mel().execute("file -f -open \"" + path + "\"");
    std::remove(path.c_str());
    std::string again = sceneText(session);
    before.makeCurrent();
    return again;
}

} // namespace testing_support
