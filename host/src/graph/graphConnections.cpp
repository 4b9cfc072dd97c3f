#include "graph/connectable.h"
#include "graph/graphParts.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

/// Lists of links stay in the order in which the connections were made, also when one comes back.
void insertInOrder(std::vector<Link*>& links, Link* link)
{
    const auto place = std::upper_bound(links.begin(), links.end(), link,
                                        [](const Link* a, const Link* b) { return a->order < b->order; });
    links.insert(place, link);
}

void erase(std::vector<Link*>& links, Link* link)
{
    links.erase(std::find(links.begin(), links.end(), link));
}

std::uint64_t bitsOfInputs(const NodeState& state, const Attribute& root)
{
    std::uint64_t bits = 0;
    for (const Link* link : state.inputs)
        if (&link->destination.attribute()->root() == &root)
            bits |= link->destination.attribute()->ownBit;
    return bits;
}

/// Gives the plug and what is below it the values that it has by its connection. They are computed first if
/// need be: what a cut leaves behind must not depend on whether somebody has looked.
void keepValue(const Plug& plug, Node& node)
{
    const Attribute& attribute = *plug.attribute();
    if (plug.isArray())
        return;
    if (attribute.type == AttributeType::kCompound) {
        for (unsigned position = 0; position < attribute.children.size(); ++position)
            keepValue(plug.child(position), node);
    } else if (attribute.isNumber()) {
        node.storeNumber(plug, plug.number());
    } else if (attribute.type == AttributeType::kMatrix) {
        node.storeMatrix(plug, plug.matrix());
    } else if (attribute.type == AttributeType::kString) {
        node.storeText(plug, plug.text());
    } else if (attribute.type == AttributeType::kData && attribute.flags.storable) {
        node.storeData(plug, plug.data());
    }
}

/// Whether the node at the end stores something in place of what it is fed.
bool keepsItsOwn(const Plug& destination)
{
    const Attribute& attribute = *destination.attribute();
    return attribute.type == AttributeType::kData && !attribute.flags.storable && attribute.parent &&
           destination.node()->type().keepInput;
}

void keepDelivered(const Plug& destination)
{
    try {
        keepValue(destination, *destination.node());
        if (keepsItsOwn(destination))
            destination.node()->type().keepInput(destination);
    } catch (const Error&) {
        // A source that cannot be computed leaves the destination with the value it had before.
    }
}

} // namespace

void Graph::requireConnectable(const Plug& source, const Plug& destination) const
{
    source.alive();
    destination.alive();
    const auto refuse = [&](const std::string& why) {
        throw Error("Cannot connect '" + source.name() + "' to '" + destination.name() + "': " + why);
    };
    if (source == destination)
        refuse("they are the same.");
    if (!source.isResolved() || !destination.isResolved())
        refuse("an index is missing.");
    const Attribute& from = *source.attribute();
    const Attribute& to = *destination.attribute();
    if (!from.flags.readable || !from.flags.connectable)
        refuse("the source is not readable.");
    if (!to.flags.writable || !to.flags.connectable || to.root().flags.output)
        refuse("the destination is not writable.");
    if (source.isArray() != destination.isArray())
        refuse("only one of them is an array.");
    if (!isConnectable(from, to))
        refuse("their types do not go together.");
    if (destination.isLocked())
        refuse("the destination is locked.");
}

void Graph::connect(const Plug& source, const Plug& destination, bool force)
{
    requireConnectable(source, destination);
    if (destination.source() == source)
        return;
    std::vector<Link*> inTheWay = linksBelow(destination);
    const auto& byDestination = destination.node()->state().byDestination;
    for (Plug step = destination.ancestor(); !step.isNull(); step = step.ancestor()) {
        const auto found = byDestination.find(PlugKey(step));
        if (found != byDestination.end())
            inTheWay.push_back(found->second);
    }
    if (!inTheWay.empty() && !force)
        throw Error("'" + inTheWay.front()->destination.name() +
                    "' already has an incoming connection from '" + inTheWay.front()->source.name() + "'.");
    for (Link* link : inTheWay)
        cut(*link);
    add({source, destination});
}

Graph::Connection Graph::disconnect(const Plug& source, const Plug& destination)
{
    source.alive();
    const auto& byDestination = destination.alive().state().byDestination;
    const auto found = byDestination.find(PlugKey(destination));
    if (found == byDestination.end() || found->second->source != source)
        throw Error("'" + source.name() + "' is not connected to '" + destination.name() + "'.");
    if (destination.isLocked())
        throw Error("Cannot disconnect '" + destination.name() + "': it is locked.");
    return cutAll({{found->second, Afterwards::kDelivered}}).front();
}

