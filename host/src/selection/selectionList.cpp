#include "selection/selectionList.h"

#include "graph/graph.h"
#include "selection/componentAlgebra.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

/// Nodes that the node part of a pattern names; never empty.
std::vector<Node*> nodesOf(Graph& graph, const std::string& pattern, bool anyNamespace)
{
    const bool wild = pattern.find_first_of("*?") != std::string::npos;
    std::vector<Node*> nodes;
    if (!wild && !anyNamespace)
        nodes.push_back(&graph.get(pattern));
    else
        nodes = graph.match(pattern, anyNamespace);
    if (nodes.empty())
        throw Error("No object matches name: " + pattern);
    return nodes;
}

/// The item that text after the dot stands for on one node.
SelectionItem partOf(Graph& graph, Node& node, const std::string& text)
{
    DagNode* shape = componentShape(node);
    if (shape && looksLikeComponent(*shape, text))
        return {Ref<Node>(shape), parseComponent(*shape, text), Plug()};
    return {Ref<Node>(&node), {}, graph.plug(node.uniqueName() + "." + text)};
}

bool sameThing(const SelectionItem& a, const SelectionItem& b)
{
    if (a.plug.isNull() != b.plug.isNull())
        return false;
    if (!a.plug.isNull())
        return a.plug == b.plug;
    if (a.node != b.node || !a.component != !b.component)
        return false;
    return !a.component || a.component->apiType() == b.component->apiType();
}

std::string ownerName(const Node& node, SelectionList::Owner owner)
{
    const DagNode* shape = node.asDag();
    DagNode* parent = shape && shape->isShape() ? shape->parent() : nullptr;
    if (owner == SelectionList::Owner::kShape || !parent || componentShape(*parent) != shape)
        return node.uniqueName();
    return parent->uniqueName();
}

std::vector<std::string> textsOf(const SelectionItem& item, SelectionList::Owner owner, bool flat)
{
    if (!item.plug.isNull())
        return {item.plug.name()};
    if (!item.component)
        return {item.node->uniqueName()};
    const DagNode& shape = *item.node->asDag();
    std::vector<std::string> texts =
        flat ? elementTexts(shape, *item.component) : componentTexts(shape, *item.component);
    const std::string prefix = ownerName(*item.node, owner) + ".";
    for (std::string& text : texts)
        text.insert(0, prefix);
    return texts;
}

} // namespace

void SelectionList::addPattern(Graph& graph, const std::string& pattern, bool anyNamespace)
{
    const std::size_t dot = pattern.find('.');
    const std::vector<Node*> nodes = nodesOf(graph, pattern.substr(0, dot), anyNamespace);
    std::vector<SelectionItem> found;
    std::string refusal;
    for (Node* node : nodes) {
        if (dot == std::string::npos) {
            found.push_back({Ref<Node>(node), {}, Plug()});
            continue;
        }
        // Of many nodes that a pattern matches, those without such a part are passed over.
        try {
            found.push_back(partOf(graph, *node, pattern.substr(dot + 1)));
        } catch (const Error& error) {
            refusal = error.what();
        }
    }
    if (found.empty())
        throw Error(refusal);
    for (SelectionItem& item : found)
        add(std::move(item), true);
}

void SelectionList::add(SelectionItem item, bool merge)
{
    if (!merge) {
        items.push_back(std::move(item));
        return;
    }
    const auto same = std::find_if(items.begin(), items.end(),
                                   [&](const SelectionItem& other) { return sameThing(item, other); });
    if (same == items.end())
        items.push_back(std::move(item));
    else if (item.component)
        same->component = united(*same->component, *item.component);
}

void SelectionList::combine(const SelectionList& other, Merge how)
{
    for (const SelectionItem& item : other.items) {
        const auto same = std::find_if(items.begin(), items.end(),
                                       [&](const SelectionItem& mine) { return sameThing(item, mine); });
        if (same == items.end()) {
            if (how != Merge::kRemove)
                items.push_back(item);
            continue;
        }
        if (how == Merge::kNormal) {
            if (item.component)
                same->component = united(*same->component, *item.component);
            continue;
        }
        if (item.component) {
            same->component = how == Merge::kXor ? toggled(*same->component, *item.component)
                                                 : without(*same->component, *item.component);
            if (same->component->count() > 0)
                continue;
        }
        items.erase(same);
    }
}

std::vector<std::string> SelectionList::texts(std::size_t item, Owner owner) const
{
    return textsOf(items.at(item), owner, false);
}

std::vector<std::string> SelectionList::flatTexts(std::size_t item, Owner owner) const
{
    return textsOf(items.at(item), owner, true);
}

bool SelectionList::holds(const SelectionItem& item) const
{
    return std::any_of(items.begin(), items.end(), [&](const SelectionItem& mine) {
        if (item.component && !mine.component && mine.plug.isNull() && mine.node == item.node)
            return true;
        return sameThing(item, mine) && (!item.component || contains(*mine.component, *item.component));
    });
}

void SelectionList::prune()
{
    const auto dead = [](const SelectionItem& item) {
        const Node* node = item.plug.isNull() ? item.node.get() : item.plug.node();
        return !node || !node->alive();
    };
    items.erase(std::remove_if(items.begin(), items.end(), dead), items.end());
}

} // namespace host
