#include "selection/occlusion.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "session.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace host {

namespace {

/// Pixels within which an edge of a triangle still belongs to it, twice the smallest area that counts, and
/// the depth by which a triangle must be nearer to hide a point. Far below anything visible, far above
/// rounding.
constexpr double kEdgeSlack = 1e-7;
constexpr double kLeastArea = 1e-9;
constexpr double kDepthSlack = 1e-9;
constexpr double kTrianglesPerTile = 4.0;

double cross(const Imath::V3d& a, const Imath::V3d& b, double x, double y)
{
    return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

bool touches(const Imath::V3d& corner, const Imath::V3d& point)
{
    return std::abs(corner.x - point.x) < kEdgeSlack && std::abs(corner.y - point.y) < kEdgeSlack &&
           std::abs(corner.z - point.z) < kDepthSlack;
}

bool isOccluder(const DagNode& shape)
{
    return pointComponentType(shape) == MFn::kMeshVertComponent && isVisible(shape);
}

} // namespace

ScreenTriangles::ScreenTriangles(const Graph& graph, const ViewProjection& view)
    : projection(view), changes(graph.changeCount())
{
    for (const Ref<Node>& node : graph.nodes()) {
        DagNode* shape = node->asDag();
        if (shape && isOccluder(*shape))
            addMesh(*shape);
    }
    sortIntoTiles();
}

bool ScreenTriangles::matches(const Graph& graph, const ViewProjection& view) const
{
    return changes == graph.changeCount() && projection == view;
}

void ScreenTriangles::addMesh(DagNode& shape)
{
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry || geometry->kind() != Geometry::Kind::kMesh)
        return;
    const MeshTopology& topology = *static_cast<const MeshData&>(*geometry).topology;
    const Imath::M44d toWorld = worldMatrix(shape);
    parts.push_back({Ref<DagNode>(&shape), triangles.size()});
    const int first = static_cast<int>(corners.size());
    std::vector<Imath::V3d> world;
    world.reserve(geometry->count());
    for (const Imath::V3d& point : geometry->points()) {
        world.push_back(point * toWorld);
        Imath::V3d at(0.0);
        const bool ahead = projection.project(world.back(), at) && at.z >= 0.0;
        corners.push_back(at);
        drawable.push_back(ahead);
    }
    const auto inside = [&](int vertex) {
        return vertex >= 0 && static_cast<std::size_t>(vertex) < world.size();
    };
    std::vector<int> fan;
    std::size_t corner = 0;
    for (const int count : topology.faceCounts) {
        if (count < 0 || corner + static_cast<std::size_t>(count) > topology.faceVertices.size())
            break; // a mesh from a damaged file: what there is of it is enough to pick on
        const auto start = topology.faceVertices.begin() + static_cast<std::ptrdiff_t>(corner);
        fan.assign(start, start + count);
        corner += static_cast<std::size_t>(count);
        if (std::all_of(fan.begin(), fan.end(), inside))
            addFan(fan, world, first);
    }
}

void ScreenTriangles::addFan(const std::vector<int>& fan, const std::vector<Imath::V3d>& world,
                             int firstCorner)
{
    for (std::size_t k = 2; k < fan.size(); ++k) {
        const int vertices[3] = {fan[0], fan[k - 1], fan[k]};
        const auto isAhead = [&](int vertex) {
            return drawable[static_cast<std::size_t>(firstCorner) + static_cast<std::size_t>(vertex)];
        };
        const auto ahead = std::count_if(std::begin(vertices), std::end(vertices), isAhead);
        if (ahead == 3) {
            addTriangle(firstCorner + vertices[0], firstCorner + vertices[1], firstCorner + vertices[2]);
        } else if (ahead > 0) {
            const Imath::V3d positions[3] = {world[static_cast<std::size_t>(vertices[0])],
                                             world[static_cast<std::size_t>(vertices[1])],
                                             world[static_cast<std::size_t>(vertices[2])]};
            addClipped(positions);
        }
    }
}

