#include "nodes/primitives.h"

#include "types/error.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace host {

namespace {

constexpr double kPi = 3.14159265358979323846;

/// Points and faces of a mesh in the making.
struct Builder {
    Points points;
    std::vector<int> counts;
    std::vector<int> corners;

    void quad(int a, int b, int c, int d)
    {
        counts.push_back(4);
        corners.insert(corners.end(), {a, b, c, d});
    }
    void triangle(int a, int b, int c)
    {
        counts.push_back(3);
        corners.insert(corners.end(), {a, b, c});
    }
    int point(const Imath::V3d& at)
    {
        points.push_back(at);
        return static_cast<int>(points.size()) - 1;
    }
    void ring(double radius, double y, int count)
    {
        for (int i = 0; i < count; ++i) {
            const double angle = -(i + 1) * 2.0 * kPi / count;
            points.emplace_back(radius * std::cos(angle), y, radius * std::sin(angle));
        }
    }
    /// Quads between two rings of `count` vertices that begin at `low` and `high`, seen from outside.
    void band(int low, int high, int count)
    {
        for (int i = 0; i < count; ++i) {
            const int next = (i + 1) % count;
            quad(low + i, low + next, high + next, high + i);
        }
    }
    std::shared_ptr<MeshData> take()
    {
        return meshFromFaces(std::move(points), std::move(counts), std::move(corners));
    }
};

/// Half of a cap: rings shrinking towards a centre, or one polygon.
void addCap(Builder& build, int outer, int count, double radius, double y, int rings, bool top)
{
    if (rings == 0) {
        build.counts.push_back(count);
        for (int i = 0; i < count; ++i)
            build.corners.push_back(outer + (top ? i : count - 1 - i));
        return;
    }
    int previous = outer;
    for (int ring = 1; ring < rings; ++ring) {
        const int begin = static_cast<int>(build.points.size());
        build.ring(radius * (rings - ring) / rings, y, count);
        if (top)
            build.band(previous, begin, count);
        else
            build.band(begin, previous, count);
        previous = begin;
    }
    const int centre = build.point({0, y, 0});
    for (int i = 0; i < count; ++i) {
        const int next = (i + 1) % count;
        if (top)
            build.triangle(previous + i, previous + next, centre);
        else
            build.triangle(previous + next, previous + i, centre);
    }
}

/// A box as a belt, which is rows of sx + 1 vertices along x going once around the x axis (front, top, back,
/// bottom), and two sides.
struct CubeGrid {
    Imath::V3d size;
    int sx, sy, sz; ///< quads along each axis

    int rows() const { return 2 * (sy + sz); }

    /// y and z of a row of the belt.
    std::pair<double, double> beltPosition(int row) const
    {
        const Imath::V3d half = size * 0.5;
        if (row <= sy)
            return {-half.y + size.y * row / sy, half.z};
        if (row <= sy + sz)
            return {half.y, half.z - size.z * (row - sy) / sz};
        if (row <= 2 * sy + sz)
            return {half.y - size.y * (row - sy - sz) / sy, -half.z};
        return {-half.y, -half.z + size.z * (row - 2 * sy - sz) / sz};
    }

    /// The belt's row at the border of a side at y step j, z step k (from the front); -1 inside.
    int borderRow(int j, int k) const
    {
        if (k == 0)
            return j;
        if (k == sz)
            return 2 * sy + sz - j;
        if (j == sy)
            return sy + k;
        return j == 0 ? rows() - k : -1;
    }

    void addSide(Builder& build, bool right) const
    {
        const Imath::V3d half = size * 0.5;
        std::vector<std::vector<int>> cells(static_cast<std::size_t>(sy) + 1); // [j][k]
        for (int j = 0; j <= sy; ++j)
            for (int k = 0; k <= sz; ++k) {
                const int border = borderRow(j, k);
                const Imath::V3d inside(right ? half.x : -half.x, -half.y + size.y * j / sy,
                                        half.z - size.z * k / sz);
                cells[static_cast<std::size_t>(j)].push_back(
                    border < 0 ? build.point(inside) : border * (sx + 1) + (right ? sx : 0));
            }
        for (std::size_t j = 0; j + 1 < cells.size(); ++j)
            for (std::size_t k = 0; k + 1 < cells[j].size(); ++k) {
                const int a = cells[j][k], b = cells[j][k + 1], c = cells[j + 1][k + 1], d = cells[j + 1][k];
                if (right)
                    build.quad(a, b, c, d);
                else
                    build.quad(b, a, d, c);
            }
    }
};

/// Twice a face's area, along its normal.
Imath::V3d areaOf(const Points& points, const int* vertices, int count)
{
    Imath::V3d area(0, 0, 0);
    for (int k = 0; k < count; ++k)
        area += points[static_cast<std::size_t>(vertices[k])].cross(
            points[static_cast<std::size_t>(vertices[(k + 1) % count])]);
    return area;
}

/// Marks the edges that are shaded soft: those of two faces that meet at less than a right angle. The round
/// sides of primitives are soft so and their rims hard.
void softenEdges(MeshTopology& topology, const Points& points)
{
    constexpr double kAlmostRightAngle = 0.02; // cosine
    std::vector<std::vector<Imath::V3d>> normals(topology.edges.size());
    std::size_t begin = 0;
    for (const int count : topology.faceCounts) {
        const Imath::V3d normal = areaOf(points, &topology.faceVertices[begin], count).normalized();
        for (int k = 0; k < count; ++k) {
            const int edge = topology.faceEdges[begin + static_cast<std::size_t>(k)];
            normals[static_cast<std::size_t>(edge >= 0 ? edge : -edge - 1)].push_back(normal);
        }
        begin += static_cast<std::size_t>(count);
    }
    for (std::size_t edge = 0; edge < normals.size(); ++edge)
        topology.edges[edge][2] =
            normals[edge].size() == 2 && normals[edge][0].dot(normals[edge][1]) > kAlmostRightAngle ? 1 : 0;
}

/// A few digits too many, in a command or in a file, must not take the memory of the machine.
void requireFew(double points)
{
    if (points > static_cast<double>(kMostPoints))
        throw Error("A shape of " + std::to_string(static_cast<long long>(points)) + " points is too large.");
}

} // namespace

