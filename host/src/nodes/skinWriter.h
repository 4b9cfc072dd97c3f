#pragma once

#include "graph/weightRows.h"
#include "nodes/skinWeights.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host {

/// A change of a skin's weights by the rule of setSkinWeights, row by row. What a row costs depends on its
/// entries and on the influences that are written, not on how many the skin has.
///
/// The sums run over the entries in ascending columns, which is the influences' physical order: they are
/// those over rows of all influences, bit for bit, since zeros add nothing.
class SkinWriter {
public:
    /// The change has been checked. All of these outlive the writer.
    SkinWriter(WeightRows& rows, const SkinInfluences& influences, const SkinWeightChange& change,
               bool normalize);

    void write();

private:
    /// What becomes of an entry, by its column.
    enum class Role : std::uint8_t {
        kForeign, ///< of no influence; stays and does not count
        kListed,
        kKept, ///< locked; counts
        kFree  ///< makes room
    };
    /// A row while it is put together.
    struct Entries {
        std::vector<double> weights;
        std::vector<std::uint32_t> columns;

        void clear();
        void add(std::uint32_t column, double weight);
        WeightRows::Span span() const { return {weights.data(), columns.data(), columns.size()}; }
    };
    struct Sums {
        double kept = 0.0;
        double free = 0.0;
    };

    void writeOne();
    bool writeInPlace(std::uint32_t vertex, double weight);
    void writeMany();
    void gatherListed(const double* values);
    void mergeRow(std::uint32_t vertex, double listed);
    Sums sumsOf(WeightRows::Span row) const;
    double factorOf(Sums sums, double listed) const;

    WeightRows& rows;
    const SkinInfluences& influences;
    const SkinWeightChange& change;
    std::size_t step; ///< values per point; 0 = the same for every point
    LogicalTable<Role> roles{Role::kForeign};
    std::vector<std::size_t> order; ///< positions in the list by ascending column, the last of repeated ones
    bool inOrder = false;           ///< the list is ascending as it is
    bool makesRoom = false;
    Entries listedEntries; ///< of one point, without zeros
    Entries merged;
    std::vector<double> scaled;
};

} // namespace host
