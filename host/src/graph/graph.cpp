#include "graph/graph.h"

#include "graph/graphParts.h"
#include "graph/names.h"
#include "types/error.h"

#include <algorithm>
#include <set>

namespace host {

Graph::Graph(Session& session) : owner(session), parts(std::make_unique<Parts>()) {}

Graph::~Graph()
{
    observers.clear();
    clear();
}

Graph::Contents::Contents() = default;

Graph::Contents::~Contents()
{
    // Links hold nodes and nodes hold their neighbours in the hierarchy: both are undone by hand.
    for (const Ref<Node>& node : all) {
        node->bookkeeping->inputs.clear();
        node->bookkeeping->outputs.clear();
        node->bookkeeping->byDestination.clear();
        if (DagNode* dag = node->asDag()) {
            dag->parentNode = nullptr;
            dag->childNodes.clear();
        }
    }
}

Ref<Node> Graph::make(const NodeType& type)
{
    Ref<Node> node = type.dag ? Ref<Node>(new DagNode(*this, type)) : Ref<Node>(new Node(*this, type));
    node->bookkeeping->sequence = parts->nextNode++;
    return node;
}

Node& Graph::create(const NodeType& type, const std::string& name, DagNode* parent)
{
    if (parent && !type.dag)
        throw Error("A node of type '" + type.name + "' cannot have a parent.");
    if (parent && parent->isShape())
        throw Error("'" + parent->uniqueName() + "' is a shape and cannot have children.");
    const std::string wish = cleanName(name);
    if (!name.empty() && wish.empty())
        throw Error("'" + name + "' is no name for a node.");
    const bool needsTransform = type.shape && type.known && !parent && registry.find("transform");
    if (needsTransform)
        parent = &ownTransform(type, wish);
    const Ref<Node> node = make(type);
    std::string stem =
        type.defaultName.empty() ? cleanName(type.name) + (type.shape ? "Shape" : "") : type.defaultName;
    if (type.shape && wish.empty() && parent)
        stem += std::to_string(numbered(parent->name()).number);
    else if (wish.empty())
        stem += "1";
    node->nodeName = freeName(wish.empty() ? stem : wish, *node, parent, wish.empty());
    enter(*node, parent, static_cast<std::size_t>(-1));
    try {
        if (type.initialise)
            type.initialise(*node);
    } catch (...) {
        remove(needsTransform ? static_cast<Node&>(*parent) : *node);
        throw;
    }
    return *node;
}

/// "bodyShape" is put under "body"; a shape named otherwise under the type's default name with a number.
DagNode& Graph::ownTransform(const NodeType& shape, const std::string& shapeName)
{
    const std::string ending = "Shape";
    std::string base = shape.defaultName.empty() ? shape.name : shape.defaultName;
    const bool named = shapeName.find(ending) != std::string::npos && shapeName.find(ending) > 0;
    if (named)
        base = shapeName;
    if (base.find(ending) != std::string::npos)
        base.erase(base.find(ending), ending.size());
    return *create(*registry.find("transform"),
                   named ? base : freeName(base + "1", *make(shape), nullptr, true))
                .asDag();
}

void Graph::attach(DagNode& node, DagNode* parent, std::size_t position)
{
    std::vector<Ref<DagNode>>& siblings = parent ? parent->childNodes : worldChildren;
    position = std::min(position, siblings.size());
    siblings.insert(siblings.begin() + static_cast<std::ptrdiff_t>(position), Ref<DagNode>(&node));
    node.parentNode = parent;
}

std::size_t Graph::positionOf(const DagNode& node) const
{
    const std::vector<Ref<DagNode>>& siblings = node.parent() ? node.parent()->childNodes : worldChildren;
    const auto found = std::find_if(siblings.begin(), siblings.end(),
                                    [&](const Ref<DagNode>& sibling) { return sibling.get() == &node; });
    return static_cast<std::size_t>(found - siblings.begin());
}

void Graph::detach(DagNode& node)
{
    std::vector<Ref<DagNode>>& siblings = node.parentNode ? node.parentNode->childNodes : worldChildren;
    const auto position = static_cast<std::ptrdiff_t>(positionOf(node));
    node.parentNode = nullptr;
    siblings.erase(siblings.begin() + position);
}

void Graph::enter(Node& node, DagNode* parent, std::size_t position)
{
    const auto place = std::upper_bound(all.begin(), all.end(), node.bookkeeping->sequence,
                                        [](std::uint64_t sequence, const Ref<Node>& other) {
                                            return sequence < other->bookkeeping->sequence;
                                        });
    all.insert(place, Ref<Node>(&node));
    if (DagNode* dag = node.asDag())
        attach(*dag, parent, position);
    parts->byName[node.nodeName].push_back(&node);
    if (node.nodeUuid.empty() || parts->byUuid.count(node.nodeUuid))
        node.nodeUuid = newUuid();
    parts->byUuid[node.nodeUuid] = &node;
    node.inScene = true;
    ++changes;
    modified = true;
}

void Graph::leave(Node& node)
{
    const Ref<Node> kept(&node);
    const auto place = std::lower_bound(all.begin(), all.end(), node.bookkeeping->sequence,
                                        [](const Ref<Node>& other, std::uint64_t sequence) {
                                            return other->bookkeeping->sequence < sequence;
                                        });
    all.erase(place);
    if (DagNode* dag = node.asDag())
        detach(*dag);
    std::vector<Node*>& named = parts->byName[node.nodeName];
    named.erase(std::find(named.begin(), named.end(), &node));
    parts->byUuid.erase(node.nodeUuid);
    node.inScene = false;
    ++changes;
    modified = true;
}

namespace {

/// The node and all below it: children before their parents, so that each leaves while its parent is still
/// there.
std::vector<Node*> subtree(Node& top)
{
    std::vector<Node*> nodes, waiting{&top};
    while (!waiting.empty()) {
        Node* const node = waiting.back();
        waiting.pop_back();
        nodes.push_back(node);
        if (const DagNode* dag = node->asDag())
            for (const Ref<DagNode>& child : dag->children())
                waiting.push_back(child.get());
    }
    std::reverse(nodes.begin(), nodes.end());
    return nodes;
}

} // namespace

Graph::Removal Graph::remove(Node& node, Locks locks)
{
    if (!node.alive())
        throw Error("The node '" + node.name() + "' has been deleted.");
    const std::vector<Node*> leaving = subtree(node);
    for (const Node* one : leaving)
        if ((one->locked && locks == Locks::kObeyed) || one->isDefault)
            throw Error("Cannot delete '" + one->uniqueName() + "': it is " +
                        (one->locked ? "locked." : "a node that every scene has."));
    Removal removal;
    const std::set<const Node*> gone(leaving.begin(), leaving.end());
    std::map<std::uint64_t, Link*> cuts;
    for (const Node* one : leaving) {
        for (Link* link : one->bookkeeping->inputs)
            cuts[link->order] = link;
        for (Link* link : one->bookkeeping->outputs)
            cuts[link->order] = link;
    }
    std::vector<std::pair<Link*, Afterwards>> ordered;
    for (const auto& entry : cuts) {
        const bool stays = gone.count(entry.second->destination.node()) == 0;
        ordered.emplace_back(entry.second, stays ? Afterwards::kDelivered : Afterwards::kOwnValue);
    }
    removal.connections = cutAll(ordered);
    for (Node* one : leaving) {
        Removal::Entry entry;
        entry.node = Ref<Node>(one);
        if (const DagNode* dag = one->asDag()) {
            if (dag->parent())
                entry.parent = Ref<DagNode>(dag->parent());
            entry.position = positionOf(*dag);
        }
        removal.nodes.push_back(entry);
        leave(*one);
    }
    for (const Removal::Entry& entry : removal.nodes)
        tell(*entry.node, false);
    return removal;
}

void Graph::restore(const Removal& removal)
{
    for (auto entry = removal.nodes.rbegin(); entry != removal.nodes.rend(); ++entry) {
        Node& node = *entry->node;
        if (node.alive())
            throw Error("The node '" + node.name() + "' is in the scene already.");
        node.nodeName = freeName(node.nodeName, node, entry->parent.get(), false);
        enter(node, entry->parent.get(), entry->position);
    }
    for (const Connection& connection : removal.connections)
        reconnect(connection);
    for (auto entry = removal.nodes.rbegin(); entry != removal.nodes.rend(); ++entry) {
        dirtyPlace(*entry->node);
        tell(*entry->node, true);
    }
}

void Graph::tell(Node& node, bool added)
{
    const auto listeners = observers;
    for (const auto& listener : listeners)
        listener(node, added);
}

void Graph::clear()
{
    const std::unique_ptr<Contents> gone = takeContents();
    for (const Ref<Node>& node : gone->all)
        tell(*node, false);
}

std::unique_ptr<Graph::Contents> Graph::takeContents()
{
    auto taken = std::make_unique<Contents>();
    taken->all = std::move(all);
    taken->worldChildren = std::move(worldChildren);
    taken->modified = modified;
    taken->parts = std::exchange(parts, std::make_unique<Parts>());
    all.clear();
    worldChildren.clear();
    for (const Ref<Node>& node : taken->all)
        node->inScene = false;
    ++changes;
    return taken;
}

void Graph::putContents(std::unique_ptr<Contents> contents)
{
    takeContents();
    all = std::move(contents->all);
    worldChildren = std::move(contents->worldChildren);
    parts = std::move(contents->parts);
    modified = contents->modified;
    contents->all.clear();
    for (const Ref<Node>& node : all)
        node->inScene = true;
    ++changes;
}

void Graph::reparent(DagNode& node, DagNode* parent, std::size_t position)
{
    if (parent && (parent == &node || node.isAncestorOf(*parent)))
        throw Error("Cannot parent '" + node.uniqueName() + "' to itself or below itself.");
    if (parent && parent->isShape())
        throw Error("'" + parent->uniqueName() + "' is a shape and cannot have children.");
    if (node.locked)
        throw Error("Cannot parent '" + node.uniqueName() + "': it is locked.");
    const Ref<DagNode> kept(&node);
    detach(node);
    attach(node, parent, position);
    setName(node, freeName(node.nodeName, node, parent, false));
    dirtyPlace(node);
    ++changes;
    modified = true;
}

} // namespace host
