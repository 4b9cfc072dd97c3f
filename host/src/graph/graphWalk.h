#pragma once

#include "graph/graph.h"

#include <deque>
#include <set>
#include <utility>

namespace host {

/// A walk over what feeds a node, or what it feeds: along connections, and inside a node from an input to
/// the outputs that it affects (and the other way round upstream). The hierarchy is not followed. In a type
/// that says nothing about what affects what, every attribute is taken to affect every other.
struct GraphWalk {
    enum class Direction { kDownstream, kUpstream };
    struct Options {
        MFn::Type filter = MFn::kInvalid; ///< kInvalid = every node
        Direction direction = Direction::kDownstream;
        bool breadthFirst = false;
        bool everyAttribute = false; ///< a node is visited once per attribute at which it is reached
    };

    /// From all attributes of the node, or from one plug of it. The start is visited first if it passes the
    /// filter.
    GraphWalk(Node& start, const Options& options);
    GraphWalk(const Plug& start, const Options& options);

    void reset();
    void next();
    void prune() { pruned = true; } ///< nothing beyond the current node is visited
    bool done() const { return !current; }
    /// The current node; null when done or when it has been deleted meanwhile.
    Node* item() const { return current && current->alive() ? current.get() : nullptr; }
    Node* start() const { return origin->alive() ? origin.get() : nullptr; }

private:
    /// A root attribute of a node at which the walk has arrived; null attribute = all of the node.
    struct Place {
        Ref<Node> node;
        Ref<const Attribute> root;
    };
    void expand(const Place& place);
    void reach(const Place& place, std::deque<Place>& found) const;
    bool visit(const Place& place);
    bool flowsTo(const Place& place, const Attribute& end) const;

    Options options;
    Ref<Node> origin;
    Plug from; ///< null when the walk starts at the whole node
    Place place;
    Ref<Node> current;
    bool pruned = false;
    std::deque<Place> pending;
    std::set<std::pair<const Node*, const Attribute*>> reached;
    std::set<const Node*> listed, closed;
};

} // namespace host
