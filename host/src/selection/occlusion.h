#pragma once

#include "view/viewport.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace host {

class DagNode;
class Graph;
class Session;

/// The triangles of all visible meshes as the view shows them, sorted into screen tiles: tells what hides
/// what, exactly and independently of mesh density. Faces are split into fans from their first corner; both
/// sides of a surface hide. Other shapes than meshes hide nothing.
class ScreenTriangles {
public:
    ScreenTriangles(const Graph& graph, const ViewProjection& view);

    /// Whether a triangle lies before a point (pixels and depth as ViewProjection gives them). Triangles that
    /// touch the point, such as those around a vertex, do not hide it.
    bool hides(const Imath::V3d& pixelsAndDepth) const;
    /// The mesh shape in front at a pixel; null when there is none.
    DagNode* front(double x, double y) const;

    /// Whether this is still what the scene looks like.
    bool matches(const Graph& graph, const ViewProjection& view) const;

private:
    struct Triangle {
        int corners[3];
    };
    void addMesh(DagNode& shape);
    void addFan(const std::vector<int>& fan, const std::vector<Imath::V3d>& world, int firstCorner);
    void addClipped(const Imath::V3d* world);
    void addTriangle(int a, int b, int c);
    void sortIntoTiles();
    /// First and last tile column and row that a triangle's bounds touch; false when it is off the port.
    bool tilesOf(const Triangle& triangle, int (&columns)[2], int (&rows)[2]) const;
    std::size_t tileAt(double x, double y) const;
    std::size_t tileIndex(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(tileColumns) +
               static_cast<std::size_t>(column);
    }
    /// Depth of a triangle at a pixel; false when it does not cover it.
    bool depthAt(const Triangle& triangle, double x, double y, double& depth) const;

    ViewProjection projection;
    std::uint64_t changes;
    std::vector<Imath::V3d> corners; ///< pixels and depth
    std::vector<bool> drawable;      ///< of each corner: before the near plane's far side
    std::vector<Triangle> triangles;
    struct Part {
        Ref<DagNode> shape;
        std::size_t firstTriangle;
    };
    std::vector<Part> parts; ///< which triangles belong to which shape
    double tileSize = 1.0;
    int tileColumns = 1, tileRows = 1;
    std::vector<std::size_t> tileStarts;
    std::vector<int> tileTriangles;
};

/// The triangles of the session's view as it is now; made again only when the scene or the view has changed.
const ScreenTriangles& screenTriangles(Session& session);

} // namespace host
