#include "graph/weightRows.h"

namespace host {

namespace {

/// The place of a column in a row, or where it would be.
std::size_t placeOf(WeightRows::Span span, std::uint32_t column)
{
    std::size_t place = 0;
    while (place < span.count && span.columns[place] < column)
        ++place;
    return place;
}

bool isAt(WeightRows::Span span, std::size_t place, std::uint32_t column)
{
    return place < span.count && span.columns[place] == column;
}

template <class Number>
void insertAt(Number* values, std::size_t count, std::size_t place, Number value)
{
    std::copy_backward(values + place, values + count, values + count + 1);
    values[place] = value;
}

template <class Number>
void insertAt(std::vector<Number>& values, std::size_t place, Number value)
{
    values.insert(values.begin() + static_cast<std::ptrdiff_t>(place), value);
}

template <class Number>
void eraseAt(std::vector<Number>& values, std::size_t place)
{
    values.erase(values.begin() + static_cast<std::ptrdiff_t>(place));
}

} // namespace

WeightRows::Span WeightRows::longSpan(std::uint32_t row) const
{
    const LongRow& entries = longRows[columns[row * std::size_t{kInline}]];
    return {entries.weights.data(), entries.columns.data(), entries.columns.size()};
}

double WeightRows::get(std::uint32_t row, std::uint32_t column) const
{
    const Span span = this->row(row);
    const std::size_t place = placeOf(span, column);
    return isAt(span, place, column) ? span.weights[place] : 0.0;
}

bool WeightRows::has(std::uint32_t row, std::uint32_t column) const
{
    const Span span = this->row(row);
    return isAt(span, placeOf(span, column), column);
}

void WeightRows::set(std::uint32_t row, std::uint32_t column, double value)
{
    touchRow(row);
    const Span span = this->row(row);
    const std::size_t place = placeOf(span, column);
    if (isAt(span, place, column)) {
        const_cast<double*>(span.weights)[place] = value;
        return;
    }
    uniform.forget();
    if (states[row] == kInline)
        makeLong(row);
    if (states[row] == kLong) {
        insertAt(longRow(row).weights, place, value);
        insertAt(longRow(row).columns, place, column);
        return;
    }
    insertAt(&weights[row * std::size_t{kInline}], span.count, place, value);
    insertAt(&columns[row * std::size_t{kInline}], span.count, place, column);
    ++states[row];
}

void WeightRows::makeLong(std::uint32_t row)
{
    const Span span = this->row(row);
    LongRow entries{{span.weights, span.weights + span.count}, {span.columns, span.columns + span.count}};
    std::uint32_t place = static_cast<std::uint32_t>(longRows.size());
    if (unused.empty()) {
        longRows.push_back(std::move(entries));
    } else {
        place = unused.back();
        unused.pop_back();
        longRows[place] = std::move(entries);
    }
    states[row] = kLong;
    columns[row * std::size_t{kInline}] = place;
}

void WeightRows::erase(std::uint32_t row, std::uint32_t column)
{
    const Span span = this->row(row);
    const std::size_t place = placeOf(span, column);
    if (!isAt(span, place, column))
        return;
    uniform.forget();
    if (states[row] == kLong) {
        eraseAt(longRow(row).weights, place);
        eraseAt(longRow(row).columns, place);
        return;
    }
    const std::size_t first = row * std::size_t{kInline};
    std::copy(&weights[first] + place + 1, &weights[first] + span.count, &weights[first] + place);
    std::copy(&columns[first] + place + 1, &columns[first] + span.count, &columns[first] + place);
    columns[first + span.count - 1] = kNoColumn;
    --states[row];
}

void WeightRows::eraseRow(std::uint32_t row)
{
    if (!hasRow(row))
        return;
    uniform.forget();
    const auto own = columns.begin() + static_cast<std::ptrdiff_t>(row * std::size_t{kInline});
    if (states[row] == kLong) {
        longRow(row) = {};
        unused.push_back(*own);
    }
    std::fill_n(own, kInline, kNoColumn);
    states[row] = kMissing;
    --existing;
}

void WeightRows::touchRow(std::uint32_t row)
{
    if (row >= states.size()) {
        const std::size_t count = std::size_t{row} + 1;
        states.resize(count, kMissing);
        weights.resize(count * kInline);
        columns.resize(count * kInline, kNoColumn);
    }
    if (states[row] == kMissing) {
        states[row] = 0;
        ++existing;
    }
}

void WeightRows::clear()
{
    *this = {};
}

std::uint32_t WeightRows::rowEnd() const
{
    for (std::size_t end = states.size(); end > 0; --end)
        if (states[end - 1] != kMissing)
            return static_cast<std::uint32_t>(end);
    return 0;
}

} // namespace host
