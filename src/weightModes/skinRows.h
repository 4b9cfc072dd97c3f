#pragma once

#include <cstddef>
#include <cstdint>
#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <memory>
#include <vector>

/// The weights of every influence on some points, as they were once. Only what is not 0 is kept: a skin has
/// hundreds of influences, a point a handful. Influences are physical indices, points stand in component
/// order.
class SkinRows {
public:
    using Column = std::uint16_t;
    /// Influences that some of the points have in common.
    struct Set {
        std::size_t firstColumn; ///< into `columns`
        Column count;
        bool odd; ///< the weights of these points do not sum to 1
    };

    /// Reads them from the scene; null, with a failed status, when that fails.
    static std::shared_ptr<const SkinRows> read(const MFnSkinCluster& skin, const MDagPath& path,
                                                const MObject& component, MStatus& status);

    std::size_t pointCount() const { return setOf.size(); }
    unsigned int influenceCount() const { return influences; }
    /// The weights of one influence.
    MDoubleArray influence(unsigned int physical) const;
    /// Per point the sum of the weights of some influences.
    std::vector<double> sums(const std::vector<bool>& counted) const;
    /// All influences, point after point, as the platform reads them.
    MDoubleArray dense() const;

    const std::vector<Set>& sets() const { return influenceSets; }
    /// Ascending.
    const Column* columnsOf(std::uint32_t set) const
    {
        return columns.data() + influenceSets[set].firstColumn;
    }
    /// Calls `visit(point, set, weights)` for every point.
    template <typename Visit>
    void forEachPoint(const Visit& visit) const
    {
        const double* row = weights.data();
        for (std::size_t point = 0; point < setOf.size(); ++point) {
            visit(point, setOf[point], row);
            row += influenceSets[setOf[point]].count;
        }
    }

private:
    friend class SkinRowsBuilder;
    template <typename Visit>
    void forEachEntry(const Visit& visit) const;

    unsigned int influences = 0;
    std::vector<Set> influenceSets;
    std::vector<Column> columns;
    std::vector<std::uint32_t> setOf; ///< of each point
    std::vector<double> weights;      ///< point after point
};

using SkinRowsRef = std::shared_ptr<const SkinRows>;
