#include "nodes/skinWeights.h"

#include "graph/graph.h"
#include "graph/node.h"
#include "graph/nodeState.h"
#include "graph/plug.h"
#include "graph/weightRows.h"
#include "nodes/skinWriter.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

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

std::shared_ptr<const SkinInfluences> SkinInfluences::of(Node& skin)
{
    NodeState& state = skin.state();
    const std::uint64_t now = skin.graph().changeCount();
    if (!state.derived || state.derivedAt != now) {
        state.derived = std::make_shared<const SkinInfluences>(skin);
        state.derivedAt = now;
    }
    return std::static_pointer_cast<const SkinInfluences>(state.derived);
}

std::uint32_t SkinInfluences::physical(const DagNode& node) const
{
    const auto found = std::find(nodes.begin(), nodes.end(), &node);
    return found == nodes.end() ? kNone : static_cast<std::uint32_t>(found - nodes.begin());
}

SkinColumns::SkinColumns(const SkinInfluences& influences, const std::vector<std::uint32_t>& physical)
    : columns(physical.size()), positionOf(influences.physicalOf.size(), SkinInfluences::kNone)
{
    for (std::size_t position = 0; position < columns.size(); ++position) {
        if (physical[position] >= influences.count())
            throw Error("There is no influence " + std::to_string(physical[position]) + ".");
        columns[position] = influences.logical[physical[position]];
        std::uint32_t& first = positionOf[columns[position]];
        if (first == SkinInfluences::kNone)
            first = static_cast<std::uint32_t>(position);
        else
            repeats.push_back(position);
    }
}

void setSkinWeights(Node& skin, const SkinWeightChange& change)
{
    const Plug weightList = skin.plug("weightList");
    const std::shared_ptr<const SkinInfluences> influences = SkinInfluences::of(skin);
    check(weightList, *influences, change);
    const bool normalize = change.normalize && skin.plug("normalizeWeights").number() != 0.0;
    SkinWriter(weightList.makeRows(), *influences, change, normalize).write();
    weightList.changed();
    // The influences do not depend on the weights.
    skin.state().derivedAt = skin.graph().changeCount();
}

} // namespace host
