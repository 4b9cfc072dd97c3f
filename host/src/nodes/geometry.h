#pragma once

#include "graph/data.h"

#include <ImathMatrix.h>
#include <ImathVec.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// Points and their meaning. Point order is the component order of the shape:
/// mesh: vertex id; curve: CV index; surface: u * numV + v; lattice: u*S*T + t*S + s (s fastest).
/// Object space, centimetres.
using Points = std::vector<Imath::V3d>;
using PointsRef = std::shared_ptr<const Points>;

/// Members of one group (groupParts): which points of the geometry a deformer with that groupId may move.
/// Ascending point indices; `all` means every point whatever their number.
struct PointGroup {
    bool all = false;
    std::vector<int> points;
};

/// Geometry as it travels along connections: immutable. Deformers copy the points and share the rest.
class Geometry : public Data {
public:
    enum class Kind { kMesh, kCurve, kSurface, kLattice };

    virtual Kind kind() const = 0;
    /// A geometry with the same topology and groups and other points (same count).
    virtual std::shared_ptr<Geometry> copy() const = 0;

    const Points& points() const { return *pointsRef; }
    std::size_t count() const { return pointsRef->size(); }

    PointsRef pointsRef = std::make_shared<Points>();
    /// groupId value -> members, as the groupParts upstream have written them; shared, usually tiny.
    std::shared_ptr<const std::map<int, PointGroup>> groups;
    /// Component tags (name -> component texts as in files), kept and passed on.
    std::shared_ptr<const std::map<std::string, std::vector<std::string>>> tags;
};
using GeometryRef = std::shared_ptr<const Geometry>;

struct MeshTopology {
    std::vector<std::array<int, 3>> edges; ///< two vertices and 1 if soft, 0 if hard, in file order
    std::vector<int> faceCounts;           ///< corners per face
    std::vector<int> faceVertices;         ///< all corners, face after face
    std::vector<int> faceEdges;            ///< all corners' edges as in files: e >= 0 forward, -e-1 backward
    /// What files say about faces besides edges (holes, texture and colour indices: "mu 0 4 0 1 3 2"), kept
    /// for writing: one text per face, or none at all.
    std::vector<std::string> faceTexts;
};

class MeshData final : public Geometry {
public:
    Kind kind() const override { return Kind::kMesh; }
    const char* typeName() const override { return "mesh"; }
    std::shared_ptr<Geometry> copy() const override { return std::make_shared<MeshData>(*this); }
    std::shared_ptr<const MeshTopology> topology = std::make_shared<MeshTopology>();
};

class CurveData final : public Geometry {
public:
    Kind kind() const override { return Kind::kCurve; }
    const char* typeName() const override { return "nurbsCurve"; }
    std::shared_ptr<Geometry> copy() const override { return std::make_shared<CurveData>(*this); }
    int degree = 3, form = 0, spans = 0; ///< form: 0 open, 1 closed, 2 periodic
    bool rational = false;
    int dimension = 3;
    std::vector<double> knots;
    std::vector<double> weights; ///< per CV, empty unless rational
};

class SurfaceData final : public Geometry {
public:
    Kind kind() const override { return Kind::kSurface; }
    const char* typeName() const override { return "nurbsSurface"; }
    std::shared_ptr<Geometry> copy() const override { return std::make_shared<SurfaceData>(*this); }
    int degreeU = 3, degreeV = 3, formU = 0, formV = 0;
    bool rational = false;
    int numU = 0, numV = 0;
    std::vector<double> knotsU, knotsV;
    std::vector<double> weights;
    std::vector<std::string> trimText; ///< words after the CVs, kept for writing
};

class LatticeData final : public Geometry {
public:
    Kind kind() const override { return Kind::kLattice; }
    const char* typeName() const override { return "lattice"; }
    std::shared_ptr<Geometry> copy() const override { return std::make_shared<LatticeData>(*this); }
    int s = 2, t = 2, u = 2;
};

class DagNode;
class Node;

/// The points of some components of a geometry: "vtx[0:7]", "vtx[*]", "e[3]", "f[1:4]", "cv[2][0:3]",
/// "pt[0][1][*]"; edges and faces stand for their vertices. What lies outside the geometry is left out.
/// Throws host::Error naming a text that is no such component.
PointGroup pointGroup(const Geometry& geometry, const std::vector<std::string>& components);

/// The geometry of a shape as displayed: evaluated, deformed, in object space. Null when the node is no
/// geometry shape or has no geometry.
GeometryRef shapeGeometry(Node& shape);
/// World matrices, row vectors; the shape's own path: product of its transforms.
Imath::M44d worldMatrix(const DagNode& node);
Imath::M44d parentMatrix(const DagNode& node);
/// Whether the node and all its ancestors are visible, not templated intermediate objects.
bool isVisible(const DagNode& node);

} // namespace host
