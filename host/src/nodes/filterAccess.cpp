#include "nodes/filterAccess.h"

#include "graph/graph.h"
#include "nodes/filterInput.h"
#include "nodes/shapeEvaluation.h"
#include "types/error.h"

#include <set>

namespace host {

namespace {

/// Nodes that were passed on the way, so that history that runs in a circle ends.
using Passed = std::set<const Node*>;

bool isFilter(const Node& node)
{
    return node.type().isA("geometryFilter");
}

DagNode* shapeFed(const Plug& source, Passed& passed);
DagNode* shapeBehind(const Plug& destination, Passed& passed);

DagNode* shapeFedThrough(const Plug& into, Passed& passed)
{
    Node& node = *into.node();
    if (isFilter(node)) {
        const bool geometry = into.isChild() && into.attribute()->longName == "inputGeometry";
        return geometry ? shapeFed(node.plug("outputGeometry").element(into.index(0)), passed) : nullptr;
    }
    if (node.asDag())
        return nullptr;
    if (!passed.insert(&node).second)
        return nullptr;
    for (const Graph::Connection& connection : node.graph().outputs(node))
        if (DagNode* shape = shapeFed(connection.source, passed))
            return shape;
    return nullptr;
}

DagNode* shapeFed(const Plug& source, Passed& passed)
{
    for (const Plug& into : source.destinations()) {
        const ShapeAttributes* names = shapeAttributes(*into.node());
        if (names && into.attribute()->longName == names->input)
            return into.node()->asDag();
    }
    for (const Plug& into : source.destinations())
        if (DagNode* shape = shapeFedThrough(into, passed))
            return shape;
    return nullptr;
}

DagNode* shapeBehind(const Plug& destination, Passed& passed)
{
    const Plug source = destination.source();
    if (source.isNull())
        return nullptr;
    Node& node = *source.node();
    if (node.asDag())
        return shapeAttributes(node) ? node.asDag() : nullptr;
    if (isFilter(node))
        return shapeBehind(node.plug("input").element(source.index(0)).child("inputGeometry"), passed);
    if (!passed.insert(&node).second)
        return nullptr;
    for (const Graph::Connection& connection : node.graph().inputs(node))
        if (DagNode* shape = shapeBehind(connection.destination, passed))
            return shape;
    return nullptr;
}

} // namespace

std::vector<std::uint32_t> filterIndices(Node& filter)
{
    return filter.plug("input").existingIndices();
}

DagNode* outputShape(Node& filter, std::uint32_t index)
{
    Passed passed;
    return shapeFed(filter.plug("outputGeometry").element(index), passed);
}

DagNode* inputShape(Node& filter, std::uint32_t index)
{
    Passed passed;
    return shapeBehind(filter.plug("input").element(index).child("inputGeometry"), passed);
}

std::optional<std::uint32_t> filterIndexOf(Node& filter, const DagNode& shape)
{
    for (const std::uint32_t index : filterIndices(filter))
        if (outputShape(filter, index) == &shape)
            return index;
    return std::nullopt;
}

Node* filterSet(Node& filter)
{
    for (const Plug& into : filter.plug("message").destinations())
        if (into.node()->type().isA("objectSet") && into.attribute()->longName == "usedBy")
            return into.node();
    return nullptr;
}

std::vector<int> filterMembers(Node& filter, std::uint32_t index)
{
    const Plug element = filter.plug("input").element(index);
    const auto geometry = std::dynamic_pointer_cast<const Geometry>(element.child("inputGeometry").data());
    if (!geometry)
        throw Error("'" + filter.name() + "' has no geometry " + std::to_string(index) + ".");
    PointGroup group = memberPoints(element, *geometry);
    if (group.all)
        for (std::size_t point = 0; point < geometry->count(); ++point)
            group.points.push_back(static_cast<int>(point));
    return std::move(group.points);
}

Plug offsetPlug(DagNode& shape, int point)
{
    const ShapeAttributes* names = shapeAttributes(shape);
    if (!names || point < 0)
        throw Error("'" + shape.uniqueName() + "' has no such control point.");
    Plug offsets = shape.plug(names->offsets);
    if (shape.plug(names->input).isDestination()) {
        const Plug tweak = shape.plug("tweakLocation").source();
        if (!tweak.isNull() && tweak.isElement())
            offsets = tweak.array();
    }
    return offsets.element(static_cast<std::uint32_t>(point));
}

} // namespace host
