#include "plainSkin.h"

#include <cmath>
#include <random>

namespace bench {

namespace {

/// The nearest influences of a place on the sheet, `edited` among them.
std::vector<std::uint32_t> nearest(double x, double y, std::size_t influences, std::size_t entries,
                                   std::uint32_t edited)
{
    const auto across = static_cast<std::size_t>(std::ceil(std::sqrt(2.0 * static_cast<double>(influences))));
    const double step = static_cast<double>(across);
    std::vector<std::pair<double, std::uint32_t>> byDistance;
    for (std::uint32_t k = 0; k < influences; ++k) {
        const double dx = x * step - static_cast<double>(k % across) - 0.5;
        const double dy = y * step / 2.0 - static_cast<double>(k / across) - 0.5;
        byDistance.emplace_back(k == edited ? -1.0 : dx * dx + dy * dy, k);
    }
    const auto end = byDistance.begin() + static_cast<std::ptrdiff_t>(entries);
    std::partial_sort(byDistance.begin(), end, byDistance.end());
    std::vector<std::uint32_t> found;
    for (auto entry = byDistance.begin(); entry != end; ++entry)
        found.push_back(entry->second);
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

PlainRows characterRows(std::size_t columns, std::size_t lines, std::size_t influences, std::size_t entries,
                        std::uint32_t edited)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> weight(0.05, 1.0);
    PlainRows rows;
    rows.first.push_back(0);
    for (std::size_t line = 0; line < lines; ++line)
        for (std::size_t column = 0; column < columns; ++column) {
            const double x = static_cast<double>(column) / static_cast<double>(columns);
            const double y = static_cast<double>(line) / static_cast<double>(lines);
            const std::vector<std::uint32_t> found = nearest(x, y, influences, entries, edited);
            double others = 0.0;
            std::vector<double> row;
            for (const std::uint32_t influence : found) {
                row.push_back(influence == edited ? 0.0 : weight(random));
                others += row.back();
            }
            const double share = 0.2 + 0.4 * weight(random);
            for (std::size_t k = 0; k < entries; ++k)
                rows.weights.push_back(found[k] == edited ? share : row[k] * (1.0 - share) / others);
            rows.columns.insert(rows.columns.end(), found.begin(), found.end());
            rows.first.push_back(static_cast<std::uint32_t>(rows.columns.size()));
        }
    return rows;
}

std::vector<double> columnOf(const PlainRows& rows, std::uint32_t column)
{
    std::vector<double> values;
    values.reserve(rows.count());
    for (std::size_t k = 0; k < rows.columns.size(); ++k)
        if (rows.columns[k] == column)
            values.push_back(rows.weights[k]);
    return values;
}

} // namespace bench
