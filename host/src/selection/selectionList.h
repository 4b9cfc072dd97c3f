#pragma once

#include "graph/plug.h"
#include "selection/component.h"

#include <string>
#include <vector>

namespace host {

class Graph;
class Node;

/// One entry of a selection list: a node, a DAG shape with a component, or a plug.
struct SelectionItem {
    Ref<Node> node;
    Ref<Component> component; ///< null = the whole node
    Plug plug;                ///< null unless the item is a plug
};

/// What an MSelectionList holds: ordered items.
struct SelectionList {
    std::vector<SelectionItem> items;

    enum class Merge { kNormal, kXor, kRemove };

    /// Adds what a name or pattern stands for: nodes, "body.vtx[3:17]", "node.attr". A component of a
    /// transform means that of its shape. Throws host::Error ("No object matches name: x", ambiguous names)
    /// and then has added nothing.
    void addPattern(Graph& graph, const std::string& pattern, bool anyNamespace = false);
    /// With merging, components of one shape are united in the existing item (ascending); without, the item
    /// is appended as it is.
    void add(SelectionItem item, bool merge);
    void combine(const SelectionList& other, Merge how);
    /// "body", "|a|body", "bodyShape.vtx[0:3]" ... of one item: one text per run.
    std::vector<std::string> texts(std::size_t item) const;
    /// Drops items whose node has left the scene.
    void prune();
};

} // namespace host
