#pragma once

#include "graph/plug.h"
#include "graph/storedValue.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace host {

/// What an array holds at some indices, to be put back later. Costs what is stored there, however long the
/// array is.
class StoredRange {
public:
    /// Indices ascending. Everything on the way to the array must be chosen.
    StoredRange(const Plug& array, std::vector<std::uint32_t> indices);
    /// Puts these elements back as they were, whatever is locked or connected now, and passes the change on.
    void putBack() const;

private:
    static constexpr std::uint32_t kMissing = 0xFFFFFFFFu;

    void storeNumbers(const NumericArray& array);
    void storeRows(const WeightRows& rows);
    void putNumbers(NumericArray& array) const;
    void putRows(WeightRows& rows) const;

    Plug where;
    std::vector<std::uint32_t> logical;
    std::optional<StoredValue> whole;   ///< instead of all below, when nothing at all was stored
    std::vector<StoredValue> elements;  ///< of an array of neither numbers nor rows
    std::vector<std::uint32_t> counts;  ///< per index: how many numbers are its own, or kMissing
    std::vector<double> numbers;        ///< one after another
    std::vector<std::uint32_t> columns; ///< of rows, as many as numbers
};

} // namespace host
