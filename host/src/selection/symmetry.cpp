#include "selection/symmetry.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/componentAlgebra.h"
#include "selection/pointTree.h"
#include "session.h"
#include "types/error.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <map>

namespace host {

namespace {

Points positionsIn(DagNode& mesh, SymmetryOptions::About about)
{
    const GeometryRef geometry = shapeGeometry(mesh);
    if (!geometry)
        return {};
    Points points = geometry->points();
    if (about == SymmetryOptions::kWorld) {
        const Imath::M44d toWorld = worldMatrix(mesh);
        for (Imath::V3d& point : points)
            point = point * toWorld;
    }
    return points;
}

/// The vertices of an edge or face, ascending: what identifies it.
using Corners = std::vector<int>;

std::vector<Corners> cornersOf(const MeshTopology& topology, MFn::Type type)
{
    std::vector<Corners> all;
    if (type == MFn::kMeshEdgeComponent) {
        for (const auto& edge : topology.edges)
            all.push_back({std::min(edge[0], edge[1]), std::max(edge[0], edge[1])});
        return all;
    }
    auto corner = topology.faceVertices.begin();
    for (const int corners : topology.faceCounts) {
        all.emplace_back(corner, corner + corners);
        std::sort(all.back().begin(), all.back().end());
        corner += corners;
    }
    return all;
}

Ref<Component> mirroredVertices(const Component& component, const MirrorMap& mirror)
{
    std::vector<int> images;
    for (const int vertex : component.elements) {
        const int image = mirror.of(vertex);
        if (image >= 0)
            images.push_back(image);
    }
    Ref<Component> out(new Component(component.apiType()));
    out->elements = std::move(images);
    return out;
}

Ref<Component> mirroredParts(const Component& component, const MirrorMap& mirror,
                             const MeshTopology& topology)
{
    const std::vector<Corners> all = cornersOf(topology, component.apiType());
    std::map<Corners, int> byCorners;
    for (std::size_t part = 0; part < all.size(); ++part)
        byCorners.emplace(all[part], static_cast<int>(part));
    Ref<Component> out(new Component(component.apiType()));
    for (const int part : component.elements) {
        if (part < 0 || static_cast<std::size_t>(part) >= all.size())
            continue;
        Corners image = all[static_cast<std::size_t>(part)];
        for (int& corner : image)
            corner = mirror.of(corner);
        std::sort(image.begin(), image.end());
        const auto found = byCorners.find(image);
        if (found != byCorners.end())
            out->elements.push_back(found->second);
    }
    return out;
}

} // namespace

MirrorMap::MirrorMap(DagNode& mesh, const SymmetryOptions& options)
{
    if (options.about == SymmetryOptions::kTopology)
        throw Error("symmetricModelling: topological symmetry is not supported (use object or world)");
    const Points points = positionsIn(mesh, options.about);
    images.assign(points.size(), -1);
    positive.assign(points.size(), false);
    const PointTree tree(points);
    const int axis = options.axis;
    tbb::parallel_for(tbb::blocked_range<std::size_t>(0, points.size(), 1024),
                      [&](const tbb::blocked_range<std::size_t>& part) {
                          for (std::size_t vertex = part.begin(); vertex < part.end(); ++vertex) {
                              Imath::V3d image = points[vertex];
                              image[axis] = -image[axis];
                              images[vertex] = tree.nearest(image, options.tolerance).index;
                          }
                      });
    for (std::size_t vertex = 0; vertex < points.size(); ++vertex)
        positive[vertex] = points[vertex][axis] >= 0.0;
}

SelectionList symmetrized(Session& session, const SelectionList& list)
{
    const SymmetryOptions& options = session.selection().symmetry;
    SelectionList out = list;
    for (const SelectionItem& item : list.items) {
        DagNode* shape = item.component ? item.node->asDag() : nullptr;
        const GeometryRef geometry = shape ? shapeGeometry(*shape) : nullptr;
        if (!geometry || geometry->kind() != Geometry::Kind::kMesh)
            continue;
        const MirrorMap mirror(*shape, options);
        const MFn::Type type = item.component->apiType();
        const Ref<Component> image =
            type == MFn::kMeshVertComponent
                ? mirroredVertices(*item.component, mirror)
                : mirroredParts(*item.component, mirror, *static_cast<const MeshData&>(*geometry).topology);
        SelectionItem mirrored{item.node, image, Plug()};
        out.add(std::move(mirrored), true);
    }
    return out;
}

} // namespace host
