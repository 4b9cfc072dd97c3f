#pragma once

#include "nodes/geometry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace host {

class Attribute;
class Node;
class NumericArray;
class Plug;

/// One geometry on its way through a deformer.
struct FilterInput {
    std::uint32_t index = 0;  ///< logical index of input[] and outputGeometry[]
    GeometryRef geometry;     ///< as it came in
    Points* points = nullptr; ///< the outgoing points, at first those that came in
    bool all = true;          ///< every point may be moved
    std::vector<int> members; ///< else these, ascending
    double envelope = 1.0;

    std::size_t count() const { return all ? points->size() : members.size(); }
    std::size_t point(std::size_t member) const
    {
        return all ? member : static_cast<std::size_t>(members[member]);
    }
};

/// The points of a geometry that a deformer may move, told by an element of its `input`: those of the group
/// whose id the input has, as the geometry says; else those of the component tags its expression names; all
/// points when there is neither.
PointGroup memberPoints(const Plug& input, const Geometry& geometry);

/// Computes outputGeometry of a deformer: every input geometry is handed to `deform`, which writes to
/// input.points. A deformer without effect (node state, envelope 0) passes its inputs on.
void computeFilter(Node& node, const Attribute& output, void (*deform)(Node&, FilterInput&));

/// Calls `change` for runs of members (see FilterInput::point) that cover them all, on several threads when
/// there are many. It may only write to the points of its run and must not touch nodes or plugs.
void forEachMember(const FilterInput& input,
                   const std::function<void(std::size_t first, std::size_t end)>& change);

/// weightList[index].weights of a deformer with one weight per point; null when nothing is stored (all 1).
const NumericArray* filterWeights(Node& node, std::uint32_t index);

/// Matrix in both directions, for deformers that work in world space: a point times `to` lies in the world.
struct GeometryFrame {
    Imath::M44d to, from;
    explicit GeometryFrame(const Imath::M44d& matrix) : to(matrix), from(matrix.inverse()) {}
};

/// Row vector times matrix without the division by w.
inline Imath::V3d transformed(const Imath::V3d& p, const Imath::M44d& m)
{
    return {p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + m[3][0],
            p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + m[3][1],
            p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + m[3][2]};
}

} // namespace host