/// Cuts off what lies before the near plane (clip z + w < 0) and adds the rest.
void ScreenTriangles::addClipped(const Imath::V3d* world)
{
    const Imath::M44d& m = projection.toClip;
    const auto ahead = [&](const Imath::V3d& p) {
        return p.x * (m[0][2] + m[0][3]) + p.y * (m[1][2] + m[1][3]) + p.z * (m[2][2] + m[2][3]) + m[3][2] +
               m[3][3];
    };
    std::vector<Imath::V3d> kept;
    for (int k = 0; k < 3; ++k) {
        const Imath::V3d &from = world[k], &to = world[(k + 1) % 3];
        const double start = ahead(from), end = ahead(to);
        if (start >= 0.0)
            kept.push_back(from);
        if ((start >= 0.0) != (end >= 0.0))
            kept.push_back(from + (to - from) * (start / (start - end)));
    }
    const int first = static_cast<int>(corners.size());
    for (const Imath::V3d& point : kept) {
        Imath::V3d at(0.0);
        drawable.push_back(projection.project(point, at));
        corners.push_back(at);
    }
    for (int k = 2; k < static_cast<int>(kept.size()); ++k)
        addTriangle(first, first + k - 1, first + k);
}

void ScreenTriangles::addTriangle(int a, int b, int c)
{
    const Triangle triangle{{a, b, c}};
    int columns[2], rows[2];
    const Imath::V3d& third = corners[static_cast<std::size_t>(c)];
    const double area =
        cross(corners[static_cast<std::size_t>(a)], corners[static_cast<std::size_t>(b)], third.x, third.y);
    if (std::abs(area) > kLeastArea && tilesOf(triangle, columns, rows))
        triangles.push_back(triangle);
}

bool ScreenTriangles::tilesOf(const Triangle& triangle, int (&columns)[2], int (&rows)[2]) const
{
    Imath::V3d low(corners[static_cast<std::size_t>(triangle.corners[0])]), high(low);
    for (const int corner : triangle.corners) {
        const Imath::V3d& at = corners[static_cast<std::size_t>(corner)];
        low = {std::min(low.x, at.x), std::min(low.y, at.y), 0.0};
        high = {std::max(high.x, at.x), std::max(high.y, at.y), 0.0};
    }
    if (high.x < 0.0 || high.y < 0.0 || low.x > projection.width || low.y > projection.height)
        return false;
    const auto tile = [this](double pixel, int count) {
        return std::clamp(static_cast<int>(std::clamp(pixel / tileSize, -1.0, 1e6)), 0, count - 1);
    };
    columns[0] = tile(low.x - kEdgeSlack, tileColumns);
    columns[1] = tile(high.x + kEdgeSlack, tileColumns);
    rows[0] = tile(low.y - kEdgeSlack, tileRows);
    rows[1] = tile(high.y + kEdgeSlack, tileRows);
    return true;
}

void ScreenTriangles::sortIntoTiles()
{
    const double pixels = std::max(1.0, projection.width * projection.height);
    tileSize = std::max(
        1.0, std::sqrt(pixels * kTrianglesPerTile / std::max(1.0, static_cast<double>(triangles.size()))));
    tileColumns = static_cast<int>(projection.width / tileSize) + 1;
    tileRows = static_cast<int>(projection.height / tileSize) + 1;
    tileStarts.assign(static_cast<std::size_t>(tileColumns) * static_cast<std::size_t>(tileRows) + 1, 0);
    const auto forEachTile = [this](const Triangle& triangle, auto&& visit) {
        int columns[2] = {0, -1}, rows[2] = {0, -1};
        tilesOf(triangle, columns, rows);
        for (int row = rows[0]; row <= rows[1]; ++row)
            for (int column = columns[0]; column <= columns[1]; ++column)
                visit(tileIndex(column, row));
    };
    for (const Triangle& triangle : triangles)
        forEachTile(triangle, [this](std::size_t tile) { ++tileStarts[tile + 1]; });
    std::partial_sum(tileStarts.begin(), tileStarts.end(), tileStarts.begin());
    tileTriangles.resize(tileStarts.back());
    std::vector<std::size_t> next(tileStarts.begin(), tileStarts.end() - 1);
    for (std::size_t at = 0; at < triangles.size(); ++at)
        forEachTile(triangles[at],
                    [&](std::size_t tile) { tileTriangles[next[tile]++] = static_cast<int>(at); });
}

