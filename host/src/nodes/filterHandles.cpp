#include "nodes/filterHandles.h"

#include "graph/node.h"
#include "nodes/filterAccess.h"
#include "nodes/geometry.h"
#include "selection/component.h"
#include "types/api.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

/// Whether indices all are points. Without an early end, so that the compiler takes several at a time: the
/// sign bit tells of an index that is negative or beyond the last point.
bool areWithin(const std::vector<int>& indices, std::size_t count)
{
    const std::uint32_t last = static_cast<std::uint32_t>(count) - 1u;
    std::uint32_t off = count > 0 ? 0u : ~0u;
    for (const int index : indices)
        off |= static_cast<std::uint32_t>(index) | (last - static_cast<std::uint32_t>(index));
    return indices.empty() || off >> 31u == 0;
}

/// Points are looked up in what comes into the deformer: asking the shape would deform it at every call.
/// Empty when the component reaches beyond.
PointList selectedPoints(Node& filter, std::uint32_t index, const Component* component)
{
    const Plug input = filter.plug("input").element(index).child("inputGeometry");
    const auto geometry = std::dynamic_pointer_cast<const Geometry>(input.data());
    if (!geometry)
        return {};
    if (!component || component->dimension() > 1)
        return PointList(pointIndices(*geometry, component));
    const bool within = areWithin(component->elements, static_cast<std::size_t>(pointSizes(*geometry)[0]));
    return within ? PointList(Ref<const Component>(component)) : PointList();
}

PointSelection selectionOn(Node& filter, DagNode& shape, std::uint32_t index, const MObject& handle)
{
    const Component* component = nullptr;
    if (!handle.isNull()) {
        component = dynamic_cast<const Component*>(Api::object(handle));
        if (!component || component->apiType() != pointComponentType(shape))
            throw Error("The component holds no points of '" + shape.uniqueName() + "'.");
    }
    PointSelection selection{&shape, index, selectedPoints(filter, index, component)};
    if (component && selection.points.size() != component->count())
        throw Error("The component reaches beyond '" + shape.uniqueName() + "'.");
    return selection;
}

} // namespace

Node& filterOf(const MFnBase& set)
{
    auto* node = dynamic_cast<Node*>(Api::object(set));
    if (!node || !node->alive())
        throw Error("The function set is attached to no deformer.");
    return *node;
}

PointSelection pointSelection(Node& filter, const MDagPath& path, const MObject& component)
{
    DagNode* node = Api::node(path);
    DagNode* shape = node ? componentShape(*node) : nullptr;
    if (!shape)
        throw Error("The path leads to no shape.");
    const auto index = filterIndexOf(filter, *shape);
    if (!index)
        throw Error("'" + filter.name() + "' does not deform '" + shape->uniqueName() + "'.");
    return selectionOn(filter, *shape, *index, component);
}

PointSelection pointSelection(Node& filter, std::uint32_t index, const MObject& component)
{
    DagNode* shape = outputShape(filter, index);
    if (!shape)
        throw Error("'" + filter.name() + "' has no geometry " + std::to_string(index) + ".");
    return selectionOn(filter, *shape, index, component);
}

} // namespace host
