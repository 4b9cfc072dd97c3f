#pragma once

#include "plainStroke.h"

#include <cstdint>
#include <utility>
#include <vector>

// Skin weights as plainly as they can be had, and what a stroke does to them: rows of entries one after
// another, one thread.

namespace bench {

struct PlainRows {
    std::vector<std::uint32_t> first; ///< per row where its entries begin; and one for the end
    std::vector<std::uint32_t> columns;
    std::vector<double> weights;

    std::size_t count() const { return first.size() - 1; }
};

/// Rows like those of a character: as many entries in each, the edited influence and the nearest others of
/// `influences` that lie in a grid under the sheet.
PlainRows characterRows(std::size_t columns, std::size_t lines, std::size_t influences, std::size_t entries,
                        std::uint32_t edited);
/// The weights of an influence that is in every row.
std::vector<double> columnOf(const PlainRows& rows, std::uint32_t column);

/// A drag event: one entry set, the others of its row scaled to the room that is left.
class PlainRescale {
public:
    PlainRescale(PlainRows pressRows, std::uint32_t editedColumn, double reach)
        : rows(std::move(pressRows)), edited(editedColumn), clamp(columnOf(rows, edited), reach)
    {}

    void run()
    {
        clamp.forEachBlock([this](std::size_t first, const double* block, std::size_t length) {
            for (std::size_t k = 0; k < length; ++k)
                setOne(first + k, block[k]);
        });
    }
    const PlainRows& result() const { return rows; }

private:
    void setOne(std::size_t row, double weight)
    {
        const std::size_t begin = rows.first[row], end = rows.first[row + 1];
        double others = 0.0;
        for (std::size_t k = begin; k < end; ++k)
            others += rows.columns[k] == edited ? 0.0 : rows.weights[k];
        const double factor = others > 0.0 ? std::max(0.0, 1.0 - weight) / others : 1.0;
        for (std::size_t k = begin; k < end; ++k)
            rows.weights[k] = rows.columns[k] == edited ? weight : rows.weights[k] * factor;
    }

    PlainRows rows;
    std::uint32_t edited;
    PlainClamp<double> clamp;
};

/// The same where weights reach 0 and 1: entries that become 0 are taken out, and a row that has lost some is
/// built again from the press before it is changed.
class PlainRebuild {
public:
    PlainRebuild(const PlainRows& pressRows, std::uint32_t editedColumn, double reach)
        : press(pressRows), rows(pressRows), ends(pressRows.first.begin() + 1, pressRows.first.end()),
          edited(editedColumn), clamp(columnOf(press, edited), reach)
    {}

    void run()
    {
        clamp.forEachBlock([this](std::size_t first, const double* block, std::size_t length) {
            for (std::size_t k = 0; k < length; ++k)
                setOne(first + k, block[k]);
        });
    }

private:
    void setOne(std::size_t row, double weight)
    {
        const std::size_t begin = press.first[row], full = press.first[row + 1];
        if (ends[row] != full) {
            std::copy(&press.weights[begin], &press.weights[full], &rows.weights[begin]);
            std::copy(&press.columns[begin], &press.columns[full], &rows.columns[begin]);
        }
        double others = 0.0;
        for (std::size_t k = begin; k < full; ++k)
            others += rows.columns[k] == edited ? 0.0 : rows.weights[k];
        const double factor = others > 0.0 ? std::max(0.0, 1.0 - weight) / others : 1.0;
        std::size_t end = begin;
        for (std::size_t k = begin; k < full; ++k) {
            const double value = rows.columns[k] == edited ? weight : rows.weights[k] * factor;
            rows.weights[end] = value;
            rows.columns[end] = rows.columns[k];
            end += value != 0.0 ? 1u : 0u;
        }
        ends[row] = static_cast<std::uint32_t>(end);
    }

    const PlainRows press;
    PlainRows rows;
    std::vector<std::uint32_t> ends;
    std::uint32_t edited;
    PlainClamp<double> clamp;
};

} // namespace bench
