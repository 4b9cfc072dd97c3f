#pragma once

#include "graph/weightRows.h"
#include "selection/pointList.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
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

    /// Those of a skin as the scene is now. They are found anew only after it has changed.
    static std::shared_ptr<const SkinInfluences> of(Node& skin);
    explicit SkinInfluences(Node& skin);
    std::size_t count() const { return logical.size(); }
    /// kNone when the node is no influence.
    std::uint32_t physical(const DagNode& node) const;
};

/// The weights of some influences, in any order, to be read.
class SkinColumns {
public:
    /// Throws host::Error for an influence that there is not.
    SkinColumns(const SkinInfluences& influences, const std::vector<std::uint32_t>& physical);
    std::size_t count() const { return columns.size(); }

    /// Weights of the points, vertex-major; `rows` may be null.
    template <class Number>
    void read(const WeightRows* rows, const PointList& points, Number* weights) const
    {
        std::fill_n(weights, points.size() * count(), Number(0));
        for (std::size_t point = 0; rows && point < points.size(); ++point)
            readRow(rows->row(static_cast<std::uint32_t>(points[point])), weights + point * count());
    }

private:
    template <class Number>
    void readRow(WeightRows::Span row, Number* weights) const
    {
        for (std::size_t k = 0; k < row.count; ++k) {
            const std::uint32_t column = row.columns[k];
            const std::uint32_t position =
                column < positionOf.size() ? positionOf[column] : SkinInfluences::kNone;
            if (position != SkinInfluences::kNone)
                weights[position] = static_cast<Number>(row.weights[k]);
        }
        for (const std::size_t repeat : repeats)
            weights[repeat] = weights[positionOf[columns[repeat]]];
    }

    std::vector<std::uint32_t> columns; ///< logical
    std::vector<std::uint32_t>
        positionOf;                   ///< by logical index: the first position of the influence, or kNone
    std::vector<std::size_t> repeats; ///< the positions of those listed again
};

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
void setSkinWeights(Node& skin, const SkinWeightChange& change);

} // namespace host
