#pragma once

#include "graph/node.h"
#include "selection/component.h"

#include <string>
#include <vector>

namespace host {

class Graph;

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
    /// Whether the text of a component names the transform above the shape, as scripts see it
    /// ("body.vtx[3]"; the shape when the transform has several), or the shape itself.
    enum class Owner { kTransform, kShape };

    /// Adds what a name or pattern stands for: nodes, "body.vtx[3:17]", "node.attr". A component of a
    /// transform means that of its shape. What is in the list already is not added twice; components are
    /// united with those of their shape. Throws host::Error ("No object matches name: x", ambiguous names)
    /// and then has added nothing.
    void addPattern(Graph& graph, const std::string& pattern, bool anyNamespace = false);
    /// With merging, components of one shape are united in the existing item (ascending); without, the item
    /// is appended as it is.
    void add(SelectionItem item, bool merge);
    void combine(const SelectionList& other, Merge how);
    /// "body", "|a|body", "body.vtx[0:3]", "node.attr" ... of one item: one text per run.
    std::vector<std::string> texts(std::size_t item, Owner owner = Owner::kTransform) const;
    /// The same with one text per element (ls -flatten).
    std::vector<std::string> flatTexts(std::size_t item, Owner owner = Owner::kTransform) const;
    /// Whether all of it is in the list: the node itself, or every element of the component (a component of a
    /// shape counts as held when the whole shape is an item).
    bool holds(const SelectionItem& item) const;
    /// Drops items whose node has left the scene.
    void prune();
};

} // namespace host
