#include "graph/graphParts.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

void requireNewNames(const Node& node, const Attribute& attribute)
{
    for (const std::string& name : {attribute.longName, attribute.shortName})
        if (name.empty() || node.findAttribute(name))
            throw Error("The node '" + node.uniqueName() + "' already has an attribute '" + name + "'.");
    for (const Ref<Attribute>& child : attribute.children)
        requireNewNames(node, *child);
}

void requireUnlocked(const Node& node)
{
    if (!node.alive())
        throw Error("The node '" + node.name() + "' has been deleted.");
    if (node.locked)
        throw Error("Cannot change the attributes of '" + node.uniqueName() + "': it is locked.");
}

} // namespace

void Graph::addAttribute(Node& node, Ref<Attribute> root)
{
    requireUnlocked(node);
    requireNewNames(node, *root);
    root->settle();
    NodeState& state = node.state();
    const auto before = std::find(state.retired.begin(), state.retired.end(), root);
    if (before != state.retired.end())
        state.retired.erase(before);
    else
        root->childIndex = state.nextRoot++;
    node.dynamicRoots.push_back(root);
    std::sort(node.dynamicRoots.begin(), node.dynamicRoots.end(),
              [](const Ref<Attribute>& a, const Ref<Attribute>& b) { return a->childIndex < b->childIndex; });
    ++changes;
    modified = true;
}

std::vector<Graph::Connection> Graph::removeAttribute(Node& node, const Attribute& root)
{
    requireUnlocked(node);
    const auto found = std::find_if(node.dynamicRoots.begin(), node.dynamicRoots.end(),
                                    [&](const Ref<Attribute>& own) { return own.get() == &root; });
    if (found == node.dynamicRoots.end())
        throw Error("'" + node.uniqueName() + "." + root.longName + "' is no attribute that can be removed.");
    const Ref<Attribute> kept = *found;
    std::vector<std::pair<Link*, Afterwards>> cuts;
    for (Link* link : linksBelow(Plug(&node, &root)))
        cuts.emplace_back(link, Afterwards::kOwnValue);
    for (Link* link : node.state().outputs)
        if (&link->source.attribute()->root() == &root && &link->destination.attribute()->root() != &root)
            cuts.emplace_back(link, Afterwards::kDelivered);
    std::vector<Connection> gone = cutAll(cuts);
    node.dynamicRoots.erase(found);
    node.state().retired.push_back(kept);
    ++changes;
    modified = true;
    return gone;
}

Ref<Attribute> Graph::keptAttribute(const std::string& name) const
{
    Ref<Attribute> attribute = AttributeSpec(name, name, AttributeType::kOpaque).take();
    attribute->flags.hidden = true;
    return attribute;
}

Plug Graph::keepAttribute(Node& node, const std::string& path)
{
    if (!node.alive())
        throw Error("The node '" + node.name() + "' has been deleted.");
    if (const Attribute* existing = node.findAttribute(path))
        return Plug(&node, existing);
    const std::size_t bracket = path.find('[');
    const bool isElement = bracket != std::string::npos && bracket > 0 && path.back() == ']' &&
                           path.find('.') == std::string::npos && path.find(']') + 1 == path.size();
    const std::string name = isElement ? path.substr(0, bracket) : path;
    const Attribute* known = node.findAttribute(name);
    if (isElement && known && known->flags.array)
        return node.plugByPath(path);
    const bool asArray = isElement && !known;
    const Ref<Attribute> made = keptAttribute(asArray ? name : path);
    made->flags.array = asArray;
    // A locked node in a file still has all the attributes that the file gives it.
    const bool locked = std::exchange(node.locked, false);
    addAttribute(node, made);
    node.locked = locked;
    return asArray ? node.plugByPath(path) : Plug(&node, made.get());
}

} // namespace host
