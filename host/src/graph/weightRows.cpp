#include "graph/weightRows.h"

#include "graph/density.h"

#include <algorithm>

namespace host {

namespace {

/// The place of a column in a row, or where it would be. Rows are short: going along them is fastest.
std::size_t placeOf(WeightRows::Span span, std::uint32_t column)
{
    constexpr std::size_t kLong = 32;
    if (span.count > kLong)
        return static_cast<std::size_t>(std::lower_bound(span.columns, span.columns + span.count, column) -
                                        span.columns);
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

} // namespace

const WeightRows::Place WeightRows::nowhere{};

std::size_t WeightRows::Span::find(std::uint32_t column) const
{
    const std::size_t place = placeOf(*this, column);
    return isAt(*this, place, column) ? place : count;
}

double WeightRows::get(std::uint32_t row, std::uint32_t column) const
{
    const Span span = this->row(row);
    const std::size_t place = span.find(column);
    return place < span.count ? span.weights[place] : 0.0;
}

bool WeightRows::has(std::uint32_t row, std::uint32_t column) const
{
    const Span span = this->row(row);
    return span.find(column) < span.count;
}

void WeightRows::set(std::uint32_t row, std::uint32_t column, double value)
{
    touchRow(row);
    const Span span = this->row(row);
    const std::size_t place = placeOf(span, column);
    if (isAt(span, place, column)) {
        rowWeights(row)[place] = value;
        return;
    }
    reserve(row, span.count + 1);
    Place& own = existingPlace(row);
    const std::size_t first = own.block * std::size_t{kBlock};
    insertAt(&weights[first], span.count, place, value);
    insertAt(&columns[first], span.count, place, column);
    ++own.count;
}

void WeightRows::erase(std::uint32_t row, std::uint32_t column)
{
    const Span span = this->row(row);
    const std::size_t place = span.find(column);
    if (place == span.count)
        return;
    Place& own = existingPlace(row);
    const std::size_t first = own.block * std::size_t{kBlock};
    std::copy(span.weights + place + 1, span.weights + span.count, &weights[first] + place);
    std::copy(span.columns + place + 1, span.columns + span.count, &columns[first] + place);
    --own.count;
}

void WeightRows::eraseRow(std::uint32_t row)
{
    if (!hasRow(row))
        return;
    leaveRoom(existingPlace(row));
    if (row < places.size())
        places[row] = {};
    else
        far.erase(row);
    --existing;
}

void WeightRows::touchRow(std::uint32_t row)
{
    if (row >= places.size() && mayLieDensely(row, existing))
        grow(row);
    Place& place = row < places.size() ? places[row] : far[row];
    if (place.count == kMissing) {
        place.count = 0;
        ++existing;
    }
}

void WeightRows::grow(std::uint32_t row)
{
    const std::size_t count = std::size_t{row} + 1;
    if (count > places.capacity())
        places.reserve(std::max(count, places.capacity() * 2));
    places.resize(count);
    const auto covered = far.upper_bound(row);
    for (auto entry = far.begin(); entry != covered; ++entry)
        places[entry->first] = entry->second;
    far.erase(far.begin(), covered);
}

const WeightRows::Place& WeightRows::farPlace(std::uint32_t row) const
{
    const auto found = far.find(row);
    return found == far.end() ? nowhere : found->second;
}

void WeightRows::assign(std::uint32_t row, Span entries)
{
    touchRow(row);
    Place& place = existingPlace(row);
    place.count = 0; // a row that moves takes nothing along
    reserve(row, entries.count);
    const std::size_t first = place.block * std::size_t{kBlock};
    std::copy_n(entries.weights, entries.count, weights.data() + first);
    std::copy_n(entries.columns, entries.count, columns.data() + first);
    place.count = static_cast<std::uint32_t>(entries.count);
}

/// Room for that many entries; those of the row come along.
void WeightRows::reserve(std::uint32_t row, std::size_t count)
{
    Place& place = existingPlace(row);
    const Place old = place;
    std::uint32_t blocks = std::max(old.blocks, 1u);
    while (blocks * std::size_t{kBlock} < count)
        blocks *= 2;
    if (blocks == old.blocks)
        return;
    const std::uint32_t block = takeRoom(blocks);
    const std::size_t from = old.block * std::size_t{kBlock};
    const std::size_t to = block * std::size_t{kBlock};
    std::copy_n(weights.data() + from, old.count, weights.data() + to);
    std::copy_n(columns.data() + from, old.count, columns.data() + to);
    leaveRoom(old);
    place = {block, old.count, blocks};
}

std::vector<std::uint32_t>& WeightRows::freeRoom(std::uint32_t blocks)
{
    std::size_t power = 0;
    while ((blocks >> power) > 1)
        ++power;
    if (power >= freed.size())
        freed.resize(power + 1);
    return freed[power];
}

std::uint32_t WeightRows::takeRoom(std::uint32_t blocks)
{
    std::vector<std::uint32_t>& free = freeRoom(blocks);
    if (!free.empty()) {
        const std::uint32_t block = free.back();
        free.pop_back();
        return block;
    }
    const std::size_t end = weights.size();
    weights.resize(end + blocks * std::size_t{kBlock});
    columns.resize(weights.size());
    return static_cast<std::uint32_t>(end / kBlock);
}

void WeightRows::leaveRoom(const Place& place)
{
    if (place.blocks > 0)
        freeRoom(place.blocks).push_back(place.block);
}

void WeightRows::clear()
{
    *this = {};
}

std::vector<std::uint32_t> WeightRows::rowIndices() const
{
    std::vector<std::uint32_t> rows;
    rows.reserve(existing);
    for (std::uint32_t row = 0; row < places.size(); ++row)
        if (places[row].count != kMissing)
            rows.push_back(row);
    for (const auto& entry : far)
        rows.push_back(entry.first);
    return rows;
}

} // namespace host
