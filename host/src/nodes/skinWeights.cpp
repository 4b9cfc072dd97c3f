#include "nodes/skinWeights.h"

#include "graph/node.h"
#include "graph/plug.h"
#include "graph/weightRows.h"
#include "nodes/fewInfluences.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

void readRow(const WeightRows* rows, const SkinInfluences& influences, std::uint32_t vertex, double* row)
{
    std::fill_n(row, influences.count(), 0.0);
    if (!rows)
        return;
    for (const WeightRows::Entry entry : rows->row(vertex))
        if (entry.column < influences.physicalOf.size() &&
            influences.physicalOf[entry.column] != SkinInfluences::kNone)
            row[influences.physicalOf[entry.column]] = entry.weight;
}

/// `before` and `after` are rows by physical index.
void writeRow(WeightRows& rows, const SkinInfluences& influences, std::uint32_t vertex, const double* before,
              const double* after)
{
    for (std::size_t influence = 0; influence < influences.count(); ++influence) {
        if (after[influence] == 0.0 && before[influence] != 0.0)
            rows.erase(vertex, influences.logical[influence]);
        else if (after[influence] != before[influence])
            rows.set(vertex, influences.logical[influence], after[influence]);
    }
}

/// A change of a skin, point by point. Rows have one weight per influence, by physical index.
class SkinWriter {
public:
    SkinWriter(WeightRows& weightRows, const SkinInfluences& skinInfluences,
               const SkinWeightChange& skinChange, bool normalize)
        : rows(weightRows), influences(skinInfluences), change(skinChange),
          step(change.valueCount != change.influences.size() ? change.influences.size() : 0),
          roles(influences.count(), Role::kFree), before(influences.count())
    {
        for (std::size_t influence = 0; influence < roles.size(); ++influence)
            if (influences.locked[influence])
                roles[influence] = Role::kKept;
        for (const std::uint32_t influence : change.influences)
            roles[influence] = Role::kListed;
        makesRoom = normalize && count(Role::kFree) > 0;
    }

    void write()
    {
        switch (roles.size()) {
        case 2:
            return writeFew<2>();
        case 3:
            return writeFew<3>();
        case 4:
            return writeFew<4>();
        default:
            for (std::size_t point = 0; point < change.points.size(); ++point)
                writePoint(point);
        }
    }

private:
    enum class Role : std::uint8_t { kListed, kKept, kFree };

    std::size_t count(Role role) const
    {
        return static_cast<std::size_t>(std::count(roles.begin(), roles.end(), role));
    }
    /// Each influence is listed, once and in order.
    bool setsAll() const
    {
        for (std::uint32_t influence = 0; influence < roles.size(); ++influence)
            if (influence >= change.influences.size() || change.influences[influence] != influence)
                return false;
        return change.influences.size() == roles.size();
    }

    template <std::size_t Count>
    void writeFew()
    {
        FewInfluences<Count> few(rows, influences.logical);
        const auto otherwise = [this](std::size_t point) { writePoint(point); };
        if (setsAll())
            few.setAll(change.points, change.values, step, otherwise);
        else if (makesRoom && change.influences.size() == 1 && count(Role::kKept) == 0)
            few.setOne(change.points, change.influences[0], change.values, step, otherwise);
        else
            for (std::size_t point = 0; point < change.points.size(); ++point)
                writePoint(point);
    }

    void writePoint(std::size_t point)
    {
        const auto vertex = static_cast<std::uint32_t>(change.points[point]);
        const double* values = change.values + point * step;
        readRow(&rows, influences, vertex, before.data());
        after = before;
        for (std::size_t i = 0; i < change.influences.size(); ++i)
            after[change.influences[i]] = values[i];
        if (makesRoom)
            makeRoom();
        writeRow(rows, influences, vertex, before.data(), after.data());
    }
    void makeRoom()
    {
        double listed = 0.0, kept = 0.0, free = 0.0;
        for (std::size_t k = 0; k < after.size(); ++k)
            (roles[k] == Role::kListed ? listed : roles[k] == Role::kKept ? kept : free) += after[k];
        if (free <= 0.0)
            return;
        const double factor = std::max(0.0, 1.0 - listed - kept) / free;
        for (std::size_t k = 0; k < after.size(); ++k)
            if (roles[k] == Role::kFree)
                after[k] *= factor;
    }

    WeightRows& rows;
    const SkinInfluences& influences;
    const SkinWeightChange& change;
    std::size_t step;        ///< values per point
    std::vector<Role> roles; ///< of each influence
    bool makesRoom = false;
    std::vector<double> before, after; ///< one row each for all points
};

void check(const Plug& weightList, const SkinInfluences& influences, const SkinWeightChange& change)
{
    const std::size_t listed = change.influences.size();
    for (const std::uint32_t influence : change.influences)
        if (influence >= influences.count())
            throw Error("'" + weightList.node()->name() + "' has no influence " + std::to_string(influence) +
                        ".");
    if (change.valueCount != listed && change.valueCount != listed * change.points.size())
        throw Error("There are " + std::to_string(change.valueCount) + " weights for " +
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

std::vector<double> skinWeights(Node& skin, const SkinInfluences& influences, const PointList& points)
{
    const Plug weightList = skin.plug("weightList");
    const WeightRows* rows = weightList.rows();
    std::vector<double> weights(points.size() * influences.count());
    for (std::size_t vertex = 0; vertex < points.size(); ++vertex)
        readRow(rows, influences, static_cast<std::uint32_t>(points[vertex]),
                weights.data() + vertex * influences.count());
    return weights;
}

void setSkinWeights(Node& skin, const SkinInfluences& influences, const SkinWeightChange& change)
{
    const Plug weightList = skin.plug("weightList");
    check(weightList, influences, change);
    const bool normalize = change.normalize && skin.plug("normalizeWeights").number() != 0.0;
    SkinWriter(weightList.makeRows(), influences, change, normalize).write();
    weightList.changed();
}

} // namespace host
