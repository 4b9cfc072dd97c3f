#include "selection/pointTree.h"

#include <nanoflann.hpp>

#include <cmath>
#include <limits>

namespace host {

namespace {

struct Cloud {
    std::vector<Imath::V3d> points;

    std::size_t kdtree_get_point_count() const { return points.size(); }
    double kdtree_get_pt(std::size_t at, std::size_t axis) const
    {
        return points[at][static_cast<int>(axis)];
    }
    template <class Box>
    bool kdtree_get_bbox(Box&) const
    {
        return false;
    }
};

using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 3>;

/// Collects the one nearest point not farther than a limit.
class NearestWithin {
public:
    using DistanceType = double;

    explicit NearestWithin(double squaredRadius) : best(squaredRadius) {}
    bool full() const { return true; }
    std::size_t size() const { return found < 0 ? 0 : 1; }
    double worstDist() const { return best; }
    bool addPoint(double squared, std::size_t index)
    {
        const int candidate = static_cast<int>(index);
        const bool first = found < 0 && squared <= best;
        if (first || squared < best || (squared == best && candidate < found)) {
            best = squared;
            found = candidate;
        }
        return true;
    }

    double best;
    int found = -1;
};

} // namespace

struct PointTree::Index {
    explicit Index(std::vector<Imath::V3d> points)
        : cloud{std::move(points)}, tree(3, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(12))
    {}
    Cloud cloud;
    Tree tree;
};

PointTree::PointTree(std::vector<Imath::V3d> points) : index(std::make_unique<Index>(std::move(points))) {}

PointTree::~PointTree() = default;
PointTree::PointTree(PointTree&&) noexcept = default;
PointTree& PointTree::operator=(PointTree&&) noexcept = default;

std::size_t PointTree::size() const
{
    return index->cloud.points.size();
}

PointTree::Nearest PointTree::nearest(const Imath::V3d& from, double radius) const
{
    if (index->cloud.points.empty() || !(radius >= 0.0))
        return {};
    // The leaf test of the tree is strict: a limit a hair larger lets points at exactly the radius in, which
    // are judged by their true distance below.
    const double limit = std::nextafter(radius * radius, std::numeric_limits<double>::infinity());
    NearestWithin result(limit);
    index->tree.findNeighbors(result, &from.x, nanoflann::SearchParams());
    if (result.found < 0 || result.best > radius * radius)
        return {};
    return {result.found, std::sqrt(result.best)};
}

} // namespace host
