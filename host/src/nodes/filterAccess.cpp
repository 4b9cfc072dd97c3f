#include "nodes/filterAccess.h"

#include "graph/graph.h"
#include "nodes/filterInput.h"
#include "nodes/geometryHistory.h"
#include "nodes/shapeEvaluation.h"
#include "types/error.h"

namespace host {

std::vector<std::uint32_t> filterIndices(Node& filter)
{
    return filter.plug("input").existingIndices();
}

DagNode* outputShape(Node& filter, std::uint32_t index)
{
    return shapeFedBy(filter.plug("outputGeometry").element(index));
}

DagNode* inputShape(Node& filter, std::uint32_t index)
{
    return shapeBehind(filter.plug("input").element(index).child("inputGeometry"));
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
