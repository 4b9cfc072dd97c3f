#pragma once

#include "graph/indexRun.h"
#include "graph/weightRows.h"
#include "selection/pointList.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace host {

/// Weight changes on skins of a few influences, whose rows mostly hold just these: they are changed where
/// they lie, at memory speed. The numbers are those of the general way, bit for bit.
///
/// Nothing here ends a loop early: so the compiler takes several rows at a time, which is most of the speed.
template <std::size_t Count>
class FewInfluences {
public:
    /// `logical`: the logical indices of the influences, in physical order.
    FewInfluences(WeightRows& weightRows, const std::vector<std::uint32_t>& logical) : rows(weightRows)
    {
        std::copy_n(logical.begin(), Count, columns.begin());
        const auto row = rows.shortRows(columns).patternRow();
        for (std::size_t k = 0; k < pattern.size(); ++k)
            pattern[k] = row[k % row.size()];
    }

    /// Writes all influences of the points, `Count` values each; step 0 = the same for every point. Calls
    /// `otherwise(position)` for a point whose row is of another kind.
    template <class Otherwise>
    void setAll(const PointList& points, const double* values, std::size_t step, const Otherwise& otherwise)
    {
        change(points, SettingAll{values, step}, otherwise);
    }

    /// Writes one influence and scales the others to the room that is left; none of them is locked.
    template <class Otherwise>
    void setOne(const PointList& points, std::size_t edited, const double* values, std::size_t step,
                const Otherwise& otherwise)
    {
        setOneOf<0>(points, edited, values, step, otherwise);
    }

private:
    /// Rows that are taken together when they can be.
    static constexpr std::size_t kBlock = 256;
    static constexpr std::size_t kSmallBlock = 8;
    using Row = std::array<double, Count>; ///< by physical index
    using Block = std::array<double, kBlock * Count>;
    using View = WeightRows::ShortRows<Count>;

    struct SettingAll {
        const double* values;
        std::size_t step;

        void row(std::size_t position, const double*, double* changed) const
        {
            std::copy_n(values + position * step, Count, changed);
        }
        /// The rows of some points after the change; `room` holds them when they lie nowhere yet.
        const double* block(std::size_t first, std::size_t length, const double* before, Block& room) const
        {
            return step == Count ? values + first * step : rowByRow(*this, first, length, before, room);
        }
    };

    /// With the edited influence as a constant a row stays in registers.
    template <std::size_t Edited>
    struct SettingOne {
        const double* values;
        std::size_t step;

        void row(std::size_t position, const double* before, double* changed) const
        {
            const double weight = values[position * step];
            double others = 0.0;
            for (std::size_t k = 0; k < Count; ++k)
                others += k == Edited ? 0.0 : before[k];
            const double factor = others > 0.0 ? std::max(0.0, 1.0 - weight) / others : 1.0;
            for (std::size_t k = 0; k < Count; ++k)
                changed[k] = k == Edited ? weight : before[k] * factor;
        }
        const double* block(std::size_t first, std::size_t length, const double* before, Block& room) const
        {
            return rowByRow(*this, first, length, before, room);
        }
    };

    template <class Change>
    static const double* rowByRow(const Change& change, std::size_t first, std::size_t length,
                                  const double* before, Block& room)
    {
        for (std::size_t k = 0; k < length; ++k)
            change.row(first + k, before + k * WeightRows::kInline, &room[k * Count]);
        return room.data();
    }

    template <std::size_t Edited, class Otherwise>
    void setOneOf(const PointList& points, std::size_t edited, const double* values, std::size_t step,
                  const Otherwise& otherwise)
    {
        if constexpr (Edited + 1 < Count)
            if (edited != Edited)
                return setOneOf<Edited + 1>(points, edited, values, step, otherwise);
        change(points, SettingOne<Edited>{values, step}, otherwise);
    }

    template <class Change, class Otherwise>
    void change(const PointList& points, const Change& rule, const Otherwise& otherwise)
    {
        View view = rows.shortRows(columns);
        const std::size_t count = points.size();
        for (std::size_t first = 0; first < count; first += kBlock)
            changeSome(view, points.data(), first, std::min(kBlock, count - first), rule, otherwise);
    }

    /// A block with rows of another kind is divided, so that these do not slow down all of it.
    template <class Change, class Otherwise>
    void changeSome(View& view, const int* ids, std::size_t first, std::size_t length, const Change& rule,
                    const Otherwise& otherwise)
    {
        if (changeBlock(view, ids + first, first, length, rule))
            return;
        if (length > kSmallBlock) {
            const std::size_t part = std::max(kSmallBlock, length / 4);
            for (std::size_t done = 0; done < length; done += part)
                changeSome(view, ids, first + done, std::min(part, length - done), rule, otherwise);
            return;
        }
        for (std::size_t position = first; position < first + length; ++position) {
            if (changeRow(view, static_cast<std::uint32_t>(ids[position]), position, rule))
                continue;
            otherwise(position);
            view = rows.shortRows(columns);
        }
    }

    /// False, with nothing changed, unless the rows follow one another and keep their entries.
    template <class Change>
    bool changeBlock(const View& view, const int* ids, std::size_t first, std::size_t length,
                     const Change& rule) const
    {
        if (!isRun(ids, length))
            return false;
        double* const stored = view.exactBlock(static_cast<std::uint32_t>(ids[0]), length, pattern.data());
        if (!stored)
            return false;
        Block room;
        const double* const changed = rule.block(first, length, stored, room);
        if (!allPositive(changed, length * Count))
            return false;
        for (std::size_t k = 0; k < length; ++k)
            std::copy_n(changed + k * Count, Count, stored + k * WeightRows::kInline);
        return true;
    }

    template <class Change>
    static bool changeRow(const View& view, std::uint32_t row, std::size_t position, const Change& rule)
    {
        Row before, changed;
        if (!view.read(row, before.data()))
            return false;
        rule.row(position, before.data(), changed.data());
        view.write(row, changed.data());
        return true;
    }

    /// On the bits, which are those of a positive integer then. Negative weights, which hardly anybody has,
    /// take the other way together with zeros.
    static bool allPositive(const double* values, std::size_t count)
    {
        std::uint64_t off = 0;
        for (std::size_t k = 0; k < count; ++k) {
            std::uint64_t bits;
            std::memcpy(&bits, values + k, sizeof bits);
            off |= bits | (bits - 1u);
        }
        return off >> 63u == 0;
    }

    WeightRows& rows;
    std::array<std::uint32_t, Count> columns;
    std::array<std::uint32_t, kBlock * WeightRows::kInline> pattern; ///< the columns of a block of rows
};

} // namespace host
