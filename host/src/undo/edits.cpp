#include "undo/edits.h"

#include "session.h"
#include "types/error.h"
#include "undo/graphItems.h"

#include <algorithm>

namespace host {

void Edits::push(std::unique_ptr<UndoItem> item)
{
    owner.undo().push(std::move(item));
}

Node& Edits::create(const NodeType& type, const std::string& name, DagNode* parent)
{
    Node& node = owner.graph().create(type, name, parent);
    // A shape without a parent has brought a transform of its own.
    const DagNode* dag = node.asDag();
    Node& top = dag && !parent && dag->parent() ? static_cast<Node&>(*dag->parent()) : node;
    push(PresenceItem::created(top));
    return node;
}

void Edits::made(Node& top)
{
    push(PresenceItem::created(top));
}

void Edits::remove(Node& node)
{
    const Ref<Node> kept(&node);
    Graph::Removal removal = owner.graph().remove(node);
    push(PresenceItem::removed(node, std::move(removal)));
}

void Edits::rename(Node& node, const std::string& name)
{
    const std::string before = node.name();
    owner.graph().rename(node, name);
    push(std::make_unique<RenameItem>(node, before));
}

void Edits::reparent(DagNode& node, DagNode* parent)
{
    const DagPlace before(node);
    owner.graph().reparent(node, parent);
    push(std::make_unique<ReparentItem>(node, before));
}

template <class Change>
void Edits::record(const Plug& plug, const Change& change)
{
    if (!owner.undo().recording() || plug.isNull() || !plug.node()->alive()) {
        change();
        return;
    }
    StoredValue before(plug);
    change();
    push(std::make_unique<ValueItem>(std::move(before), StoredValue(plug)));
}

void Edits::setNumber(const Plug& plug, double value)
{
    record(plug, [&] { plug.setNumber(value); });
}

void Edits::setText(const Plug& plug, const std::string& value)
{
    record(plug, [&] { plug.setText(value); });
}

void Edits::setMatrix(const Plug& plug, const Imath::M44d& value)
{
    record(plug, [&] { plug.setMatrix(value); });
}

void Edits::setData(const Plug& plug, DataRef value)
{
    record(plug, [&] { plug.setData(std::move(value)); });
}

void Edits::unset(const Plug& plug)
{
    record(plug, [&] { plug.unset(); });
}

void Edits::replaceBelow(const Plug& plug, const std::function<void()>& change)
{
    if (plug.isNull() || !plug.node()->alive())
        throw Error("The values of a deleted node cannot be changed.");
    StoredValue before(plug);
    try {
        change();
    } catch (...) {
        before.putBack();
        throw;
    }
    if (owner.undo().recording())
        push(std::make_unique<ValueItem>(std::move(before), StoredValue(plug)));
}

void Edits::replaceElements(const Plug& array, std::vector<std::uint32_t> indices,
                            const std::function<void()>& change)
{
    if (array.isNull() || !array.node()->alive())
        throw Error("The values of a deleted node cannot be changed.");
    StoredRange before(array, indices);
    try {
        change();
    } catch (...) {
        before.putBack();
        throw;
    }
    if (owner.undo().recording())
        push(std::make_unique<RangeItem>(std::move(before), StoredRange(array, std::move(indices))));
}

void Edits::setLocked(const Plug& plug, bool locked)
{
    const bool before = plug.isLockedItself();
    plug.setLocked(locked);
    push(std::make_unique<FlagItem>(plug, &Plug::setLocked, before, locked));
}

void Edits::setKeyable(const Plug& plug, bool keyable)
{
    const bool before = plug.isKeyable();
    plug.setKeyable(keyable);
    push(std::make_unique<FlagItem>(plug, &Plug::setKeyable, before, keyable));
}

void Edits::setChannelBox(const Plug& plug, bool shown)
{
    const bool before = plug.isInChannelBox();
    plug.setChannelBox(shown);
    push(std::make_unique<FlagItem>(plug, &Plug::setChannelBox, before, shown));
}

void Edits::connect(const Plug& source, const Plug& destination, bool force)
{
    Graph& graph = owner.graph();
    std::vector<Graph::Connection> before;
    if (force && !destination.isNull())
        before = graph.inputs(*destination.node());
    if (!destination.isNull() && destination.node()->alive() && destination.source() == source)
        return;
    graph.connect(source, destination, force);
    const auto stands = [&](const Graph::Connection& connection) {
        return graph.connectionInto(connection.destination).order == connection.order;
    };
    before.erase(std::remove_if(before.begin(), before.end(), stands), before.end());
    push(std::make_unique<ConnectItem>(graph.connectionInto(destination), std::move(before)));
}

void Edits::disconnect(const Plug& source, const Plug& destination)
{
    push(std::make_unique<DisconnectItem>(owner.graph().disconnect(source, destination)));
}

void Edits::addAttribute(Node& node, Ref<Attribute> root)
{
    owner.graph().addAttribute(node, root);
    push(std::make_unique<AttributeItem>(node, std::move(root)));
}

void Edits::removeAttribute(Node& node, const Attribute& root)
{
    const auto& own = node.dynamicAttributes();
    const auto found = std::find_if(
        own.begin(), own.end(), [&](const Ref<Attribute>& candidate) { return candidate.get() == &root; });
    const Ref<Attribute> kept = found == own.end() ? Ref<Attribute>() : *found;
    std::vector<Graph::Connection> cut = owner.graph().removeAttribute(node, root);
    push(std::make_unique<AttributeItem>(node, kept, std::move(cut)));
}

void Edits::setAliases(Node& node, std::vector<std::pair<std::string, std::string>> aliases)
{
    const Ref<Node> kept(&node);
    auto before = node.aliases;
    perform(
        [kept, aliases](Session& session) {
            kept->aliases = aliases;
            session.graph().touchChange();
        },
        [kept, before](Session& session) {
            kept->aliases = before;
            session.graph().touchChange();
        });
}

void Edits::setNodeLocked(Node& node, bool locked)
{
    const Ref<Node> kept(&node);
    const bool before = node.locked;
    perform([kept, locked](Session&) { kept->locked = locked; },
            [kept, before](Session&) { kept->locked = before; });
}

void Edits::perform(std::function<void(Session&)> again, std::function<void(Session&)> back)
{
    again(owner);
    push(std::make_unique<UndoCall>(std::move(back), std::move(again)));
}

} // namespace host
