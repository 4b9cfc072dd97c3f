#include "weightModes/skinRowsWriter.h"

#include <algorithm>
#include <iterator>
#include <numeric>

namespace {

/// Values that are written in vain rather than making another call.
constexpr std::size_t kCallCost = 1024;

/// Values that one call writes at most, so that skins of many influences need no more memory.
constexpr std::size_t kMostValues = std::size_t{1} << 22U;

} // namespace

SkinRowsWriter::SkinRowsWriter(SkinRowsRef pressRows, const MObject& skinCluster, const MDagPath& shapePath,
                               const MObject& pointComponent, unsigned int edited)
    : rows(std::move(pressRows)), skin(skinCluster), path(shapePath), component(pointComponent),
      points(pointComponent), routes(rows->sets().size())
{
    plan(edited);
}

/// Where weights do not sum to 1 the platform may hand out what is missing, unless every influence is listed.
SkinRowsWriter::Columns SkinRowsWriter::listedFor(std::uint32_t set, unsigned int edited) const
{
    if (edited == kEveryInfluence || rows->sets()[set].odd) {
        Columns all(rows->influenceCount());
        std::iota(all.begin(), all.end(), Column{0});
        return all;
    }
    const Column* const own = rows->columnsOf(set);
    Columns listed(own, own + rows->sets()[set].count);
    const auto place = std::lower_bound(listed.begin(), listed.end(), edited);
    if (place == listed.end() || *place != edited)
        listed.insert(place, static_cast<Column>(edited));
    return listed;
}

/// Sets with many influences in common stand together.
std::vector<std::uint32_t> SkinRowsWriter::sortedSets() const
{
    std::vector<std::uint32_t> order(rows->sets().size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
        const SkinRows::Set &one = rows->sets()[a], &two = rows->sets()[b];
        if (one.odd != two.odd)
            return two.odd;
        return std::lexicographical_compare(rows->columnsOf(a), rows->columnsOf(a) + one.count,
                                            rows->columnsOf(b), rows->columnsOf(b) + two.count);
    });
    return order;
}

void SkinRowsWriter::plan(unsigned int edited)
{
    std::vector<std::size_t> lengths(rows->sets().size());
    rows->forEachPoint([&](std::size_t, std::uint32_t set, const double*) { ++lengths[set]; });
    const std::vector<std::uint32_t> order = sortedSets();
    std::size_t count = 0, wanted = 0; // of the last call: its points, and the values that these need
    for (const std::uint32_t set : order) {
        const Columns listed = listedFor(set, edited);
        Columns both;
        if (!calls.empty())
            std::set_union(calls.back().listed.begin(), calls.back().listed.end(), listed.begin(),
                           listed.end(), std::back_inserter(both));
        count += lengths[set];
        wanted += lengths[set] * listed.size();
        if (calls.empty() || count * both.size() > wanted + kCallCost) {
            calls.emplace_back();
            both = listed;
            count = lengths[set];
            wanted = lengths[set] * listed.size();
        }
        calls.back().listed = std::move(both);
        routes[set].call = calls.size() - 1;
    }
    for (const std::uint32_t set : order) {
        const Columns& listed = calls[routes[set].call].listed;
        const Column* const own = rows->columnsOf(set);
        for (std::size_t k = 0; k < rows->sets()[set].count; ++k)
            routes[set].places.push_back(
                static_cast<Column>(std::lower_bound(listed.begin(), listed.end(), own[k]) - listed.begin()));
    }
}

MStatus SkinRowsWriter::writeAll()
{
    forgetGathered();
    rows->forEachPoint(
        [this](std::size_t point, std::uint32_t set, const double* row) { gather(point, set, row); });
    return writeGathered();
}

MStatus SkinRowsWriter::writeMarked(const std::vector<char>& marked)
{
    forgetGathered();
    rows->forEachPoint([&](std::size_t point, std::uint32_t set, const double* row) {
        if (marked[point] != 0)
            gather(point, set, row);
    });
    return writeGathered();
}

/// What a write that has thrown may have left.
void SkinRowsWriter::forgetGathered()
{
    status = MS::kSuccess;
    for (Call& call : calls) {
        call.points.clear();
        call.values.clear();
    }
}

void SkinRowsWriter::gather(std::size_t point, std::uint32_t set, const double* row)
{
    const Route& route = routes[set];
    Call& call = calls[route.call];
    call.points.push_back(static_cast<unsigned int>(point));
    const std::size_t first = call.values.size();
    call.values.resize(first + call.listed.size());
    for (std::size_t k = 0; k < route.places.size(); ++k)
        call.values[first + route.places[k]] = row[k];
    if (call.values.size() >= kMostValues)
        write(call);
}

MStatus SkinRowsWriter::writeGathered()
{
    for (Call& call : calls)
        write(call);
    const MStatus result = status;
    status = MS::kSuccess;
    return result;
}

/// After a failure nothing more is written.
void SkinRowsWriter::write(Call& call)
{
    if (status && !call.points.empty()) {
        MIntArray listed(static_cast<unsigned int>(call.listed.size()));
        for (unsigned int k = 0; k < listed.length(); ++k)
            listed[k] = call.listed[k];
        MDoubleArray values(call.values.data(), static_cast<unsigned int>(call.values.size()));
        const bool all = call.points.size() == points.count();
        status = skin.setWeights(path, all ? component : points.part(call.points), listed, values, true);
    }
    call.points.clear();
    call.values.clear();
}
