#pragma once

#include "nodes/filterInput.h"

#include <map>
#include <vector>

namespace host {

class Node;

/// How far points lie from the base in one shape of a target.
struct TargetDeltas {
    std::vector<int> points;
    std::vector<Imath::V3d> offsets; ///< one per point
};

/// The shapes of target `target` for geometry `geometry`, by the weight at which each is reached (item 6000
/// is weight 1, 5500 weight 0.5). A connected target geometry counts before stored deltas: target minus the
/// incoming geometry. Throws host::Error when a target has fewer points than the base and topologyCheck is
/// on.
std::map<double, TargetDeltas> targetShapes(Node& blendShape, std::uint32_t geometry, std::uint32_t target,
                                            const Geometry& base);

/// Shares of a target's shapes at a weight: between two shapes (the base counts as one, at weight 0) linear,
/// outside the first and the last on in the same direction. Pairs of a shape's weight and its factor.
std::vector<std::pair<double, double>> shapeShares(const std::map<double, TargetDeltas>& shapes,
                                                   double weight);

/// Stores the deltas of a target that is still connected, so that its shape outlives it. `input` is the
/// target's inputGeomTarget.
void keepTarget(const Plug& input);

/// p + envelope * base weight * sum over targets of target weight * deltas at the target's value.
void deformByBlendShape(Node& node, FilterInput& input);

} // namespace host
