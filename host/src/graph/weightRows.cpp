#include "graph/weightRows.h"

#include <algorithm>

namespace host {

namespace {

template <class Entry>
Entry* lowerBound(Entry* first, Entry* last, std::uint32_t column)
{
    while (first != last && first->column < column)
        ++first;
    return first;
}

} // namespace

WeightRows::WeightRows(const WeightRows& other) : rows(other.rows.size()), existing(other.existing)
{
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const Row& from = other.rows[row];
        Row& to = rows[row];
        to.count = from.count;
        to.exists = from.exists;
        if (from.count > kInline) {
            to.capacity = from.count;
            to.heap = std::make_unique<Entry[]>(from.count);
        }
        std::copy_n(from.entries(), from.count, to.entries());
    }
}

double WeightRows::get(std::uint32_t row, std::uint32_t column) const
{
    const Span span = this->row(row);
    const Entry* entry = lowerBound(span.begin, span.end, column);
    return entry != span.end && entry->column == column ? entry->weight : 0.0;
}

bool WeightRows::has(std::uint32_t row, std::uint32_t column) const
{
    const Span span = this->row(row);
    const Entry* entry = lowerBound(span.begin, span.end, column);
    return entry != span.end && entry->column == column;
}

bool WeightRows::hasRow(std::uint32_t row) const
{
    return row < rows.size() && rows[row].exists;
}

void WeightRows::set(std::uint32_t row, std::uint32_t column, double value)
{
    touchRow(row);
    Row& target = rows[row];
    Entry* begin = target.entries();
    Entry* at = lowerBound(begin, begin + target.count, column);
    if (at != begin + target.count && at->column == column) {
        at->weight = value;
        return;
    }
    const auto position = static_cast<std::size_t>(at - begin);
    if (target.count == target.capacity) {
        auto larger = std::make_unique<Entry[]>(std::size_t{target.capacity} * 2);
        std::copy_n(begin, target.count, larger.get());
        target.heap = std::move(larger);
        target.capacity *= 2;
        begin = target.entries();
    }
    std::copy_backward(begin + position, begin + target.count, begin + target.count + 1);
    begin[position] = Entry{value, column};
    ++target.count;
}

void WeightRows::erase(std::uint32_t row, std::uint32_t column)
{
    if (!has(row, column))
        return;
    Row& target = rows[row];
    Entry* end = target.entries() + target.count;
    Entry* at = lowerBound(target.entries(), end, column);
    std::copy(at + 1, end, at);
    --target.count;
}

void WeightRows::store(std::uint32_t row, const std::vector<std::uint32_t>& columns, const double* values)
{
    // Rows are mostly written whole, in the order in which they are kept.
    std::size_t next = 0;
    if (row < rows.size()) {
        Row& target = rows[row];
        const std::size_t both = std::min<std::size_t>(target.count, columns.size());
        Entry* const entries = target.entries();
        for (; next < both && entries[next].column == columns[next] && values[next] != 0.0; ++next)
            entries[next].weight = values[next];
    }
    for (; next < columns.size(); ++next)
        store(row, columns[next], values[next]);
}

void WeightRows::store(std::uint32_t row, std::uint32_t column, double value)
{
    if (value != 0.0)
        set(row, column, value);
    else if (get(row, column) != 0.0)
        erase(row, column);
}

void WeightRows::eraseRow(std::uint32_t row)
{
    if (!hasRow(row))
        return;
    rows[row] = Row{};
    --existing;
}

void WeightRows::touchRow(std::uint32_t row)
{
    if (row >= rows.size())
        rows.resize(std::size_t{row} + 1);
    if (!rows[row].exists) {
        rows[row].exists = true;
        ++existing;
    }
}

void WeightRows::clear()
{
    rows.clear();
    existing = 0;
}

std::uint32_t WeightRows::rowEnd() const
{
    for (std::size_t end = rows.size(); end > 0; --end)
        if (rows[end - 1].exists)
            return static_cast<std::uint32_t>(end);
    return 0;
}

std::size_t WeightRows::rowCount() const
{
    return existing;
}

} // namespace host
