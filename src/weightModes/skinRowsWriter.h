#pragma once

#include "helperFunctions/componentPoints.h"
#include "weightModes/skinRows.h"

/// Writes rows back to where they were read. A call lists the influences that its points have and no others,
/// so that the platform has as little to do as there is. Calls cost as well: points with much the same
/// influences share one.
class SkinRowsWriter {
public:
    static constexpr unsigned int kEveryInfluence = ~0U;
    /// `edited`: the influence that may have got weight meanwhile; it is listed with every point.
    SkinRowsWriter(SkinRowsRef pressRows, const MObject& skinCluster, const MDagPath& path,
                   const MObject& component, unsigned int edited);

    MStatus writeAll();
    /// Those whose position in the component is marked.
    MStatus writeMarked(const std::vector<char>& marked);

private:
    using Column = SkinRows::Column;
    using Columns = std::vector<Column>;
    struct Call {
        Columns listed;
        std::vector<unsigned int> points; ///< to be written, positions in the component
        std::vector<double> values;
    };
    /// What one set of influences has to do for its points.
    struct Route {
        std::size_t call;
        std::vector<Column> places; ///< in the call's list, of each influence
    };

    void plan(unsigned int edited);
    std::vector<std::uint32_t> sortedSets() const;
    Columns listedFor(std::uint32_t set, unsigned int edited) const;
    void forgetGathered();
    void gather(std::size_t point, std::uint32_t set, const double* row);
    MStatus writeGathered();
    void write(Call& call);

    SkinRowsRef rows;
    MFnSkinCluster skin;
    MDagPath path;
    MObject component;
    ComponentPoints points;
    std::vector<Call> calls;
    std::vector<Route> routes; ///< of each set
    MStatus status;            ///< of what is being written
};
