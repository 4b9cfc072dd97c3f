#pragma once

#include "types/object.h"

#include <array>
#include <string>
#include <vector>

namespace host {

class DagNode;
class Geometry;
class Node;

/// Points (or edges, faces) of one shape, by index: what an MObject component holds. Elements keep the order
/// in which they were added; everything that the host itself makes (selection, scripts, picking) is
/// ascending and without repeats.
class Component final : public Object {
public:
    explicit Component(MFn::Type type);

    MFn::Type apiType() const override { return type; }
    bool hasFn(MFn::Type fnType) const override;

    /// Indices per element: 1 (mesh vertices, edges, faces, curve CVs), 2 (surface CVs: u, v) or
    /// 3 (lattice points: s, t, u).
    unsigned dimension() const { return indicesPerElement; }
    std::size_t count() const { return elements.size() / indicesPerElement; }

    std::vector<int> elements;  ///< dimension() numbers per element
    std::vector<float> weights; ///< soft-selection falloff per element, or empty
    std::vector<float> seams;   ///< seam weights per element, or empty
    bool complete = false;      ///< stands for all elements (of the sizes below)
    int completeSize[3] = {0, 0, 0};

    Ref<Component> clone() const;

private:
    MFn::Type type;
    unsigned indicesPerElement;
};

/// Whether element `a` stands before element `b` in the order that the host uses for components: the order of
/// the points in the geometry, so lattice points count s fastest.
bool elementBefore(const int* a, const int* b, unsigned dimension);

/// The component type of a shape's control points (kMeshVertComponent, kCurveCVComponent,
/// kSurfaceCVComponent, kLatticeComponent); MFn::kInvalid for others.
MFn::Type pointComponentType(const DagNode& shape);
/// How many elements of a component type a shape has in each of its index directions. All zero when the shape
/// has no geometry or no such components. A periodic curve or surface has no components for the CVs that
/// repeat its first ones.
std::array<int, 3> componentSizes(DagNode& shape, MFn::Type componentType);
/// How many point components a geometry has in each index direction.
std::array<int, 3> pointSizes(const Geometry& geometry);
/// All control points of a shape, ascending.
Ref<Component> allPoints(DagNode& shape);
/// Point indices (Geometry order) of a point component's elements, in element order. Elements outside the
/// shape are left out. An empty (null) component stands for all points.
std::vector<int> pointIndices(DagNode& shape, const Component* component);
/// The same for a point component of a shape whose geometry, deformed or not, is at hand.
std::vector<int> pointIndices(const Geometry& geometry, const Component* component);
/// A point component of the shape from point indices, in the given order.
Ref<Component> pointComponent(DagNode& shape, const std::vector<int>& points);

/// "vtx[0:7]", "vtx[*]", "cv[2][0:3]", "pt[0][1][*]", "e[3]", "f[1:4]" of a shape to a component; throws
/// host::Error naming the text when it is malformed or starts outside the shape; a range that runs over the
/// end is cut there. "edge", "face" and "cp" are not read.
Ref<Component> parseComponent(DagNode& shape, const std::string& text);
/// Whether a text begins as a component text of that shape does ("vtx[", "cv[" ...), so that it is not taken
/// for an attribute.
bool looksLikeComponent(const DagNode& shape, const std::string& text);
/// The texts of a component, runs joined: {"vtx[0:3]", "vtx[7]"}.
std::vector<std::string> componentTexts(const DagNode& shape, const Component& component);
/// One text per element: {"vtx[0]", "vtx[1]", ...} (ls -flatten).
std::vector<std::string> elementTexts(const DagNode& shape, const Component& component);

/// The shape that components of a node belong to: a geometry shape itself, or the first child of a transform
/// that is a geometry shape and no intermediate object. Null when there is none.
DagNode* componentShape(Node& node);

} // namespace host
