#pragma once

#include "selection/selectionState.h"

#include <ImathVec.h>

#include <limits>
#include <vector>

namespace host {

class DagNode;

/// One shape that soft selection looks at: where its points are and which of them it starts from. Point
/// indices are those of the geometry.
struct SoftShape {
    Ref<DagNode> shape;
    std::vector<Imath::V3d> world;    ///< of every point that is a component
    std::vector<int> points;          ///< their point indices, ascending; world[k] belongs to points[k]
    std::vector<int> seeds, mirrored; ///< selected points and their mirror images; ascending, disjoint
};

/// A shape with its points where they are displayed, in world space, and no seeds.
SoftShape softShape(DagNode& shape);

constexpr double kOutOfReach = std::numeric_limits<double>::infinity();

enum class SeedSide { kPrimary, kMirrored };

/// For every shape and every one of its points (in the order of SoftShape::points) the distance in
/// centimetres to the nearest seed of that side, or kOutOfReach beyond the radius.
///
///   volume   straight through space, from the seeds of all shapes; shapes without seeds are not reached
///   global   the same, and shapes without seeds are reached too
///   object   straight through space, from the seeds of the same shape only
///   surface  along mesh edges, from the seeds of the same shape; shapes that are no meshes as `object`
std::vector<std::vector<double>> seedDistances(const std::vector<SoftShape>& shapes, SeedSide side,
                                               SoftSelectOptions::Falloff falloff, double radius);

} // namespace host
