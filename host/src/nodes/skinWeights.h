#pragma once

#include "selection/pointList.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host {

class DagNode;
class Node;

/// The influences of a skin in physical order: those whose matrix is connected, by ascending logical index.
struct SkinInfluences {
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;
    std::vector<std::uint32_t> logical;    ///< per physical index
    std::vector<std::uint32_t> physicalOf; ///< per logical index; kNone in gaps
    std::vector<DagNode*> nodes;           ///< per physical index
    std::vector<bool> locked;              ///< per physical index: lockWeights, mostly fed by the joint

    explicit SkinInfluences(Node& skin);
    std::size_t count() const { return logical.size(); }
    /// kNone when the node is no influence.
    std::uint32_t physical(const DagNode& node) const;
};

/// Weights of the points, vertex-major, all influences in physical order.
std::vector<double> skinWeights(Node& skin, const SkinInfluences& influences, const PointList& points);

/// A change of the weights of some influences on some points.
struct SkinWeightChange {
    PointList points;
    std::vector<std::uint32_t> influences; ///< physical; a repeated one counts as it was listed last
    /// One per influence, or one per point and influence, vertex-major. The caller keeps them.
    const double* values = nullptr;
    std::size_t valueCount = 0;
    bool normalize = true; ///< make room for the new weights; not when the skin does not normalize
};

/// Writes the weights. When normalizing, with s the sum of the new weights, L that of the other locked
/// influences and U that of the other unlocked ones, the latter are multiplied by max(0, 1 - s - L) / U; when
/// U is 0 they stay. The listed influences get just what was asked for, locked or not. Weights of 0 are not
/// stored. Throws host::Error and has then written nothing: a wrong number of values, an influence that there
/// is not, weights that are locked.
void setSkinWeights(Node& skin, const SkinInfluences& influences, const SkinWeightChange& change);

} // namespace host
