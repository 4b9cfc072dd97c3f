#pragma once

#include <cstddef>
#include <maya/MFn.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <vector>

/// The points of a component, to make components of some of them.
class ComponentPoints {
public:
    /// None for a component that holds no points of a known kind.
    explicit ComponentPoints(const MObject& component);
    std::size_t count() const { return first.size(); }

    /// The points at these positions, in their order.
    MObject part(const std::vector<unsigned int>& positions) const;
    /// `count` points from one position on.
    MObject run(std::size_t position, std::size_t count) const;

private:
    template <typename PositionAt>
    MObject make(std::size_t count, const PositionAt& positionAt) const;

    MFn::Type kind;
    std::vector<int> first, second, third; ///< the indices that the kind has
};
