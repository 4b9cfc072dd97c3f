#include "render/meshView.h"

#include <algorithm>
#include <cmath>

namespace workbench {

namespace {

/// The sum of the normals of the faces around each vertex, weighted by area.
std::vector<Imath::V3d> normalsOf(const host::MeshTopology& topology, const std::vector<Imath::V3d>& points)
{
    std::vector<Imath::V3d> normals(points.size(), Imath::V3d(0, 0, 0));
    std::size_t corner = 0;
    for (const int count : topology.faceCounts) {
        Imath::V3d normal(0, 0, 0);
        const auto vertex = [&](int which) {
            return static_cast<std::size_t>(
                topology.faceVertices[corner + static_cast<std::size_t>(which % count)]);
        };
        for (int side = 0; side < count; ++side)
            normal += points[vertex(side)].cross(points[vertex(side + 1)]);
        for (int side = 0; side < count; ++side)
            normals[vertex(side)] += normal;
        corner += static_cast<std::size_t>(count);
    }
    for (Imath::V3d& normal : normals)
        normal.normalize();
    return normals;
}

void addFaces(SceneView::Shape& surfaces, const host::MeshTopology& topology, unsigned firstVertex)
{
    std::size_t corner = 0;
    for (const int count : topology.faceCounts) {
        const auto vertex = [&](int which) {
            return firstVertex +
                   static_cast<unsigned>(topology.faceVertices[corner + static_cast<std::size_t>(which)]);
        };
        for (int third = 2; third < count; ++third) {
            const unsigned triangle[] = {vertex(0), vertex(third - 1), vertex(third)};
            surfaces.indices.insert(surfaces.indices.end(), triangle, triangle + 3);
        }
        corner += static_cast<std::size_t>(count);
    }
}

/// How strong the plain wireframe is: 1 where edges are long on the screen, less where they crowd.
float wireStrength(const host::MeshTopology& topology, const std::vector<Imath::V3d>& world,
                   const host::ViewProjection& projection)
{
    constexpr std::size_t kSamples = 400;
    constexpr double kLongEdge = 14.0, kFaintest = 0.22;
    const std::size_t step = std::max<std::size_t>(1, topology.edges.size() / kSamples);
    double length = 0.0;
    int count = 0;
    for (std::size_t edge = 0; edge < topology.edges.size(); edge += step) {
        Imath::V3d from, to;
        const auto& ends = topology.edges[edge];
        if (!projection.project(world[static_cast<std::size_t>(ends[0])], from) ||
            !projection.project(world[static_cast<std::size_t>(ends[1])], to))
            continue;
        length += std::hypot(to.x - from.x, to.y - from.y);
        ++count;
    }
    return count == 0 ? 1.0F : static_cast<float>(std::clamp(length / count / kLongEdge, kFaintest, 1.0));
}

Color edgeColor(const ShapeView& shape, std::size_t vertex, float strength)
{
    Color plain = shape.selected ? kSelectedBodyWire : kWireColor;
    plain[3] *= strength;
    const float falloff = shape.falloff.empty() ? 0.0F : shape.falloff[vertex];
    return falloff > 0.0F ? mixed(plain, falloffColor(falloff), std::min(1.0F, 0.35F + falloff)) : plain;
}

} // namespace

void addMesh(SceneView& view, const ShapeView& shape, const host::ViewProjection& projection,
             const std::optional<std::vector<double>>& weights)
{
    const host::MeshTopology& topology = *static_cast<const host::MeshData&>(shape.geometry).topology;
    std::vector<Imath::V3d> world;
    world.reserve(shape.geometry.count());
    for (const Imath::V3d& point : shape.geometry.points())
        world.push_back(point * shape.toWorld);
    const std::vector<Imath::V3d> normals = normalsOf(topology, world);
    const float strength = wireStrength(topology, world, projection);
    const auto firstVertex = static_cast<unsigned>(view.surfaces.vertices.size());
    const auto firstLineVertex = static_cast<unsigned>(view.lines.vertices.size());
    for (std::size_t vertex = 0; vertex < world.size(); ++vertex) {
        const Color color = weights ? weightColor(static_cast<float>((*weights)[vertex])) : kBodyColor;
        DrawVertex drawn = drawVertex(world[vertex], color);
        for (int axis = 0; axis < 3; ++axis)
            drawn.normal[axis] = static_cast<float>(normals[vertex][axis]);
        view.surfaces.vertices.push_back(drawn);
        view.lines.vertices.push_back(drawVertex(world[vertex], edgeColor(shape, vertex, strength)));
    }
    addFaces(view.surfaces, topology, firstVertex);
    for (const auto& edge : topology.edges) {
        for (const std::size_t end : {0U, 1U})
            view.lines.indices.push_back(firstLineVertex + static_cast<unsigned>(edge[end]));
    }
}

} // namespace workbench
