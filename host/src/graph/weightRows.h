#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace host {

/// The sparse weights of a skinCluster, weightList[row].weights[column]: row is the vertex (logical), column
/// the influence's logical index. Zero weights need not exist; a missing element reads 0.
/// Each row keeps its entries sorted by column; up to kInline entries stay inside the row, so a typical skin
/// is one block of memory.
class WeightRows {
public:
    static constexpr unsigned kInline = 4;
    struct Entry {
        double weight;
        std::uint32_t column;
    };
    struct Span {
        const Entry* begin;
        const Entry* end;
    };

    WeightRows() = default;
    WeightRows(const WeightRows& other);
    WeightRows& operator=(const WeightRows&) = delete;

    double get(std::uint32_t row, std::uint32_t column) const;
    bool has(std::uint32_t row, std::uint32_t column) const;
    bool hasRow(std::uint32_t row) const;
    void set(std::uint32_t row, std::uint32_t column, double value);
    void erase(std::uint32_t row, std::uint32_t column);
    /// Makes an element read `value`, which exists afterwards only if that is not 0 (one that existed and was
    /// 0 stays).
    void store(std::uint32_t row, std::uint32_t column, double value);
    /// The same for several elements of a row, of which a later one of the same column counts.
    void store(std::uint32_t row, const std::vector<std::uint32_t>& columns, const double* values);
    void eraseRow(std::uint32_t row);
    void touchRow(std::uint32_t row); ///< makes an empty row exist
    void clear();
    /// Entries of a row, ascending columns; empty for a missing row. Valid until the row changes.
    Span row(std::uint32_t row) const
    {
        if (row >= rows.size())
            return {nullptr, nullptr};
        const Entry* begin = rows[row].entries();
        return {begin, begin + rows[row].count};
    }
    std::uint32_t rowEnd() const; ///< one past the last existing row
    std::size_t rowCount() const; ///< existing rows

private:
    struct Row {
        std::uint32_t count = 0;
        std::uint32_t capacity = kInline;
        bool exists = false;
        Entry local[kInline] = {};
        std::unique_ptr<Entry[]> heap; ///< used when capacity > kInline

        Entry* entries() { return heap ? heap.get() : local; }
        const Entry* entries() const { return heap ? heap.get() : local; }
    };
    std::vector<Row> rows;
    std::size_t existing = 0;
};

} // namespace host
