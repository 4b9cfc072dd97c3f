#include "kernels/nearestMatch.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <nanoflann.hpp>

namespace {

/// Squares that lie closer to one another than by this factor may belong to equal distances, or to distances
/// in the other order: roots round, and the tree's sums round differently.
constexpr double kSlack = 1e-9;
/// Below this a square has lost digits and says nothing for sure.
constexpr double kFullPrecision = 1e-280;

bool isFinite(const Position& point)
{
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

/// Tells positions that were met before: an open hash table of indices into the points gathered so far.
class MetPoints {
public:
    MetPoints(const std::vector<Position>& gathered, std::size_t mostPoints) : points(gathered)
    {
        std::size_t size = 16;
        while (size < mostPoints * 2)
            size *= 2;
        slots.assign(size, 0);
    }

    /// Whether the position is new; the caller then gathers it.
    bool isNew(const Position& point)
    {
        const std::size_t mask = slots.size() - 1;
        for (std::size_t slot = hashOf(point) & mask;; slot = (slot + 1) & mask) {
            if (slots[slot] == 0) {
                slots[slot] = points.size() + 1;
                return true;
            }
            if (points[slots[slot] - 1] == point)
                return false;
        }
    }

private:
    static std::size_t hashOf(const Position& point)
    {
        std::uint64_t hash = 0;
        for (double coordinate : point) {
            const double unsignedZero = coordinate + 0.0;
            std::uint64_t bits = 0;
            std::memcpy(&bits, &unsignedZero, sizeof bits);
            hash = (hash ^ bits) * 0x9E3779B97F4A7C15U; // the golden ratio spreads well
            hash ^= hash >> 32;
        }
        return static_cast<std::size_t>(hash);
    }

    const std::vector<Position>& points;
    std::vector<std::size_t> slots; ///< 0 = free, else an index plus one
};

/// The distinct finite vertices of one object, as the tree library reads them.
struct Cloud {
    std::vector<Position> points;
    std::vector<std::size_t> positions; ///< of each point in the object: the first of those that coincide

    explicit Cloud(const std::vector<Position>& vertices)
    {
        points.reserve(vertices.size());
        positions.reserve(vertices.size());
        // Coincident points are one point: a query in the middle of thousands of them must not visit them
        // all.
        MetPoints met(points, vertices.size());
        for (std::size_t k = 0; k < vertices.size(); ++k) {
            if (!isFinite(vertices[k]) || !met.isNew(vertices[k]))
                continue;
            points.push_back(vertices[k]);
            positions.push_back(k);
        }
    }

    std::size_t kdtree_get_point_count() const { return points.size(); }
    double kdtree_get_pt(std::size_t point, std::size_t dimension) const { return points[point][dimension]; }
    template <typename Box>
    bool kdtree_get_bbox(Box&) const
    {
        return false;
    }
};

/// Collects the best vertex by the exact rule while the tree is walked; it outlives one tree, so that an
/// earlier object's vertex is kept on equal distances. Squares decide where they can; only near a tie are
/// roots taken.
class BestMatch {
public:
    explicit BestMatch(const Position& fromPoint) : from(fromPoint) { setSquare(kMatchLimit * kMatchLimit); }

    void enter(std::size_t objectIndex, const Cloud& objectCloud)
    {
        object = objectIndex;
        cloud = &objectCloud;
    }
    VertexMatch match() const { return best; }

    // What the tree library asks of a result set.
    using DistanceType = double;
    using IndexType = std::size_t;
    std::size_t size() const { return best.found ? 1 : 0; }
    bool empty() const { return !best.found; }
    bool full() const { return true; }
    double worstDist() const { return reach; }
    void sort() {}
    bool addPoint(double square, std::size_t point)
    {
        if (square < surelyNearer || (square < reach && isBetter(point)))
            take(point, square);
        return true;
    }

private:
    bool isBetter(std::size_t point) const
    {
        const double candidate = distanceBetween(from, cloud->points[point]);
        const double distance = best.found ? distanceBetween(from, *bestPoint) : kMatchLimit;
        const bool metEarlier =
            best.found && best.object == object && cloud->positions[point] < best.position;
        return candidate < distance || (candidate == distance && metEarlier);
    }

    void take(std::size_t point, double square)
    {
        best = {true, object, cloud->positions[point]};
        bestPoint = &cloud->points[point];
        setSquare(square);
    }

    void setSquare(double square)
    {
        surelyNearer = square > kFullPrecision ? square * (1.0 - kSlack) : 0.0;
        // Never zero: the tree takes only points below this square, and a coincident point's square is zero.
        reach = square * (1.0 + kSlack) + std::numeric_limits<double>::min();
    }

    Position from;
    std::size_t object = 0;
    const Cloud* cloud = nullptr;
    VertexMatch best{false, 0, 0};
    const Position* bestPoint = nullptr;
    double surelyNearer = 0.0; ///< any smaller square is a smaller distance
    double reach = 0.0;        ///< no square from here on is as small a distance
};

using KdTree =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud, double, std::size_t>,
                                        Cloud, 3, std::size_t>;

} // namespace

class NearestMatch::Tree {
public:
    explicit Tree(const std::vector<Position>& vertices)
        : cloud(vertices), tree(3, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(12))
    {
        tree.buildIndex();
    }

    void search(const Position& from, std::size_t object, BestMatch& best) const
    {
        if (cloud.points.empty())
            return;
        best.enter(object, cloud);
        tree.findNeighbors(best, from.data(), {});
    }

private:
    Cloud cloud;
    KdTree tree;
};

NearestMatch::NearestMatch(const std::vector<std::vector<Position>>& objects)
{
    trees.reserve(objects.size());
    for (const std::vector<Position>& vertices : objects)
        trees.push_back(std::make_unique<Tree>(vertices));
}

NearestMatch::~NearestMatch() = default;

VertexMatch NearestMatch::nearest(const Position& from) const
{
    BestMatch best(from);
    if (isFinite(from)) {
        for (std::size_t object = 0; object < trees.size(); ++object)
            trees[object]->search(from, object, best);
    }
    return best.match();
}

double distanceBetween(const Position& a, const Position& b)
{
    const double x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    return std::sqrt(x * x + y * y + z * z);
}
