#include "selection/componentHandle.h"

#include <algorithm>

namespace host {

Component* componentOf(const MFnBase& set)
{
    return dynamic_cast<Component*>(Api::object(set));
}

Component* componentOf(const MFnBase& set, MStatus* status)
{
    Component* component = componentOf(set);
    report(status, component ? MS::kSuccess : MS::kFailure);
    return component;
}

Ref<Component> newComponent(MFn::Type type, unsigned dimension)
{
    switch (type) {
    case MFn::kMeshVertComponent:
    case MFn::kMeshEdgeComponent:
    case MFn::kMeshPolygonComponent:
    case MFn::kCurveCVComponent:
    case MFn::kCurveEPComponent:
    case MFn::kSurfaceCVComponent:
    case MFn::kLatticeComponent:
        break;
    default:
        return {};
    }
    Ref<Component> component(new Component(type));
    return component->dimension() == dimension ? component : Ref<Component>();
}

void appendElement(Component& component, std::initializer_list<int> indices)
{
    component.elements.insert(component.elements.end(), indices);
    if (!component.weights.empty())
        component.weights.resize(component.count(), 1.0F);
    if (!component.seams.empty())
        component.seams.resize(component.count(), 0.0F);
}

void fillComplete(Component& component, std::initializer_list<int> sizes)
{
    int size[3] = {1, 1, 1};
    std::copy(sizes.begin(), sizes.end(), size);
    std::copy(sizes.begin(), sizes.end(), component.completeSize);
    component.complete = true;
    component.elements.clear();
    component.weights.clear();
    component.seams.clear();
    const unsigned dimension = component.dimension();
    if (dimension == 2) {
        for (int u = 0; u < size[0]; ++u)
            for (int v = 0; v < size[1]; ++v)
                component.elements.insert(component.elements.end(), {u, v});
        return;
    }
    for (int u = 0; u < size[2]; ++u)
        for (int t = 0; t < size[1]; ++t)
            for (int s = 0; s < size[0]; ++s) {
                const int element[3] = {s, t, u};
                component.elements.insert(component.elements.end(), element, element + dimension);
            }
}

MIntArray indicesIn(const Component& component, unsigned direction)
{
    const auto count = static_cast<unsigned int>(component.count());
    MIntArray indices(count);
    for (unsigned int element = 0; element < count; ++element)
        indices[element] =
            component.elements[static_cast<std::size_t>(element) * component.dimension() + direction];
    return indices;
}

} // namespace host
