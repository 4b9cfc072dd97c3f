#include "selection/softSelection.h"

#include "graph/node.h"
#include "nodes/geometry.h"
#include "selection/pointTree.h"

#include <ImathBox.h>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <functional>
#include <numeric>
#include <queue>

namespace host {

namespace {

const std::vector<int>& seedsOf(const SoftShape& shape, SeedSide side)
{
    return side == SeedSide::kPrimary ? shape.seeds : shape.mirrored;
}

/// Position of a point index among SoftShape::points; they are the same unless CVs repeat.
std::size_t placeOf(const SoftShape& shape, int point)
{
    const auto at = static_cast<std::size_t>(point);
    if (at < shape.points.size() && shape.points[at] == point)
        return at;
    return static_cast<std::size_t>(std::lower_bound(shape.points.begin(), shape.points.end(), point) -
                                    shape.points.begin());
}

void addSeedPositions(const SoftShape& shape, SeedSide side, std::vector<Imath::V3d>& positions)
{
    for (const int seed : seedsOf(shape, side))
        positions.push_back(shape.world[placeOf(shape, seed)]);
}

std::vector<double> straightDistances(const SoftShape& shape, const std::vector<Imath::V3d>& seeds,
                                      const PointTree& tree, double radius)
{
    std::vector<double> distances(shape.world.size(), kOutOfReach);
    Imath::Box3d reach;
    for (const Imath::V3d& seed : seeds) {
        reach.extendBy(seed - Imath::V3d(radius));
        reach.extendBy(seed + Imath::V3d(radius));
    }
    const tbb::blocked_range<std::size_t> range(0, distances.size(), 1024);
    tbb::parallel_for(range, [&](const tbb::blocked_range<std::size_t>& part) {
        for (std::size_t at = part.begin(); at < part.end(); ++at) {
            if (!reach.intersects(shape.world[at]))
                continue;
            const PointTree::Nearest nearest = tree.nearest(shape.world[at], radius);
            if (nearest.index >= 0)
                distances[at] = nearest.distance;
        }
    });
    return distances;
}

/// Neighbours of every vertex along edges, as one array with the starts of its rows.
struct Neighbours {
    std::vector<std::size_t> starts;
    std::vector<int> vertices;
};

Neighbours neighboursOf(const MeshTopology& topology, std::size_t count)
{
    Neighbours out;
    out.starts.assign(count + 1, 0);
    const auto inside = [count](int vertex) {
        return vertex >= 0 && static_cast<std::size_t>(vertex) < count;
    };
    for (const auto& edge : topology.edges) {
        if (!inside(edge[0]) || !inside(edge[1]))
            continue;
        ++out.starts[static_cast<std::size_t>(edge[0]) + 1];
        ++out.starts[static_cast<std::size_t>(edge[1]) + 1];
    }
    std::partial_sum(out.starts.begin(), out.starts.end(), out.starts.begin());
    out.vertices.resize(out.starts.back());
    std::vector<std::size_t> next(out.starts.begin(), out.starts.end() - 1);
    for (const auto& edge : topology.edges) {
        if (!inside(edge[0]) || !inside(edge[1]))
            continue;
        out.vertices[next[static_cast<std::size_t>(edge[0])]++] = edge[1];
        out.vertices[next[static_cast<std::size_t>(edge[1])]++] = edge[0];
    }
    return out;
}

/// Shortest paths along edges from all seeds at once (Dijkstra), given up beyond the radius.
std::vector<double> edgeDistances(const SoftShape& shape, const MeshTopology& topology,
                                  const std::vector<int>& seeds, double radius)
{
    std::vector<double> distances(shape.world.size(), kOutOfReach);
    const Neighbours neighbours = neighboursOf(topology, distances.size());
    using Entry = std::pair<double, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> queue;
    for (const int seed : seeds) {
        distances[static_cast<std::size_t>(seed)] = 0.0;
        queue.emplace(0.0, seed);
    }
    while (!queue.empty()) {
        const auto [distance, vertex] = queue.top();
        queue.pop();
        const auto from = static_cast<std::size_t>(vertex);
        if (distance > distances[from])
            continue;
        for (std::size_t k = neighbours.starts[from]; k < neighbours.starts[from + 1]; ++k) {
            const auto to = static_cast<std::size_t>(neighbours.vertices[k]);
            const double length = distance + (shape.world[to] - shape.world[from]).length();
            if (length <= radius && length < distances[to]) {
                distances[to] = length;
                queue.emplace(length, neighbours.vertices[k]);
            }
        }
    }
    return distances;
}

std::vector<double> distancesWithin(const SoftShape& shape, SeedSide side, bool alongEdges, double radius)
{
    const std::vector<int>& seeds = seedsOf(shape, side);
    if (seeds.empty())
        return std::vector<double>(shape.world.size(), kOutOfReach);
    if (alongEdges) {
        const GeometryRef geometry = shapeGeometry(*shape.shape);
        if (geometry && geometry->kind() == Geometry::Kind::kMesh)
            return edgeDistances(shape, *static_cast<const MeshData&>(*geometry).topology, seeds, radius);
    }
    std::vector<Imath::V3d> positions;
    addSeedPositions(shape, side, positions);
    return straightDistances(shape, positions, PointTree(positions), radius);
}

} // namespace

SoftShape softShape(DagNode& shape)
{
    SoftShape out;
    out.shape = Ref<DagNode>(&shape);
    out.points = pointIndices(shape, nullptr);
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        return out;
    const Imath::M44d toWorld = worldMatrix(shape);
    out.world.reserve(out.points.size());
    for (const int point : out.points)
        out.world.push_back(geometry->points()[static_cast<std::size_t>(point)] * toWorld);
    return out;
}

std::vector<std::vector<double>> seedDistances(const std::vector<SoftShape>& shapes, SeedSide side,
                                               SoftSelectOptions::Falloff falloff, double radius)
{
    std::vector<std::vector<double>> out;
    if (falloff == SoftSelectOptions::kSurface || falloff == SoftSelectOptions::kObject) {
        for (const SoftShape& shape : shapes)
            out.push_back(distancesWithin(shape, side, falloff == SoftSelectOptions::kSurface, radius));
        return out;
    }
    std::vector<Imath::V3d> seeds;
    for (const SoftShape& shape : shapes)
        addSeedPositions(shape, side, seeds);
    const PointTree tree(seeds);
    for (const SoftShape& shape : shapes) {
        const bool reached =
            falloff == SoftSelectOptions::kGlobal || !shape.seeds.empty() || !shape.mirrored.empty();
        out.push_back(reached && !seeds.empty() ? straightDistances(shape, seeds, tree, radius)
                                                : std::vector<double>(shape.world.size(), kOutOfReach));
    }
    return out;
}

} // namespace host
