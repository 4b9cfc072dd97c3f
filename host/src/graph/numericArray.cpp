#include "graph/numericArray.h"

#include <algorithm>

namespace host {

namespace {

/// Indices up to this stay dense wherever they lie; beyond, an element must not leave a gap much larger than
/// what is there already.
constexpr std::uint32_t kAlwaysDense = 4096;

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
        if (logical < kAlwaysDense || logical / 4 <= marks.size()) {
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

void NumericArray::gather(const int* ids, std::size_t count, double* out) const
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] = get(ids ? static_cast<std::uint32_t>(ids[i]) : static_cast<std::uint32_t>(i));
}

void NumericArray::gather(const int* ids, std::size_t count, float* out) const
{
    for (std::size_t i = 0; i < count; ++i)
        out[i] =
            static_cast<float>(get(ids ? static_cast<std::uint32_t>(ids[i]) : static_cast<std::uint32_t>(i)));
}

void NumericArray::scatter(const int* ids, std::size_t count, const double* values)
{
    for (std::size_t i = 0; i < count; ++i)
        set(ids ? static_cast<std::uint32_t>(ids[i]) : static_cast<std::uint32_t>(i), values[i]);
}

void NumericArray::scatter(const int* ids, std::size_t count, const float* values)
{
    for (std::size_t i = 0; i < count; ++i)
        set(ids ? static_cast<std::uint32_t>(ids[i]) : static_cast<std::uint32_t>(i),
            static_cast<double>(values[i]));
}

} // namespace host
