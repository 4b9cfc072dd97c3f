#include "kernels/nearestMatch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nanoflann.hpp>

namespace {

/// A point within this factor of the best square may still be an equal or smaller distance once roots are
/// compared, since the tree's sums round differently.
constexpr double kSlack = 1.0 + 1e-9;

bool isFinite(const Position& point)
{
    return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]);
}

/// The distinct finite vertices of one object, as the tree library reads them.
struct Cloud {
    std::vector<Position> points;
    std::vector<std::size_t> positions; ///< of each point in the object: the first of those that coincide

    explicit Cloud(const std::vector<Position>& vertices)
    {
        std::vector<std::size_t> order;
        order.reserve(vertices.size());
        for (std::size_t k = 0; k < vertices.size(); ++k) {
            if (isFinite(vertices[k]))
                order.push_back(k);
        }
        std::sort(order.begin(), order.end(), [&vertices](std::size_t a, std::size_t b) {
            return vertices[a] != vertices[b] ? vertices[a] < vertices[b] : a < b;
        });
        // Coincident points are one point: a query in the middle of thousands of them must not visit them
        // all.
        for (std::size_t k : order) {
            if (!points.empty() && points.back() == vertices[k])
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
/// earlier object's vertex is kept on equal distances.
class BestMatch {
public:
    explicit BestMatch(const Position& fromPoint) : from(fromPoint) { setBest(kMatchLimit); }

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
    bool addPoint(double, std::size_t point)
    {
        const double candidate = distanceBetween(from, cloud->points[point]);
        const std::size_t position = cloud->positions[point];
        const bool metEarlier = best.found && best.object == object && position < best.position;
        if (candidate < distance || (candidate == distance && metEarlier)) {
            best = {true, object, position};
            setBest(candidate);
        }
        return true;
    }

private:
    void setBest(double newDistance)
    {
        distance = newDistance;
        // Never zero: the tree takes only points below this square, and a coincident point's square is zero.
        reach = distance * distance * kSlack + std::numeric_limits<double>::min();
    }

    Position from;
    std::size_t object = 0;
    const Cloud* cloud = nullptr;
    VertexMatch best{false, 0, 0};
    double distance = kMatchLimit;
    double reach = 0.0;
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
