#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <vector>

namespace host {

/// The sparse weights of a skinCluster, weightList[row].weights[column]: row is the vertex (logical), column
/// the influence's logical index. Zero weights need not exist; a missing element reads 0.
/// Each row keeps its entries sorted by column, one after another in arrays that all rows share: whatever
/// goes over rows costs what they hold, at memory speed, however long they are. Rows far beyond the others
/// are found by search, so that their numbers cost nothing.
class WeightRows {
public:
    struct Entry {
        double weight;
        std::uint32_t column;
    };
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using pointer = const Entry*;
        using reference = Entry;

        Iterator(const double* atWeight, const std::uint32_t* atColumn) : weight(atWeight), column(atColumn)
        {}
        Entry operator*() const { return {*weight, *column}; }
        Iterator& operator++()
        {
            ++weight;
            ++column;
            return *this;
        }
        friend bool operator==(const Iterator& a, const Iterator& b) { return a.weight == b.weight; }
        friend bool operator!=(const Iterator& a, const Iterator& b) { return a.weight != b.weight; }

    private:
        const double* weight;
        const std::uint32_t* column;
    };
    /// The entries of a row, ascending columns.
    struct Span {
        const double* weights = nullptr;
        const std::uint32_t* columns = nullptr;
        std::size_t count = 0;

        Iterator begin() const { return {weights, columns}; }
        Iterator end() const { return {weights + count, columns + count}; }
        /// Where the column is; `count` when the row has no entry for it.
        std::size_t find(std::uint32_t column) const;
    };

    double get(std::uint32_t row, std::uint32_t column) const;
    bool has(std::uint32_t row, std::uint32_t column) const;
    bool hasRow(std::uint32_t row) const { return placeOfRow(row).count != kMissing; }
    void set(std::uint32_t row, std::uint32_t column, double value);
    void erase(std::uint32_t row, std::uint32_t column);
    void eraseRow(std::uint32_t row);
    void touchRow(std::uint32_t row); ///< makes an empty row exist
    void clear();
    /// Empty for a missing row. Valid until a row gets or loses entries.
    Span row(std::uint32_t row) const
    {
        const Place& place = placeOfRow(row);
        if (place.count == kMissing)
            return {};
        const std::size_t first = place.block * std::size_t{kBlock};
        return {weights.data() + first, columns.data() + first, place.count};
    }
    /// The weights of row(), to be changed in place.
    double* rowWeights(std::uint32_t row)
    {
        return weights.data() + placeOfRow(row).block * std::size_t{kBlock};
    }
    /// Gives a row these entries, ascending, and no others; they must not be its own. Makes the row exist.
    void assign(std::uint32_t row, Span entries);
    std::vector<std::uint32_t> rowIndices() const; ///< of the existing rows, ascending
    std::size_t rowCount() const { return existing; }

private:
    /// Rows get room in blocks of as many entries; a row that needs more moves to room of twice the blocks
    /// and leaves its old one to others.
    static constexpr std::uint32_t kBlock = 4;
    static constexpr std::uint32_t kMissing = 0xFFFFFFFFu;
    struct Place {
        std::uint32_t block = 0; ///< the first
        std::uint32_t count = kMissing;
        std::uint32_t blocks = 0; ///< a power of two, or none yet
    };

    const Place& placeOfRow(std::uint32_t row) const
    {
        if (row < places.size())
            return places[row];
        return far.empty() ? nowhere : farPlace(row);
    }
    const Place& farPlace(std::uint32_t row) const;
    Place& existingPlace(std::uint32_t row) { return row < places.size() ? places[row] : far.at(row); }
    void grow(std::uint32_t row);
    void reserve(std::uint32_t row, std::size_t count);
    std::uint32_t takeRoom(std::uint32_t blocks);
    void leaveRoom(const Place& place);
    std::vector<std::uint32_t>& freeRoom(std::uint32_t blocks);

    static const Place nowhere;

    std::vector<Place> places;
    std::map<std::uint32_t, Place> far;
    std::vector<double> weights;
    std::vector<std::uint32_t> columns;
    std::vector<std::vector<std::uint32_t>> freed; ///< left room, first blocks, by the power of two
    std::size_t existing = 0;
};

} // namespace host
