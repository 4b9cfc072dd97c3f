#include "nodes/skinWeights.h"

#include "graph/node.h"
#include "graph/plug.h"
#include "graph/weightRows.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

/// One point's weights by physical index.
using Row = std::vector<double>;

void readRow(const WeightRows* rows, const SkinInfluences& influences, int point, double* row)
{
    std::fill_n(row, influences.count(), 0.0);
    if (!rows)
        return;
    const WeightRows::Span span = rows->row(static_cast<std::uint32_t>(point));
    for (const WeightRows::Entry* entry = span.begin; entry != span.end; ++entry)
        if (entry->column < influences.physicalOf.size() &&
            influences.physicalOf[entry->column] != SkinInfluences::kNone)
            row[influences.physicalOf[entry->column]] = entry->weight;
}

/// `before` and `after` are rows by physical index.
void writeRow(WeightRows& rows, const SkinInfluences& influences, int point, const Row& before,
              const Row& after)
{
    const auto vertex = static_cast<std::uint32_t>(point);
    for (std::size_t influence = 0; influence < after.size(); ++influence) {
        if (after[influence] != before[influence])
            rows.store(vertex, influences.logical[influence], after[influence]);
    }
}

void makeRoom(Row& row, const std::vector<bool>& listed, const std::vector<bool>& locked)
{
    double wanted = 0.0;
    double kept = 0.0;
    double free = 0.0;
    for (std::size_t influence = 0; influence < row.size(); ++influence)
        (listed[influence] ? wanted : locked[influence] ? kept : free) += row[influence];
    if (free <= 0.0)
        return;
    const double factor = std::max(0.0, 1.0 - wanted - kept) / free;
    for (std::size_t influence = 0; influence < row.size(); ++influence)
        if (!listed[influence] && !locked[influence])
            row[influence] *= factor;
}

/// The values for one point of a change, one per listed influence.
const double* valuesOf(const SkinWeightChange& change, std::size_t point)
{
    const std::size_t count = change.influences.size();
    return change.values.data() + (change.values.size() != count ? point * count : 0);
}

/// Without normalizing only the listed weights change.
void writeListed(WeightRows& rows, const SkinInfluences& influences, const SkinWeightChange& change)
{
    std::vector<std::uint32_t> columns;
    for (const std::uint32_t influence : change.influences)
        columns.push_back(influences.logical[influence]);
    for (std::size_t point = 0; point < change.points.size(); ++point)
        rows.store(static_cast<std::uint32_t>(change.points[point]), columns, valuesOf(change, point));
}

void writeNormalized(WeightRows& rows, const SkinInfluences& influences, const SkinWeightChange& change)
{
    std::vector<bool> listed(influences.count(), false);
    for (const std::uint32_t influence : change.influences)
        listed[influence] = true;
    Row before(influences.count()), after; // one of each for all points
    for (std::size_t point = 0; point < change.points.size(); ++point) {
        const double* values = valuesOf(change, point);
        readRow(&rows, influences, change.points[point], before.data());
        after = before;
        for (std::size_t i = 0; i < change.influences.size(); ++i)
            after[change.influences[i]] = values[i];
        makeRoom(after, listed, influences.locked);
        writeRow(rows, influences, change.points[point], before, after);
    }
}

void check(const Plug& weightList, const SkinInfluences& influences, const SkinWeightChange& change)
{
    const std::size_t listed = change.influences.size();
    for (const std::uint32_t influence : change.influences)
        if (influence >= influences.count())
            throw Error("'" + weightList.node()->name() + "' has no influence " + std::to_string(influence) +
                        ".");
    if (change.values.size() != listed && change.values.size() != listed * change.points.size())
        throw Error("There are " + std::to_string(change.values.size()) + " weights for " +
                    std::to_string(change.points.size()) + " points and " + std::to_string(listed) +
                    " influences.");
    if (weightList.isLocked() || weightList.isFed())
        throw Error("'" + weightList.name() + "' is locked or has an incoming connection.");
}

} // namespace

SkinInfluences::SkinInfluences(Node& skin)
{
    const Plug matrices = skin.plug("matrix");
    const Plug locks = skin.plug("lockWeights");
    for (const std::uint32_t index : matrices.existingIndices()) {
        const Plug source = matrices.element(index).source();
        DagNode* node = source.isNull() ? nullptr : source.node()->asDag();
        if (!node)
            continue;
        physicalOf.resize(index + 1u, kNone);
        physicalOf[index] = static_cast<std::uint32_t>(logical.size());
        logical.push_back(index);
        nodes.push_back(node);
        locked.push_back(locks.element(index).number() != 0.0);
    }
}

std::uint32_t SkinInfluences::physical(const DagNode& node) const
{
    const auto found = std::find(nodes.begin(), nodes.end(), &node);
    return found == nodes.end() ? kNone : static_cast<std::uint32_t>(found - nodes.begin());
}

std::vector<double> skinWeights(Node& skin, const SkinInfluences& influences, const std::vector<int>& points)
{
    const Plug weightList = skin.plug("weightList");
    const WeightRows* rows = weightList.rows();
    std::vector<double> weights(points.size() * influences.count());
    for (std::size_t vertex = 0; vertex < points.size(); ++vertex)
        readRow(rows, influences, points[vertex], weights.data() + vertex * influences.count());
    return weights;
}

void setSkinWeights(Node& skin, const SkinInfluences& influences, const SkinWeightChange& change)
{
    const Plug weightList = skin.plug("weightList");
    check(weightList, influences, change);
    const bool normalize = change.normalize && skin.plug("normalizeWeights").number() != 0.0;
    WeightRows& rows = weightList.makeRows();
    if (!normalize)
        writeListed(rows, influences, change);
    else
        writeNormalized(rows, influences, change);
    weightList.changed();
}

} // namespace host
