#include "selection/selectionState.h"

#include "graph/graph.h"
#include "selection/componentAlgebra.h"
#include "selection/occlusion.h"
#include "selection/richSelection.h"
#include "session.h"

namespace host {

namespace {

void prune(RichSelection& rich)
{
    rich.selection.prune();
    rich.symmetry.prune();
}

/// The active list holds each thing once, components ascending and without weights, and nothing empty.
SelectionList normalised(const SelectionList& list)
{
    SelectionList out;
    for (const SelectionItem& item : list.items) {
        SelectionItem clean = item;
        if (item.component) {
            clean.component = united(*item.component, *item.component);
            clean.component->weights.clear();
            if (clean.component->count() == 0)
                continue;
        }
        out.add(std::move(clean), true);
    }
    return out;
}

} // namespace

SelectionState::SelectionState(Session& session) : owner(session) {}

SelectionState::~SelectionState() = default;

const SelectionList& SelectionState::active()
{
    list.prune();
    return list;
}

void SelectionState::setActive(SelectionList newList)
{
    newList.prune();
    list = normalised(newList);
    overridden = {};
    hasOverride = false;
    ++version;
}

RichSelection SelectionState::rich()
{
    if (hasOverride) {
        prune(overridden);
        return overridden;
    }
    if (!soft.enabled && !symmetry.enabled)
        return {active(), {}};
    const std::uint64_t changes = owner.graph().changeCount();
    if (!hasComputed || computedVersion != version || computedChanges != changes) {
        hasComputed = false;
        computed = richSelectionOf(owner, active());
        computedVersion = version;
        computedChanges = changes;
        hasComputed = true;
    }
    return computed;
}

void SelectionState::setRich(RichSelection rich)
{
    prune(rich);
    hasOverride = !rich.empty();
    overridden = std::move(rich);
    ++version;
}

void SelectionState::optionsChanged()
{
    overridden = {};
    hasOverride = false;
    ++version;
}

void SelectionState::restore(const Snapshot& earlier)
{
    list = earlier.list;
    overridden = earlier.overridden;
    hasOverride = earlier.hasOverride;
    ++version;
}

} // namespace host
