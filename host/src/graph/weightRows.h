#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <vector>

namespace host {

/// The sparse weights of a skinCluster, weightList[row].weights[column]: row is the vertex (logical), column
/// the influence's logical index. Zero weights need not exist; a missing element reads 0.
/// Each row keeps its entries sorted by column. Up to kInline entries of a row lie in arrays that all rows
/// share, so that a typical skin is three blocks of memory, as small as can be: writing and evaluating
/// weights go at memory speed. Rows with more entries have arrays of their own.
class WeightRows {
public:
    static constexpr unsigned kInline = 4;
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
    };

    double get(std::uint32_t row, std::uint32_t column) const;
    bool has(std::uint32_t row, std::uint32_t column) const;
    bool hasRow(std::uint32_t row) const { return row < states.size() && states[row] != kMissing; }
    void set(std::uint32_t row, std::uint32_t column, double value);
    void erase(std::uint32_t row, std::uint32_t column);
    void eraseRow(std::uint32_t row);
    void touchRow(std::uint32_t row); ///< makes an empty row exist
    void clear();
    /// Empty for a missing row. Valid until a row changes.
    Span row(std::uint32_t row) const
    {
        if (row >= states.size() || states[row] == kMissing)
            return {};
        if (states[row] == kLong)
            return longSpan(row);
        return {&weights[row * std::size_t{kInline}], &columns[row * std::size_t{kInline}], states[row]};
    }

private:
    /// Rows known to hold the same columns and no others. A drag writes the same rows over and over: what was
    /// found of them stands until an entry is made or lost.
    class UniformRows {
    public:
        bool covers(std::uint32_t row, std::size_t count, const std::uint32_t* pattern) const
        {
            return row >= begin && row + count <= end && std::equal(columns.begin(), columns.end(), pattern);
        }
        void add(std::uint32_t row, std::size_t count, const std::uint32_t* pattern)
        {
            if (row != end || !std::equal(columns.begin(), columns.end(), pattern))
                begin = row;
            std::copy_n(pattern, kInline, columns.begin());
            end = row + count;
        }
        void forget() { begin = end = 0; }

    private:
        std::array<std::uint32_t, kInline> columns{};
        std::size_t begin = 0;
        std::size_t end = 0;
    };

public:
    /// The rows that lie in the shared arrays, seen as rows of a few columns (ascending) with 0 where there
    /// is no entry. Good until a row is made or gets or loses an entry by other means.
    template <std::size_t Count>
    class ShortRows {
    public:
        /// The weights of some rows that follow one another, kInline apart, to be written in place; null
        /// unless each has an entry for each of the columns and no others. `pattern` is as many times
        /// patternRow().
        double* exactBlock(std::uint32_t row, std::size_t count, const std::uint32_t* pattern) const
        {
            if (row >= end || count > end - row)
                return nullptr;
            double* const first = weights + row * std::size_t{kInline};
            if (known->covers(row, count, pattern))
                return first;
            std::uint8_t others = 0; // no early end: the compiler takes several at a time
            for (std::size_t k = 0; k < count; ++k)
                others = static_cast<std::uint8_t>(others | (states[row + k] ^ Count));
            const std::size_t size = count * kInline * sizeof *pattern;
            if (others != 0 || std::memcmp(columns + row * std::size_t{kInline}, pattern, size) != 0)
                return nullptr;
            known->add(row, count, pattern);
            return first;
        }
        /// The columns of a row that has just the wanted ones, as they are stored.
        std::array<std::uint32_t, kInline> patternRow() const
        {
            std::array<std::uint32_t, kInline> row;
            row.fill(kNoColumn);
            std::copy(wanted.begin(), wanted.end(), row.begin());
            return row;
        }
        /// False for a row that does not exist or has entries that are 0 or of other columns.
        bool read(std::uint32_t row, double* full) const
        {
            if (row >= end || states[row] > kInline)
                return false;
            const std::size_t first = row * std::size_t{kInline};
            const std::size_t count = states[row];
            std::size_t next = 0;
            bool zero = false;
            for (std::size_t k = 0; k < Count; ++k) {
                const bool here = next < count && columns[first + next] == wanted[k];
                full[k] = here ? weights[first + next] : 0.0;
                zero = zero || (here && full[k] == 0.0);
                next += here ? 1u : 0u;
            }
            return next == count && !zero;
        }
        /// Of a row that read() knows. Weights of 0 get no entry.
        void write(std::uint32_t row, const double* full) const
        {
            const std::size_t first = row * std::size_t{kInline};
            std::size_t count = 0;
            for (std::size_t k = 0; k < Count; ++k) {
                weights[first + count] = full[k];
                columns[first + count] = wanted[k];
                count += full[k] != 0.0 ? 1u : 0u;
            }
            std::fill(columns + first + count, columns + first + kInline, kNoColumn);
            states[row] = static_cast<std::uint8_t>(count);
            if (count != Count)
                known->forget();
        }

    private:
        friend class WeightRows;
        UniformRows* known;
        std::array<std::uint32_t, Count> wanted;
        std::uint8_t* states;
        std::uint32_t* columns;
        double* weights;
        std::size_t end;
    };
    template <std::size_t Count>
    ShortRows<Count> shortRows(const std::array<std::uint32_t, Count>& wanted)
    {
        static_assert(Count > 0 && Count <= kInline, "longer rows have arrays of their own");
        ShortRows<Count> view;
        view.known = &uniform;
        view.wanted = wanted;
        view.states = states.data();
        view.columns = columns.data();
        view.weights = weights.data();
        view.end = states.size();
        return view;
    }
    std::uint32_t rowEnd() const; ///< one past the last existing row
    std::size_t rowCount() const { return existing; }

private:
    /// A row's state is the number of its entries, or one of these.
    static constexpr std::uint8_t kLong = 0xFE;
    static constexpr std::uint8_t kMissing = 0xFF;
    static constexpr std::uint32_t kNoColumn = 0xFFFFFFFFu;
    struct LongRow {
        std::vector<double> weights;
        std::vector<std::uint32_t> columns;
    };

    Span longSpan(std::uint32_t row) const;
    LongRow& longRow(std::uint32_t row) { return longRows[columns[row * std::size_t{kInline}]]; }
    void makeLong(std::uint32_t row);

    std::vector<std::uint8_t> states;
    std::vector<double> weights; ///< kInline per row
    /// kInline per row, those without an entry kNoColumn; a long row's first is its place in longRows.
    std::vector<std::uint32_t> columns;
    std::vector<LongRow> longRows;
    std::vector<std::uint32_t> unused; ///< places in longRows that no row has any more
    std::size_t existing = 0;
    UniformRows uniform;
};

} // namespace host
