#pragma once

#include <ImathVec.h>

#include <memory>
#include <vector>

namespace host {

/// Nearest-neighbour queries over a fixed set of points. Queries may run on several threads at once.
class PointTree {
public:
    explicit PointTree(std::vector<Imath::V3d> points);
    ~PointTree();
    PointTree(PointTree&&) noexcept;
    PointTree& operator=(PointTree&&) noexcept;

    std::size_t size() const;

    struct Nearest {
        int index = -1; ///< -1: no point within the radius
        double distance = 0.0;
    };
    /// The nearest point at most `radius` away; of points equally near the one with the lowest index.
    Nearest nearest(const Imath::V3d& from, double radius) const;

private:
    struct Index;
    std::unique_ptr<Index> index;
};

} // namespace host
