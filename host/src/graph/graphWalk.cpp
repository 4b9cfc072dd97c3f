#include "graph/graphWalk.h"

#include <algorithm>

namespace host {

GraphWalk::GraphWalk(Node& start, const Options& given) : options(given), origin(&start)
{
    reset();
}

GraphWalk::GraphWalk(const Plug& start, const Options& given)
    : options(given), origin(start.node()), from(start)
{
    reset();
}

void GraphWalk::reset()
{
    pending.clear();
    reached.clear();
    listed.clear();
    closed.clear();
    current = Ref<Node>();
    pruned = false;
    if (!origin->alive())
        return;
    const Attribute* root = from.isNull() ? nullptr : &from.attribute()->root();
    place = {origin, Ref<const Attribute>(root)};
    if (visit(place)) {
        current = origin;
        return;
    }
    expand(place);
    next();
}

/// True when the node is to be shown now.
bool GraphWalk::visit(const Place& arrived)
{
    reached.emplace(arrived.node.get(), arrived.root.get());
    if (options.filter != MFn::kInvalid && !arrived.node->hasFn(options.filter))
        return false;
    return listed.insert(arrived.node.get()).second || options.everyAttribute;
}

void GraphWalk::next()
{
    if (current && pruned)
        closed.insert(current.get());
    else if (current)
        expand(place);
    pruned = false;
    current = Ref<Node>();
    while (!pending.empty()) {
        const Place arrived = pending.front();
        pending.pop_front();
        if (!arrived.node->alive() || reached.count({arrived.node.get(), arrived.root.get()}))
            continue;
        if (visit(arrived)) {
            place = arrived;
            current = arrived.node;
            return;
        }
        expand(arrived);
    }
}

void GraphWalk::expand(const Place& left)
{
    if (!left.node->alive() || closed.count(left.node.get()))
        return;
    std::deque<Place> found;
    reach(left, found);
    const auto where = options.breadthFirst ? pending.end() : pending.begin();
    pending.insert(where, found.begin(), found.end());
}

bool GraphWalk::flowsTo(const Place& left, const Attribute& end) const
{
    if (!left.root || left.root.get() == &end)
        return true;
    const NodeType& type = left.node->type();
    if (type.affects.empty())
        return true;
    const bool down = options.direction == Direction::kDownstream;
    const Attribute& input = down ? *left.root : end;
    const Attribute& output = down ? end : *left.root;
    const auto& affected = type.affectedBy(input.childIndex);
    return std::find(affected.begin(), affected.end(), &output) != affected.end();
}

void GraphWalk::reach(const Place& left, std::deque<Place>& found) const
{
    const bool down = options.direction == Direction::kDownstream;
    Graph& graph = left.node->graph();
    const bool narrow = !from.isNull() && left.node == origin && left.root.get() == &from.attribute()->root();
    for (const Graph::Connection& connection : down ? graph.outputs(*left.node) : graph.inputs(*left.node)) {
        const Plug& near = down ? connection.source : connection.destination;
        const Plug& beyond = down ? connection.destination : connection.source;
        const Attribute& root = near.attribute()->root();
        if (!flowsTo(left, root))
            continue;
        // A walk from one plug does not take its neighbours in the same array or compound along.
        if (narrow && &root == left.root.get() && !near.isBelow(from) && !from.isBelow(near))
            continue;
        found.push_back({Ref<Node>(beyond.node()), Ref<const Attribute>(&beyond.attribute()->root())});
    }
}

} // namespace host
