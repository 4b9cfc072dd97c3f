#pragma once

#include <cstddef>
#include <vector>

/// The weights of all influences on one shape, as they were when a stroke began: row k holds one value per
/// vertex of the shape (vertex order) of the influence whose logical index is logicalIndices[k]. All rows
/// have one length.
struct InfluenceTable {
    std::vector<std::vector<double>> rows;
    std::vector<int> logicalIndices;
};

/// Whether every place that redistribution addresses exists: the edited influence's logical index and every
/// logical index of the table must be positions of rows and of indices alike, and all rows as long as the
/// edited one.
bool canRedistribute(const InfluenceTable& table, unsigned int influence, std::size_t vertexCount);

/// Works out the other influences' weights after the influence with that logical index gets `newWeights` (one
/// per vertex of the shape). Needs canRedistribute.
///
/// Where the edited weight rose so far that the sum of all exceeds one, the others change in proportion to
/// their share by the excess. The excess is negative and is subtracted, so the others grow: it is meant so,
/// and users of layer weights, which are normalised later, rely on it. Where the edited weight fell and
/// `distribute` is set, what was taken is handed to the others in proportion to their share, unless they are
/// all zero.
///
/// Returns one row per row of the table; an empty one means that this influence keeps its weights.
std::vector<std::vector<double>> redistribute(const InfluenceTable& table, unsigned int influence,
                                              const std::vector<double>& newWeights, bool distribute);
