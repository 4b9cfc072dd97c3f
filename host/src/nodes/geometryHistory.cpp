#include "nodes/geometryHistory.h"

#include "graph/graph.h"
#include "nodes/shapeEvaluation.h"
#include "types/error.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace host {

namespace {

/// Places that were passed, so that a walk ends that goes round. Histories are short, as a rule.
class Passed {
public:
    /// False when the place has been passed before.
    bool add(const Plug& output)
    {
        const Place place(output.node(), output.attribute(), output.logicalIndex());
        if (few.size() < kFew) {
            if (std::find(few.begin(), few.end(), place) != few.end())
                return false;
            few.push_back(place);
            return true;
        }
        if (many.empty())
            many.insert(few.begin(), few.end());
        return many.insert(place).second;
    }

private:
    using Place = std::tuple<const Node*, const Attribute*, std::uint32_t>;
    static constexpr std::size_t kFew = 32;
    std::vector<Place> few;
    std::set<Place> many;
};

bool isFilter(const Node& node)
{
    return node.type().isA("geometryFilter");
}

Plug geometryOf(Node& filter, std::uint32_t index)
{
    return filter.plug("input").element(index).child("inputGeometry");
}

/// The shape that takes its geometry from the plug itself.
DagNode* shapeAt(const Plug& output)
{
    for (const Plug& into : output.destinations()) {
        const ShapeAttributes* names = shapeAttributes(*into.node());
        if (names && into.attribute()->longName == names->input)
            return into.node()->asDag();
    }
    return nullptr;
}

/// Where geometry goes on from an input: through a deformer as the same geometry, through nodes that nobody
/// knows by any way.
void addOutputs(const Plug& into, std::vector<Plug>& found)
{
    Node& node = *into.node();
    if (node.asDag())
        return;
    if (!isFilter(node)) {
        for (const Graph::Connection& connection : node.graph().outputs(node))
            found.push_back(connection.source);
    } else if (into.isChild() && into.attribute()->longName == "inputGeometry") {
        found.push_back(node.plug("outputGeometry").element(into.index(0)));
    }
}

/// A node that nobody knows may have its geometry from anywhere: what came first is asked first.
void addInputs(Node& node, std::vector<Plug>& waiting)
{
    const std::vector<Graph::Connection> inputs = node.graph().inputs(node);
    for (auto connection = inputs.rbegin(); connection != inputs.rend(); ++connection)
        waiting.push_back(connection->destination);
}

} // namespace

bool GeometryStep::fromFilter() const
{
    return isFilter(node());
}

bool GeometryStep::fromShape() const
{
    return node().asDag() != nullptr;
}

GeometryHistory::GeometryHistory(const Plug& input)
{
    follow(input);
}

GeometryHistory::GeometryHistory(Node& shape)
{
    if (const ShapeAttributes* names = shapeAttributes(shape))
        follow(shape.plug(names->input));
}

void GeometryHistory::follow(Plug input)
{
    Passed passed;
    while (!input.isNull()) {
        const Plug source = input.source();
        if (source.isNull())
            return;
        if (!passed.add(source)) {
            circular = true;
            return;
        }
        steps.push_back({source, input});
        input = geometryInput(source);
    }
}

Plug geometryInput(const Plug& output)
{
    Node& node = *output.node();
    if (isFilter(node))
        return geometryOf(node, output.isElement() ? output.logicalIndex() : 0);
    if (const ShapeAttributes* names = shapeAttributes(node))
        return node.plug(names->input);
    const Attribute* const input = node.findAttribute("inputGeometry");
    return input && !input->parent ? Plug(&node, input) : Plug();
}

void GeometryHistory::requireEnd() const
{
    if (circular)
        throw Error("The history of " + steps.front().input.node()->uniqueName() + " runs in a circle.");
}

std::vector<Node*> deformersOf(Node& shape)
{
    const GeometryHistory history(shape);
    history.requireEnd();
    std::vector<Node*> found;
    for (const GeometryStep& step : history.steps) {
        if (step.fromShape())
            break;
        if (step.fromFilter())
            found.push_back(&step.node());
    }
    return found;
}

std::optional<std::uint32_t> indexInHistory(Node& shape, const Node& deformer)
{
    for (const GeometryStep& step : GeometryHistory(shape).steps) {
        if (step.fromShape())
            break;
        if (&step.node() == &deformer && step.source.isElement())
            return step.source.logicalIndex();
    }
    return std::nullopt;
}

DagNode* shapeBehind(const Plug& input)
{
    Passed passed;
    std::vector<Plug> waiting{input};
    while (!waiting.empty()) {
        const Plug source = waiting.back().source();
        waiting.pop_back();
        if (source.isNull() || !passed.add(source))
            continue;
        Node& node = *source.node();
        if (shapeAttributes(node))
            return node.asDag();
        const Plug known = geometryInput(source);
        if (!known.isNull())
            waiting.push_back(known);
        else if (!node.asDag())
            addInputs(node, waiting);
    }
    return nullptr;
}

DagNode* shapeFedBy(const Plug& output)
{
    Passed passed;
    std::vector<Plug> waiting{output};
    while (!waiting.empty()) {
        const Plug source = waiting.back();
        waiting.pop_back();
        if (!passed.add(source))
            continue;
        if (DagNode* shape = shapeAt(source))
            return shape;
        std::vector<Plug> next;
        for (const Plug& into : source.destinations())
            addOutputs(into, next);
        waiting.insert(waiting.end(), next.rbegin(), next.rend());
    }
    return nullptr;
}

} // namespace host
