#include "nodes/skinWriter.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace host {

namespace {

/// Whether all of eight numbers are 0, of either sign.
bool areZero(const double* values)
{
    std::uint64_t bits[8], any = 0;
    std::memcpy(bits, values, sizeof bits);
    for (const std::uint64_t each : bits)
        any |= each;
    return any << 1u == 0;
}

} // namespace

void SkinWriter::Entries::clear()
{
    weights.clear();
    columns.clear();
}

void SkinWriter::Entries::add(std::uint32_t column, double weight)
{
    columns.push_back(column);
    weights.push_back(weight);
}

SkinWriter::SkinWriter(WeightRows& weightRows, const SkinInfluences& skinInfluences,
                       const SkinWeightChange& skinChange, bool normalize)
    : rows(weightRows), influences(skinInfluences), change(skinChange),
      step(change.valueCount != change.influences.size() ? change.influences.size() : 0),
      order(change.influences.size())
{
    const std::vector<std::uint32_t>& listed = change.influences;
    std::vector<Role> own(influences.count(), Role::kFree);
    for (std::size_t physical = 0; physical < own.size(); ++physical)
        own[physical] = influences.locked[physical] ? Role::kKept : Role::kFree;
    for (const std::uint32_t influence : listed)
        own[influence] = Role::kListed;
    for (std::size_t physical = 0; physical < own.size(); ++physical)
        roles.set(influences.logical[physical], own[physical]);
    makesRoom = normalize && std::find(own.begin(), own.end(), Role::kFree) != own.end();

    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return listed[a] < listed[b]; });
    const auto last = std::unique(order.rbegin(), order.rend(),
                                  [&](std::size_t a, std::size_t b) { return listed[a] == listed[b]; });
    order.erase(order.begin(), last.base());
    inOrder = order.size() == listed.size() && std::is_sorted(order.begin(), order.end());
}

void SkinWriter::write()
{
    if (order.size() == 1)
        writeOne();
    else
        writeMany();
}

/// A row that keeps its entries is changed where it lies.
void SkinWriter::writeOne()
{
    const std::uint32_t column = influences.logical[change.influences[order[0]]];
    for (std::size_t point = 0; point < change.points.size(); ++point) {
        const auto vertex = static_cast<std::uint32_t>(change.points[point]);
        const double weight = change.values[point * step + order[0]];
        if (writeInPlace(vertex, weight))
            continue;
        listedEntries.clear();
        if (weight != 0.0)
            listedEntries.add(column, weight);
        mergeRow(vertex, weight);
    }
}

/// False, with nothing changed, when the row has no entry for the listed influence or loses one.
bool SkinWriter::writeInPlace(std::uint32_t vertex, double weight)
{
    const WeightRows::Span row = rows.row(vertex);
    const double factor = factorOf(sumsOf(row), weight);
    if (scaled.size() < row.count)
        scaled.resize(row.count);
    bool found = false, zero = false;
    for (std::size_t k = 0; k < row.count; ++k) {
        const Role role = roles[row.columns[k]];
        const double old = row.weights[k];
        const double value = role == Role::kListed ? weight : role == Role::kFree ? old * factor : old;
        scaled[k] = value;
        found = found || role == Role::kListed;
        zero = zero || value == 0.0;
    }
    if (!found || zero)
        return false;
    std::copy_n(scaled.data(), row.count, rows.rowWeights(vertex));
    return true;
}

void SkinWriter::writeMany()
{
    for (std::size_t point = 0; point < change.points.size(); ++point) {
        gatherListed(change.values + point * step);
        const auto& weights = listedEntries.weights;
        mergeRow(static_cast<std::uint32_t>(change.points[point]),
                 std::accumulate(weights.begin(), weights.end(), 0.0));
    }
}

/// Most of what is written is 0 when all influences are.
void SkinWriter::gatherListed(const double* values)
{
    listedEntries.clear();
    for (std::size_t k = 0; k < order.size(); ++k) {
        while (inOrder && k + 8 <= order.size() && areZero(values + k))
            k += 8;
        if (k < order.size() && values[order[k]] != 0.0)
            listedEntries.add(influences.logical[change.influences[order[k]]], values[order[k]]);
    }
}

/// Puts the listed entries of a point into its row. Entries that were 0 before and are 0 now stay.
void SkinWriter::mergeRow(std::uint32_t vertex, double listed)
{
    const WeightRows::Span row = rows.row(vertex);
    const double factor = factorOf(sumsOf(row), listed);
    const WeightRows::Span made = listedEntries.span();
    merged.clear();
    std::size_t next = 0;
    for (std::size_t k = 0; k < row.count; ++k) {
        const std::uint32_t column = row.columns[k];
        for (; next < made.count && made.columns[next] < column; ++next)
            merged.add(made.columns[next], made.weights[next]);
        const bool isMade = next < made.count && made.columns[next] == column;
        const Role role = roles[column];
        const double old = row.weights[k];
        const double value = isMade                  ? made.weights[next]
                             : role == Role::kListed ? 0.0
                             : role == Role::kFree   ? old * factor
                                                     : old;
        next += isMade ? 1u : 0u;
        if (value != 0.0)
            merged.add(column, value);
        else if (old == 0.0)
            merged.add(column, old);
    }
    for (; next < made.count; ++next)
        merged.add(made.columns[next], made.weights[next]);
    if (row.count > 0 || !merged.columns.empty())
        rows.assign(vertex, merged.span());
}

SkinWriter::Sums SkinWriter::sumsOf(WeightRows::Span row) const
{
    Sums sums;
    for (std::size_t k = 0; k < row.count; ++k) {
        const Role role = roles[row.columns[k]];
        sums.kept += role == Role::kKept ? row.weights[k] : 0.0;
        sums.free += role == Role::kFree ? row.weights[k] : 0.0;
    }
    return sums;
}

double SkinWriter::factorOf(Sums sums, double listed) const
{
    return makesRoom && sums.free > 0.0 ? std::max(0.0, 1.0 - listed - sums.kept) / sums.free : 1.0;
}

} // namespace host
