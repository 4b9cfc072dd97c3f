#include "graph/numericArray.h"

#include "graph/density.h"
#include "graph/indexRun.h"

#include <algorithm>

namespace host {

namespace {

/// Of ids that may be null, which stand for 0, 1, ...
std::size_t firstOf(const int* ids, std::size_t count)
{
    return ids && count > 0 ? static_cast<std::uint32_t>(ids[0]) : 0;
}

template <class From, class To>
void copyNumbers(const From* from, std::size_t count, To* to)
{
    std::transform(from, from + count, to, [](From value) { return static_cast<To>(value); });
}

} // namespace

bool NumericArray::dense(std::uint32_t logical) const
{
    return logical < marks.size();
}

void NumericArray::grow(std::uint32_t logical)
{
    const std::size_t count = std::size_t{logical} + 1;
    if (count > marks.capacity())
        marks.reserve(std::max(count, marks.capacity() * 2));
    marks.resize(count, 0);
    if (single)
        floats.resize(count, static_cast<float>(fallback));
    else
        doubles.resize(count, fallback);
    const auto covered = far.upper_bound(logical);
    for (auto entry = far.begin(); entry != covered; ++entry) {
        marks[entry->first] = 1;
        if (single)
            floats[entry->first] = static_cast<float>(entry->second);
        else
            doubles[entry->first] = entry->second;
    }
    far.erase(far.begin(), covered);
}

double NumericArray::get(std::uint32_t logical) const
{
    if (dense(logical))
        return single ? static_cast<double>(floats[logical]) : doubles[logical];
    if (far.empty())
        return fallback;
    const auto entry = far.find(logical);
    return entry == far.end() ? fallback : entry->second;
}

bool NumericArray::has(std::uint32_t logical) const
{
    return dense(logical) ? marks[logical] != 0 : far.count(logical) != 0;
}

void NumericArray::set(std::uint32_t logical, double value)
{
    if (!dense(logical)) {
        if (mayLieDensely(logical, occupied)) {
            grow(logical);
        } else {
            const double kept = single ? static_cast<double>(static_cast<float>(value)) : value;
            if (far.insert_or_assign(logical, kept).second)
                ++occupied;
            return;
        }
    }
    if (!marks[logical]) {
        marks[logical] = 1;
        ++occupied;
    }
    if (single)
        floats[logical] = static_cast<float>(value);
    else
        doubles[logical] = value;
}

void NumericArray::erase(std::uint32_t logical)
{
    if (!dense(logical)) {
        occupied -= far.erase(logical);
        return;
    }
    occupied -= marks[logical] ? 1u : 0u;
    marks[logical] = 0;
    if (single)
        floats[logical] = static_cast<float>(fallback);
    else
        doubles[logical] = fallback;
}

void NumericArray::clear()
{
    doubles.clear();
    floats.clear();
    marks.clear();
    far.clear();
    occupied = 0;
}

std::uint32_t NumericArray::logicalEnd() const
{
    if (!far.empty())
        return far.rbegin()->first + 1;
    for (std::size_t end = marks.size(); end > 0; --end)
        if (marks[end - 1])
            return static_cast<std::uint32_t>(end);
    return 0;
}

std::vector<std::uint32_t> NumericArray::indices() const
{
    std::vector<std::uint32_t> result;
    result.reserve(occupied);
    for (std::uint32_t logical = 0; logical < marks.size(); ++logical)
        if (marks[logical])
            result.push_back(logical);
    for (const auto& entry : far)
        result.push_back(entry.first);
    return result;
}

std::uint32_t NumericArray::logicalOfPhysical(std::size_t rank) const
{
    const std::size_t inside = occupied - far.size();
    if (rank >= inside)
        return std::next(far.begin(), static_cast<std::ptrdiff_t>(rank - inside))->first;
    if (inside == marks.size())
        return static_cast<std::uint32_t>(rank);
    std::uint32_t logical = 0;
    for (std::size_t left = rank + 1;; ++logical)
        if (marks[logical] && --left == 0)
            return logical;
}

bool NumericArray::isDenseRun(const int* ids, std::size_t count) const
{
    const std::size_t first = firstOf(ids, count);
    return first <= marks.size() && count <= marks.size() - first &&
           (!ids || count == 0 || isRun(ids, count));
}

void NumericArray::markRun(std::size_t first, std::size_t count)
{
    if (occupied - far.size() == marks.size())
        return;
    const auto begin = marks.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = begin + static_cast<std::ptrdiff_t>(count);
    occupied += static_cast<std::size_t>(std::count(begin, end, std::uint8_t{0}));
    std::fill(begin, end, std::uint8_t{1});
}

template <class Number>
void NumericArray::gatherNumbers(const int* ids, std::size_t count, Number* out) const
{
    if (ids && count > 0 && !isRun(ids, count)) {
        for (std::size_t i = 0; i < count; ++i)
            out[i] = static_cast<Number>(get(static_cast<std::uint32_t>(ids[i])));
        return;
    }
    const std::size_t first = firstOf(ids, count);
    const std::size_t inside = first < marks.size() ? std::min(count, marks.size() - first) : 0;
    if (inside > 0 && single)
        copyNumbers(floats.data() + first, inside, out);
    else if (inside > 0)
        copyNumbers(doubles.data() + first, inside, out);
    std::fill(out + inside, out + count, static_cast<Number>(fallback));
    for (auto entry = far.lower_bound(static_cast<std::uint32_t>(first));
         entry != far.end() && entry->first < first + count; ++entry)
        out[entry->first - first] = static_cast<Number>(entry->second);
}

template <class Number>
void NumericArray::scatterNumbers(const int* ids, std::size_t count, const Number* values)
{
    if (isDenseRun(ids, count)) {
        const std::size_t first = firstOf(ids, count);
        markRun(first, count);
        if (single)
            copyNumbers(values, count, floats.data() + first);
        else
            copyNumbers(values, count, doubles.data() + first);
        return;
    }
    for (std::size_t i = 0; i < count; ++i)
        set(ids ? static_cast<std::uint32_t>(ids[i]) : static_cast<std::uint32_t>(i),
            static_cast<double>(values[i]));
}

void NumericArray::gather(const int* ids, std::size_t count, double* out) const
{
    gatherNumbers(ids, count, out);
}

void NumericArray::gather(const int* ids, std::size_t count, float* out) const
{
    gatherNumbers(ids, count, out);
}

void NumericArray::scatter(const int* ids, std::size_t count, const double* values)
{
    scatterNumbers(ids, count, values);
}

void NumericArray::scatter(const int* ids, std::size_t count, const float* values)
{
    scatterNumbers(ids, count, values);
}

} // namespace host
