#include "nodes/filterHandles.h"

#include "graph/node.h"
#include "nodes/filterAccess.h"
#include "nodes/geometry.h"
#include "selection/component.h"
#include "types/api.h"
#include "types/error.h"

namespace host {

namespace {

/// Points are looked up in what comes into the deformer: asking the shape would deform it at every call.
std::vector<int> selectedPoints(Node& filter, std::uint32_t index, const Component* component)
{
    const Plug input = filter.plug("input").element(index).child("inputGeometry");
    const auto geometry = std::dynamic_pointer_cast<const Geometry>(input.data());
    return geometry ? pointIndices(*geometry, component) : std::vector<int>();
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