std::shared_ptr<MeshData> meshFromFaces(Points points, std::vector<int> faceCounts,
                                        std::vector<int> faceVertices)
{
    auto topology = std::make_shared<MeshTopology>();
    std::vector<std::pair<int, int>> pairs;
    pairs.reserve(faceVertices.size());
    std::size_t begin = 0;
    for (int corners : faceCounts) {
        for (int k = 0; k < corners; ++k) {
            const int a = faceVertices[begin + static_cast<std::size_t>(k)];
            const int b = faceVertices[begin + static_cast<std::size_t>((k + 1) % corners)];
            pairs.emplace_back(std::min(a, b), std::max(a, b));
        }
        begin += static_cast<std::size_t>(corners);
    }
    std::vector<std::pair<int, int>> edges = pairs;
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    for (const auto& [low, high] : edges)
        topology->edges.push_back({low, high, 0});
    for (std::size_t corner = 0; corner < pairs.size(); ++corner) {
        const auto found = std::lower_bound(edges.begin(), edges.end(), pairs[corner]);
        const int edge = static_cast<int>(found - edges.begin());
        topology->faceEdges.push_back(faceVertices[corner] == pairs[corner].first ? edge : -edge - 1);
    }
    topology->faceCounts = std::move(faceCounts);
    topology->faceVertices = std::move(faceVertices);
    softenEdges(*topology, points);

    auto mesh = std::make_shared<MeshData>();
    mesh->pointsRef = std::make_shared<Points>(std::move(points));
    mesh->topology = std::move(topology);
    return mesh;
}

std::shared_ptr<MeshData> planeMesh(double width, double height, int sx, int sy)
{
    requireFew((sx + 1.0) * (sy + 1.0));
    Builder build;
    for (int j = 0; j <= sy; ++j)
        for (int i = 0; i <= sx; ++i)
            build.points.emplace_back(width * (static_cast<double>(i) / sx - 0.5), 0.0,
                                      height * (0.5 - static_cast<double>(j) / sy));
    const int row = sx + 1;
    for (int j = 0; j < sy; ++j)
        for (int i = 0; i < sx; ++i) {
            const int corner = j * row + i;
            build.quad(corner, corner + 1, corner + row + 1, corner + row);
        }
    return build.take();
}

std::shared_ptr<MeshData> cubeMesh(const Imath::V3d& size, int sx, int sy, int sz)
{
    requireFew(2.0 * (sx * (sy + 1.0) + sy * (sz + 1.0) + sz * (sx + 1.0)));
    Builder build;
    const CubeGrid grid{size, sx, sy, sz};
    const int row = sx + 1;
    for (int r = 0; r < grid.rows(); ++r) {
        const auto [y, z] = grid.beltPosition(r);
        for (int i = 0; i <= sx; ++i)
            build.points.emplace_back(-size.x * 0.5 + size.x * i / sx, y, z);
    }
    for (int r = 0; r < grid.rows(); ++r)
        for (int i = 0; i < sx; ++i) {
            const int low = r * row + i, high = (r + 1) % grid.rows() * row + i;
            build.quad(low, low + 1, high + 1, high);
        }
    grid.addSide(build, true);
    grid.addSide(build, false);
    return build.take();
}

std::shared_ptr<MeshData> sphereMesh(double radius, int sx, int sy)
{
    requireFew(static_cast<double>(sx) * sy);
    Builder build;
    for (int j = 1; j < sy; ++j) {
        const double latitude = -kPi / 2 + kPi * j / sy;
        build.ring(radius * std::cos(latitude), radius * std::sin(latitude), sx);
    }
    for (int j = 0; j + 2 < sy; ++j)
        build.band(j * sx, (j + 1) * sx, sx);
    const int bottom = build.point({0, -radius, 0});
    const int top = build.point({0, radius, 0});
    const int last = (sy - 2) * sx;
    for (int i = 0; i < sx; ++i) {
        const int next = (i + 1) % sx;
        build.triangle(next, i, bottom);
        build.triangle(last + i, last + next, top);
    }
    return build.take();
}

std::shared_ptr<MeshData> cylinderMesh(double radius, double height, int sx, int sy, int capRings)
{
    requireFew(sx * (sy + 2.0 * capRings + 1.0) + 2.0);
    Builder build;
    for (int j = 0; j <= sy; ++j)
        build.ring(radius, height * (static_cast<double>(j) / sy - 0.5), sx);
    for (int j = 0; j < sy; ++j)
        build.band(j * sx, (j + 1) * sx, sx);
    addCap(build, 0, sx, radius, -height / 2, capRings, false);
    addCap(build, sy * sx, sx, radius, height / 2, capRings, true);
    return build.take();
}

} // namespace host