std::size_t ScreenTriangles::tileAt(double x, double y) const
{
    const auto tile = [this](double pixel, int count) {
        return std::clamp(static_cast<int>(std::clamp(pixel / tileSize, -1.0, 1e6)), 0, count - 1);
    };
    return tileIndex(tile(x, tileColumns), tile(y, tileRows));
}

bool ScreenTriangles::depthAt(const Triangle& triangle, double x, double y, double& depth) const
{
    const Imath::V3d& a = corners[static_cast<std::size_t>(triangle.corners[0])];
    const Imath::V3d& b = corners[static_cast<std::size_t>(triangle.corners[1])];
    const Imath::V3d& c = corners[static_cast<std::size_t>(triangle.corners[2])];
    const double area = cross(a, b, c.x, c.y);
    const double sign = area < 0.0 ? -1.0 : 1.0;
    const double ofA = cross(b, c, x, y), ofB = cross(c, a, x, y), ofC = cross(a, b, x, y);
    const auto outside = [sign](double part, const Imath::V3d& from, const Imath::V3d& to) {
        return part * sign < -kEdgeSlack * (std::abs(to.x - from.x) + std::abs(to.y - from.y));
    };
    if (outside(ofA, b, c) || outside(ofB, c, a) || outside(ofC, a, b))
        return false;
    depth = (ofA * a.z + ofB * b.z + ofC * c.z) / area;
    return true;
}

bool ScreenTriangles::hides(const Imath::V3d& point) const
{
    const std::size_t tile = tileAt(point.x, point.y);
    for (std::size_t k = tileStarts[tile]; k < tileStarts[tile + 1]; ++k) {
        const Triangle& triangle = triangles[static_cast<std::size_t>(tileTriangles[k])];
        double depth = 0.0;
        if (!depthAt(triangle, point.x, point.y, depth) || depth >= point.z - kDepthSlack)
            continue;
        const auto meets = [&](int corner) {
            return touches(corners[static_cast<std::size_t>(corner)], point);
        };
        if (std::none_of(std::begin(triangle.corners), std::end(triangle.corners), meets))
            return true;
    }
    return false;
}

DagNode* ScreenTriangles::front(double x, double y) const
{
    const std::size_t tile = tileAt(x, y);
    int nearest = -1;
    double nearestDepth = 1.0;
    for (std::size_t k = tileStarts[tile]; k < tileStarts[tile + 1]; ++k) {
        double depth = 0.0;
        if (!depthAt(triangles[static_cast<std::size_t>(tileTriangles[k])], x, y, depth))
            continue;
        if (depth < nearestDepth) {
            nearestDepth = depth;
            nearest = tileTriangles[k];
        }
    }
    if (nearest < 0)
        return nullptr;
    const auto part = std::upper_bound(
        parts.begin(), parts.end(), static_cast<std::size_t>(nearest),
        [](std::size_t triangle, const Part& candidate) { return triangle < candidate.firstTriangle; });
    return std::prev(part)->shape.get();
}

const ScreenTriangles& screenTriangles(Session& session)
{
    std::shared_ptr<const ScreenTriangles>& kept = session.selection().screenTriangles;
    const ViewProjection view = session.viewport().projection();
    if (!kept || !kept->matches(session.graph(), view))
        kept = std::make_shared<const ScreenTriangles>(session.graph(), view);
    return *kept;
}

} // namespace host
