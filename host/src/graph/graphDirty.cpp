#include "graph/graphParts.h"
#include "messages.h"
#include "session.h"

namespace host {

void Graph::dirty(const Plug& plug)
{
    ++changes;
    modified = true;
    Node& node = *plug.node();
    const Attribute& root = *plug.rootOwner;
    RootState& state = node.state().root(root);
    // What was marked last time is dirty still, unless something has been computed since. Connections out of
    // the root itself lead elsewhere from each plug.
    if (state.markedAt == computations && state.fed == 0)
        return;
    state.markedAt = computations;
    ++parts->propagation;
    markAffected(node, root);
    passOn(node, root, &plug);
    propagate();
}

/// Only an output that is up to date, or one whose failure somebody may have caught, has anything to pass on:
/// behind a dirty one everything is dirty already.
void Graph::mark(Node& node, const Attribute& output)
{
    using Freshness = RootState::Freshness;
    Freshness& freshness = node.state().root(output).freshness;
    if (freshness == Freshness::kClean || freshness == Freshness::kFailed) {
        freshness = Freshness::kDirty;
        parts->work.emplace_back(&node, &output);
    } else if (freshness == Freshness::kComputing) {
        freshness = Freshness::kStale;
    }
}

void Graph::markAffected(Node& node, const Attribute& root)
{
    for (const Attribute* output : node.type().affectedBy(root.childIndex))
        mark(node, *output);
}

/// `changed`: only connections that carry this plug or a part of it; null = all of the root.
void Graph::passOn(Node& node, const Attribute& root, const Plug* changed)
{
    const NodeState& state = node.state();
    const RootState* own = state.findRoot(root);
    if (!own || own->fed == 0)
        return;
    for (const Link* link : state.outputs) {
        if (&link->source.attribute()->root() != &root)
            continue;
        if (!changed || link->source.isBelow(*changed) || changed->isBelow(link->source))
            arrive(link->destination);
    }
}

void Graph::arrive(const Plug& destination)
{
    Node& node = *destination.node();
    const Attribute& root = *destination.rootOwner;
    RootState& state = node.state().root(root);
    if (state.visited == parts->propagation)
        return;
    state.visited = parts->propagation;
    markAffected(node, root);
    if (state.fed > 0)
        parts->work.emplace_back(&node, &root);
}

void Graph::propagate()
{
    while (!parts->work.empty()) {
        const auto [node, root] = parts->work.back();
        parts->work.pop_back();
        if (root->flags.output)
            markAffected(*node, *root);
        passOn(*node, *root, nullptr);
        const DagNode* dag = node->asDag();
        if (!dag || root != node->type().dagOutput)
            continue;
        // The children's other outputs may look past their own matrix straight at the parent's.
        for (const Ref<DagNode>& child : dag->children()) {
            const Attribute* output = child->type().dagOutput;
            if (!output)
                continue;
            mark(*child, *output);
            markAffected(*child, *output);
        }
    }
}

/// After a node has come to another place in the hierarchy.
void Graph::dirtyPlace(Node& node)
{
    const Attribute* output = node.asDag() ? node.type().dagOutput : nullptr;
    if (!output)
        return;
    mark(node, *output);
    markAffected(node, *output);
    ++parts->propagation;
    propagate();
}

void Graph::reportCycle(const Plug& plug)
{
    RootState& state = plug.node()->state().root(*plug.rootOwner);
    if (state.cycleReported)
        return;
    state.cycleReported = true;
    owner.messages().warning("Cycle on '" + plug.name() + "' may not evaluate as expected.");
}

} // namespace host
