#pragma once

#include "graph/logicalTable.h"
#include "graph/weightRows.h"
#include "nodes/dualQuaternion.h"
#include "nodes/filterInput.h"

#include <ImathMatrix.h>

#include <vector>

namespace host {

/// How one influence moves the points.
struct SkinInfluence {
    std::uint32_t logical = 0;
    Imath::M44d motion;   ///< bind pre-matrix * world matrix, in world space
    DualQuaternion rigid; ///< the same without scale and shear; filled unless skinning is linear
};

enum class SkinMethod { kLinear = 0, kDualQuaternion = 1, kBlended = 2 };

/// Everything that moves the points of a skin, gathered on the main thread.
struct SkinPose {
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;
    std::vector<SkinInfluence> influences;
    LogicalTable<std::uint32_t> placeOf{kNone}; ///< in `influences`, by logical index
    Imath::M44d geometry;                       ///< object space at binding to world
    SkinMethod method = SkinMethod::kLinear;
    bool normalizeRows = false; ///< rows are divided by their sum (normalizeWeights "post")
};

/// Row of weights of a point as far as it counts: entries without an influence are left out.
/// Returns the sum of the weights.
double usedWeight(const SkinPose& pose, WeightRows::Span row);

/// The point in world space after linear skinning: sum of w * (p * motion).
Imath::V3d linearPoint(const SkinPose& pose, WeightRows::Span row, double scale, const Imath::V3d& world);

/// The point in world space after blending the rigid motions as unit dual quaternions, each turned to the
/// same side as the one with the largest weight. The lengths of scaled influences do not count.
Imath::V3d dualQuaternionPoint(const SkinPose& pose, WeightRows::Span row, const Imath::V3d& world);

/// The deformation of a skinCluster. A point none of whose weights counts stays where it is.
void deformBySkin(Node& node, FilterInput& input);

} // namespace host
