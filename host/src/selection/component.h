#pragma once

#include "types/object.h"

#include <string>
#include <vector>

namespace host {

class DagNode;

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

/// The component type of a shape's control points (kMeshVertComponent, kCurveCVComponent,
/// kSurfaceCVComponent, kLatticeComponent); MFn::kInvalid for others.
MFn::Type pointComponentType(const DagNode& shape);
/// All control points of a shape, ascending.
Ref<Component> allPoints(DagNode& shape);
/// Point indices (Geometry order) of a point component's elements, in element order. Elements outside the
/// shape are left out. An empty (null) component stands for all points.
std::vector<int> pointIndices(DagNode& shape, const Component* component);
/// A point component of the shape from point indices, in the given order.
Ref<Component> pointComponent(DagNode& shape, const std::vector<int>& points);

/// "vtx[0:7]", "vtx[*]", "cv[2][0:3]", "pt[0][1][*]", "e[3]", "f[1:4]" of a shape to a component; throws
/// host::Error naming the text when it is malformed or outside the shape.
Ref<Component> parseComponent(DagNode& shape, const std::string& text);
/// The texts of a component, runs joined: {"vtx[0:3]", "vtx[7]"}.
std::vector<std::string> componentTexts(const DagNode& shape, const Component& component);

} // namespace host