void Graph::unmake(const Plug& destination)
{
    const auto& byDestination = destination.alive().state().byDestination;
    const auto found = byDestination.find(PlugKey(destination));
    if (found != byDestination.end())
        cut(*found->second);
}

void Graph::reconnect(const Connection& connection)
{
    connection.source.alive();
    connection.destination.alive();
    for (Link* link : linksBelow(connection.destination))
        cut(*link);
    if (connection.hidden)
        connection.hidden->putBackQuietly();
    add(connection);
}

void Graph::add(Connection connection)
{
    if (connection.order == 0)
        connection.order = parts->nextLink++;
    auto owned = std::make_unique<Link>();
    Link* link = owned.get();
    *link = Link{connection.source, connection.destination, connection.order};
    parts->links[link->order] = std::move(owned);
    NodeState& from = link->source.node()->state();
    NodeState& to = link->destination.node()->state();
    insertInOrder(from.outputs, link);
    insertInOrder(to.inputs, link);
    to.byDestination[PlugKey(link->destination)] = link;
    ++from.root(link->source.attribute()->root()).fed;
    RootState& into = to.root(link->destination.attribute()->root());
    ++into.feeding;
    into.feedingBits |= link->destination.attribute()->ownBit;
    dirty(link->destination);
}

/// Every value that stays is looked up while all connections still stand: each may depend on the others.
std::vector<Graph::Connection> Graph::cutAll(const std::vector<std::pair<Link*, Afterwards>>& cuts)
{
    std::vector<Connection> gone;
    for (const auto& [link, afterwards] : cuts) {
        gone.push_back(describe(*link));
        if (afterwards == Afterwards::kDelivered && !link->destination.isArray())
            gone.back().hidden = std::make_shared<StoredValue>(
                keepsItsOwn(link->destination) ? link->destination.parent() : link->destination);
    }
    for (const auto& [link, afterwards] : cuts)
        if (afterwards == Afterwards::kDelivered)
            keepDelivered(link->destination);
    for (const auto& entry : cuts)
        cut(*entry.first);
    return gone;
}

void Graph::cut(Link& link)
{
    const Plug destination = link.destination;
    NodeState& from = link.source.node()->state();
    NodeState& to = destination.node()->state();
    erase(from.outputs, &link);
    erase(to.inputs, &link);
    to.byDestination.erase(PlugKey(destination));
    --from.root(link.source.attribute()->root()).fed;
    const Attribute& root = destination.attribute()->root();
    --to.root(root).feeding;
    to.root(root).feedingBits = bitsOfInputs(to, root);
    parts->links.erase(link.order);
    dirty(destination);
}

Graph::Connection Graph::describe(const Link& link) const
{
    return {link.source, link.destination, link.order};
}

std::vector<Link*> Graph::linksBelow(const Plug& plug) const
{
    std::vector<Link*> result;
    const NodeState& state = plug.node()->state();
    const RootState* root = state.findRoot(plug.attribute()->root());
    if (!root || root->feeding == 0)
        return result;
    for (Link* link : state.inputs)
        if (link->destination.isBelow(plug))
            result.push_back(link);
    return result;
}

Graph::Connection Graph::connectionInto(const Plug& destination) const
{
    const auto& links = destination.alive().state().byDestination;
    const auto found = links.find(PlugKey(destination));
    return found == links.end() ? Connection() : describe(*found->second);
}

std::uint32_t Graph::nextAvailable(const Plug& array) const
{
    const std::vector<std::uint32_t> indices = array.existingIndices();
    return indices.empty() ? 0 : indices.back() + 1;
}

std::vector<Graph::Connection> Graph::inputs(const Node& node) const
{
    std::vector<Connection> result;
    for (const Link* link : node.state().inputs)
        result.push_back(describe(*link));
    return result;
}

std::vector<Graph::Connection> Graph::outputs(const Node& node) const
{
    std::vector<Connection> result;
    for (const Link* link : node.state().outputs)
        result.push_back(describe(*link));
    return result;
}

std::vector<Graph::Connection> Graph::connections() const
{
    std::vector<Connection> result;
    for (const auto& entry : parts->links)
        result.push_back(describe(*entry.second));
    return result;
}

Plug Graph::source(const Plug& destination) const
{
    return destination.source();
}

std::vector<Plug> Graph::destinations(const Plug& source) const
{
    return source.destinations();
}

bool Graph::isFed(const Plug& plug) const
{
    return plug.isFed();
}

} // namespace host
