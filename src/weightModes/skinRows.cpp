#include "weightModes/skinRows.h"

#include "helperFunctions/componentPoints.h"
#include "helperFunctions/helperFunctions.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <unordered_map>

namespace {

/// Values that are read at once: they stay in the processor's cache, where most of them are found to be 0.
constexpr std::size_t kChunkValues = 32768;

/// Far more than rounding leaves.
constexpr double kSumTolerance = 1e-6;

constexpr unsigned int kAtOnce = 8;

/// Whether all of some numbers are 0, of either sign.
bool areZero(const double* values)
{
    std::uint64_t bits[kAtOnce], any = 0;
    std::memcpy(bits, values, sizeof bits);
    for (const std::uint64_t each : bits)
        any |= each;
    return any << 1U == 0;
}

} // namespace

/// Puts rows together that arrive point after point, all influences each.
class SkinRowsBuilder {
public:
    SkinRowsBuilder(unsigned int influenceCount, std::size_t pointCount)
    {
        rows.influences = influenceCount;
        rows.setOf.reserve(pointCount);
    }

    void add(const double* values)
    {
        row.clear();
        double sum = 0.0;
        for (unsigned int k = 0; k < rows.influences; ++k) {
            while (k + kAtOnce <= rows.influences && areZero(values + k))
                k += kAtOnce;
            if (k < rows.influences && values[k] != 0.0) {
                row.push_back(static_cast<SkinRows::Column>(k));
                rows.weights.push_back(values[k]);
                sum += values[k];
            }
        }
        rowIsOdd = std::abs(sum - 1.0) > kSumTolerance;
        rows.setOf.push_back(setOfRow());
    }
    SkinRows take()
    {
        rows.weights.shrink_to_fit();
        rows.columns.shrink_to_fit();
        rows.influenceSets.shrink_to_fit();
        return std::move(rows);
    }

private:
    bool isSet(std::uint32_t set) const
    {
        const SkinRows::Set& known = rows.influenceSets[set];
        return known.odd == rowIsOdd && known.count == row.size() &&
               std::equal(row.begin(), row.end(), rows.columnsOf(set));
    }
    /// Neighbours mostly have the same influences.
    std::uint32_t setOfRow()
    {
        if (!rows.setOf.empty() && isSet(rows.setOf.back()))
            return rows.setOf.back();
        std::size_t hash = rowIsOdd ? 1 : 0;
        for (const SkinRows::Column column : row)
            hash = (hash ^ column) * std::size_t{0x9E3779B97F4A7C15U};
        const auto found = byHash.equal_range(hash);
        for (auto entry = found.first; entry != found.second; ++entry)
            if (isSet(entry->second))
                return entry->second;
        const auto made = static_cast<std::uint32_t>(rows.influenceSets.size());
        rows.influenceSets.push_back(
            {rows.columns.size(), static_cast<SkinRows::Column>(row.size()), rowIsOdd});
        rows.columns.insert(rows.columns.end(), row.begin(), row.end());
        byHash.emplace(hash, made);
        return made;
    }

    SkinRows rows;
    std::unordered_multimap<std::size_t, std::uint32_t> byHash;
    std::vector<SkinRows::Column> row; ///< the influences of the row under way
    bool rowIsOdd = false;
};

SkinRowsRef SkinRows::read(const MFnSkinCluster& skin, const MDagPath& path, const MObject& component,
                           MStatus& status)
{
    const ComponentPoints points(component);
    const std::size_t count = points.count();
    const unsigned int influenceCount = allPhysicalIndices(skin).length();
    const std::size_t atOnce = std::max<std::size_t>(1, kChunkValues / std::max(influenceCount, 1U));
    const bool fits = count > 0 && influenceCount <= std::numeric_limits<Column>::max();
    status = fits ? MS::kSuccess : MS::kFailure;
    SkinRowsBuilder builder(influenceCount, count);
    MDoubleArray values;
    for (std::size_t first = 0; status && first < count; first += atOnce) {
        const std::size_t length = std::min(atOnce, count - first);
        const MObject part = length == count ? component : points.run(first, length);
        unsigned int read = 0;
        status = skin.getWeights(path, part, values, read);
        if (status && (read != influenceCount || values.length() != length * influenceCount))
            status = MS::kFailure;
        for (std::size_t point = 0; status && point < length; ++point)
            builder.add(dataOf(values) + point * influenceCount);
    }
    return status ? std::make_shared<const SkinRows>(builder.take()) : nullptr;
}

/// Calls `visit(point, influence, weight)`.
template <typename Visit>
void SkinRows::forEachEntry(const Visit& visit) const
{
    forEachPoint([&](std::size_t point, std::uint32_t set, const double* row) {
        const Column* const own = columnsOf(set);
        for (std::size_t k = 0; k < influenceSets[set].count; ++k)
            visit(point, own[k], row[k]);
    });
}

MDoubleArray SkinRows::influence(unsigned int physical) const
{
    std::vector<double> values(pointCount());
    forEachEntry([&](std::size_t point, Column column, double weight) {
        if (column == physical)
            values[point] = weight;
    });
    return MDoubleArray(values.data(), static_cast<unsigned int>(values.size()));
}

std::vector<double> SkinRows::sums(const std::vector<bool>& counted) const
{
    std::vector<double> result(pointCount());
    forEachEntry([&](std::size_t point, Column column, double weight) {
        if (counted[column])
            result[point] += weight;
    });
    return result;
}

MDoubleArray SkinRows::dense() const
{
    std::vector<double> values(pointCount() * influences);
    forEachEntry([&](std::size_t point, Column column, double weight) {
        values[point * influences + column] = weight;
    });
    return MDoubleArray(values.data(), static_cast<unsigned int>(values.size()));
}
