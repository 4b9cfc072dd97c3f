#include "selection/component.h"

#include "graph/node.h"
#include "nodes/geometry.h"

#include <algorithm>
#include <numeric>

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

std::array<int, 3> meshPartSizes(const MeshData& mesh, MFn::Type type)
{
    const std::size_t count =
        type == MFn::kMeshEdgeComponent ? mesh.topology->edges.size() : mesh.topology->faceCounts.size();
    return {static_cast<int>(count), 0, 0};
}

constexpr int kPeriodic = 2;

/// A periodic form stores its first `degree` CVs once more at the end; those are no components.
int distinctCvs(int stored, int form, int degree)
{
    return form == kPeriodic ? std::max(0, stored - degree) : stored;
}

MFn::Type pointType(const Geometry& geometry)
{
    switch (geometry.kind()) {
    case Geometry::Kind::kMesh:
        return MFn::kMeshVertComponent;
    case Geometry::Kind::kCurve:
        return MFn::kCurveCVComponent;
    case Geometry::Kind::kSurface:
        return MFn::kSurfaceCVComponent;
    case Geometry::Kind::kLattice:
        return MFn::kLatticeComponent;
    }
    return MFn::kInvalid;
}

/// All elements of the given sizes, in point order.
Ref<Component> filled(MFn::Type type, const std::array<int, 3>& size)
{
    Ref<Component> all(new Component(type));
    if (all->dimension() == 1) {
        all->elements.resize(static_cast<std::size_t>(size[0]));
        std::iota(all->elements.begin(), all->elements.end(), 0);
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

std::array<int, 3> pointSizes(const Geometry& geometry)
{
    switch (geometry.kind()) {
    case Geometry::Kind::kMesh:
        return {static_cast<int>(geometry.count()), 0, 0};
    case Geometry::Kind::kCurve: {
        const auto& curve = static_cast<const CurveData&>(geometry);
        return {distinctCvs(static_cast<int>(curve.count()), curve.form, curve.degree), 0, 0};
    }
    case Geometry::Kind::kSurface: {
        const auto& surface = static_cast<const SurfaceData&>(geometry);
        return {distinctCvs(surface.numU, surface.formU, surface.degreeU),
                distinctCvs(surface.numV, surface.formV, surface.degreeV), 0};
    }
    case Geometry::Kind::kLattice: {
        const auto& lattice = static_cast<const LatticeData&>(geometry);
        return {lattice.s, lattice.t, lattice.u};
    }
    }
    return {0, 0, 0};
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
    return meshPart ? meshPartSizes(static_cast<const MeshData&>(*geometry), componentType)
                    : pointSizes(*geometry);
}

Ref<Component> allPoints(DagNode& shape)
{
    const MFn::Type type = pointComponentType(shape);
    return filled(type, componentSizes(shape, type));
}

std::vector<int> pointIndices(DagNode& shape, const Component* component)
{
    const GeometryRef geometry = geometryOf(shape);
    if (!geometry || (component && component->apiType() != pointComponentType(shape)))
        return {};
    return pointIndices(*geometry, component);
}

std::vector<int> pointIndices(const Geometry& geometry, const Component* component)
{
    const std::array<int, 3> size = pointSizes(geometry);
    const std::array<int, 3> step = strides(geometry);
    const Ref<Component> all(component ? nullptr : filled(pointType(geometry), size));
    const Component& asked = component ? *component : *all;
    const unsigned dimension = asked.dimension();
    const auto isInside = [&size](int index) { return index >= 0 && index < size[0]; };
    if (dimension == 1 && std::all_of(asked.elements.begin(), asked.elements.end(), isInside))
        return asked.elements;
    std::vector<int> points;
    points.reserve(asked.count());
    for (std::size_t at = 0; at < asked.elements.size(); at += dimension) {
        int point = 0;
        bool inside = true;
        for (unsigned k = 0; k < dimension; ++k) {
            const int index = asked.elements[at + k];
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
