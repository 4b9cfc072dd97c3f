#include "render/meshView.h"

#include "render/shadingCorners.h"

#include <algorithm>

namespace workbench {

namespace {

/// The sum of the normals of the faces around each drawn vertex, weighted by area.
std::vector<Imath::V3d> normalsOf(const host::MeshTopology& topology, const ShadingCorners& corners,
                                  const std::vector<Imath::V3d>& points)
{
    std::vector<Imath::V3d> normals(corners.vertexOfDrawn.size(), Imath::V3d(0, 0, 0));
    std::size_t begin = 0;
    for (const int count : topology.faceCounts) {
        Imath::V3d normal(0, 0, 0);
        const auto point = [&](int which) {
            return points[static_cast<std::size_t>(
                topology.faceVertices[begin + static_cast<std::size_t>(which % count)])];
        };
        for (int side = 0; side < count; ++side)
            normal += point(side).cross(point(side + 1));
        for (int side = 0; side < count; ++side)
            normals[corners.drawnOfCorner[begin + static_cast<std::size_t>(side)]] += normal;
        begin += static_cast<std::size_t>(count);
    }
    for (Imath::V3d& normal : normals)
        normal.normalize();
    return normals;
}

void addFaces(SceneView::Shape& surfaces, const host::MeshTopology& topology, const ShadingCorners& corners,
              unsigned firstVertex)
{
    std::size_t begin = 0;
    for (const int count : topology.faceCounts) {
        const auto vertex = [&](int which) {
            return firstVertex + corners.drawnOfCorner[begin + static_cast<std::size_t>(which)];
        };
        for (int third = 2; third < count; ++third) {
            const unsigned triangle[] = {vertex(0), vertex(third - 1), vertex(third)};
            surfaces.indices.insert(surfaces.indices.end(), triangle, triangle + 3);
        }
        begin += static_cast<std::size_t>(count);
    }
}

Color edgeColor(const ShapeView& shape, std::size_t vertex)
{
    Color plain = shape.selected ? kSelectedBodyWire : kWireColor;
    plain[3] *= shape.clarity;
    const float falloff = shape.falloff.empty() ? 0.0F : shape.falloff[vertex];
    return falloff > 0.0F ? mixed(plain, falloffColor(falloff), std::min(1.0F, 0.35F + falloff)) : plain;
}

} // namespace

void addMesh(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights)
{
    const host::MeshTopology& topology = *static_cast<const host::MeshData&>(shape.geometry).topology;
    const std::vector<Imath::V3d>& world = shape.world;
    const ShadingCorners corners = shadingCornersOf(topology);
    const std::vector<Imath::V3d> normals = normalsOf(topology, corners, world);
    const auto firstVertex = static_cast<unsigned>(view.surfaces.vertices.size());
    const auto firstLineVertex = static_cast<unsigned>(view.lines.vertices.size());
    for (std::size_t drawnVertex = 0; drawnVertex < normals.size(); ++drawnVertex) {
        const auto vertex = static_cast<std::size_t>(corners.vertexOfDrawn[drawnVertex]);
        DrawVertex drawn = drawVertex(world[vertex], weights ? weights->color(vertex) : kBodyColor);
        for (int axis = 0; axis < 3; ++axis)
            drawn.normal[axis] = static_cast<float>(normals[drawnVertex][axis]);
        view.surfaces.vertices.push_back(drawn);
    }
    for (std::size_t vertex = 0; vertex < world.size(); ++vertex)
        view.lines.vertices.push_back(drawVertex(world[vertex], edgeColor(shape, vertex)));
    addFaces(view.surfaces, topology, corners, firstVertex);
    for (const auto& edge : topology.edges) {
        for (const std::size_t end : {0U, 1U})
            view.lines.indices.push_back(firstLineVertex + static_cast<unsigned>(edge[end]));
    }
}

} // namespace workbench
