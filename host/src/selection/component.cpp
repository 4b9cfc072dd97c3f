#include "selection/component.h"

#include "graph/node.h"
#include "nodes/geometry.h"

#include <algorithm>

namespace host {

namespace {

unsigned indicesOf(MFn::Type type)
{
    if (type == MFn::kSurfaceCVComponent)
        return 2;
    return type == MFn::kLatticeComponent ? 3 : 1;
}

GeometryRef geometryOf(DagNode& shape)
{
    return pointComponentType(shape) == MFn::kInvalid ? nullptr : shapeGeometry(shape);
}

std::array<int, 3> meshSizes(const MeshData& mesh, MFn::Type type)
{
    if (type == MFn::kMeshEdgeComponent)
        return {static_cast<int>(mesh.topology->edges.size()), 0, 0};
    if (type == MFn::kMeshPolygonComponent)
        return {static_cast<int>(mesh.topology->faceCounts.size()), 0, 0};
    return {static_cast<int>(mesh.count()), 0, 0};
}

constexpr int kPeriodic = 2;

/// A periodic form stores its first `degree` CVs once more at the end; those are no components.
int distinctCvs(int stored, int form, int degree)
{
    return form == kPeriodic ? std::max(0, stored - degree) : stored;
}

/// Steps of the point index per step of each component index.
std::array<int, 3> strides(const Geometry& geometry)
{
    if (geometry.kind() == Geometry::Kind::kSurface)
        return {static_cast<const SurfaceData&>(geometry).numV, 1, 0};
    if (geometry.kind() == Geometry::Kind::kLattice) {
        const auto& lattice = static_cast<const LatticeData&>(geometry);
        return {1, lattice.s, lattice.s * lattice.t};
    }
    return {1, 0, 0};
}

} // namespace

Component::Component(MFn::Type componentType)
    : type(componentType), indicesPerElement(indicesOf(componentType))
{}

bool Component::hasFn(MFn::Type fnType) const
{
    if (fnType == type || fnType == MFn::kBase || fnType == MFn::kComponent)
        return true;
    switch (indicesPerElement) {
    case 1:
        break;
    case 2:
        return fnType == MFn::kDoubleIndexedComponent;
    default:
        return fnType == MFn::kTripleIndexedComponent;
    }
    const bool ofMesh = type == MFn::kMeshVertComponent || type == MFn::kMeshEdgeComponent ||
                        type == MFn::kMeshPolygonComponent;
    return fnType == MFn::kSingleIndexedComponent || (ofMesh && fnType == MFn::kMeshComponent);
}

Ref<Component> Component::clone() const
{
    Ref<Component> copy(new Component(type));
    copy->elements = elements;
    copy->weights = weights;
    copy->seams = seams;
    copy->complete = complete;
    std::copy(std::begin(completeSize), std::end(completeSize), copy->completeSize);
    return copy;
}

bool elementBefore(const int* a, const int* b, unsigned dimension)
{
    if (dimension < 3)
        return std::lexicographical_compare(a, a + dimension, b, b + dimension);
    for (int k = 2; k >= 0; --k)
        if (a[k] != b[k])
            return a[k] < b[k];
    return false;
}

MFn::Type pointComponentType(const DagNode& shape)
{
    if (!shape.isShape())
        return MFn::kInvalid;
    switch (shape.apiType()) {
    case MFn::kMesh:
        return MFn::kMeshVertComponent;
    case MFn::kNurbsCurve:
        return MFn::kCurveCVComponent;
    case MFn::kNurbsSurface:
        return MFn::kSurfaceCVComponent;
    case MFn::kLattice:
        return MFn::kLatticeComponent;
    default:
        return MFn::kInvalid;
    }
}

std::array<int, 3> componentSizes(DagNode& shape, MFn::Type componentType)
{
    const MFn::Type pointType = pointComponentType(shape);
    const bool meshPart =
        componentType == MFn::kMeshEdgeComponent || componentType == MFn::kMeshPolygonComponent;
    const bool fits = componentType == pointType || (meshPart && pointType == MFn::kMeshVertComponent);
    const GeometryRef geometry = fits ? geometryOf(shape) : nullptr;
    if (!geometry)
        return {0, 0, 0};
    switch (geometry->kind()) {
    case Geometry::Kind::kMesh:
        return meshSizes(static_cast<const MeshData&>(*geometry), componentType);
    case Geometry::Kind::kCurve: {
        const auto& curve = static_cast<const CurveData&>(*geometry);
        return {distinctCvs(static_cast<int>(curve.count()), curve.form, curve.degree), 0, 0};
    }
    case Geometry::Kind::kSurface: {
        const auto& surface = static_cast<const SurfaceData&>(*geometry);
        return {distinctCvs(surface.numU, surface.formU, surface.degreeU),
                distinctCvs(surface.numV, surface.formV, surface.degreeV), 0};
    }
    case Geometry::Kind::kLattice: {
        const auto& lattice = static_cast<const LatticeData&>(*geometry);
        return {lattice.s, lattice.t, lattice.u};
    }
    }
    return {0, 0, 0};
}

Ref<Component> allPoints(DagNode& shape)
{
    const MFn::Type type = pointComponentType(shape);
    Ref<Component> all(new Component(type));
    const std::array<int, 3> size = componentSizes(shape, type);
    if (all->dimension() == 1) {
        all->elements.resize(static_cast<std::size_t>(size[0]));
        for (int k = 0; k < size[0]; ++k)
            all->elements[static_cast<std::size_t>(k)] = k;
        return all;
    }
    if (all->dimension() == 2) {
        for (int u = 0; u < size[0]; ++u)
            for (int v = 0; v < size[1]; ++v)
                all->elements.insert(all->elements.end(), {u, v});
        return all;
    }
    for (int u = 0; u < size[2]; ++u)
        for (int t = 0; t < size[1]; ++t)
            for (int s = 0; s < size[0]; ++s)
                all->elements.insert(all->elements.end(), {s, t, u});
    return all;
}

std::vector<int> pointIndices(DagNode& shape, const Component* component)
{
    if (!component)
        return pointIndices(shape, allPoints(shape).get());
    std::vector<int> points;
    const GeometryRef geometry = geometryOf(shape);
    if (!geometry || component->apiType() != pointComponentType(shape))
        return points;
    const std::array<int, 3> size = componentSizes(shape, component->apiType());
    const std::array<int, 3> step = strides(*geometry);
    const unsigned dimension = component->dimension();
    points.reserve(component->count());
    for (std::size_t at = 0; at < component->elements.size(); at += dimension) {
        int point = 0;
        bool inside = true;
        for (unsigned k = 0; k < dimension; ++k) {
            const int index = component->elements[at + k];
            inside = inside && index >= 0 && index < size[k];
            point += inside ? index * step[k] : 0;
        }
        if (inside)
            points.push_back(point);
    }
    return points;
}

Ref<Component> pointComponent(DagNode& shape, const std::vector<int>& points)
{
    Ref<Component> component(new Component(pointComponentType(shape)));
    const GeometryRef geometry = geometryOf(shape);
    if (!geometry)
        return component;
    if (component->dimension() == 1) {
        component->elements = points;
        return component;
    }
    const std::array<int, 3> step = strides(*geometry);
    component->elements.reserve(points.size() * component->dimension());
    for (const int point : points) {
        if (component->dimension() == 2)
            component->elements.insert(component->elements.end(), {point / step[0], point % step[0]});
        else
            component->elements.insert(component->elements.end(),
                                       {point % step[1], point % step[2] / step[1], point / step[2]});
    }
    return component;
}

DagNode* componentShape(Node& node)
{
    DagNode* dag = node.asDag();
    if (!dag)
        return nullptr;
    if (dag->isShape())
        return pointComponentType(*dag) == MFn::kInvalid ? nullptr : dag;
    for (const Ref<DagNode>& child : dag->children())
        if (pointComponentType(*child) != MFn::kInvalid && !child->isIntermediate())
            return child.get();
    return nullptr;
}

} // namespace host
