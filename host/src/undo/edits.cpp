#include "undo/edits.h"

#include "graph/slots.h"
#include "session.h"
#include "types/error.h"
#include "undo/undoQueue.h"

#include <optional>
#include <utility>

namespace host {

namespace {

/// A value written to one plug. Taking it back puts the old value in place, or nothing where there was none
/// (an element that did not exist reads its default again).
template <class T>
class ValueItem final : public UndoItem {
public:
    using Write = void (Plug::*)(T) const;
    using Stored = std::decay_t<T>;

    ValueItem(Plug where, bool hadValue, Stored valueBefore, Stored valueAfter, Write writeValue)
        : plug(std::move(where)), existed(hadValue), before(std::move(valueBefore)),
          after(std::move(valueAfter)), write(writeValue)
    {
    }
    void undo(Session&) override
    {
        if (existed)
            (plug.*write)(before);
        else
            plug.unset();
    }
    void redo(Session&) override { (plug.*write)(after); }

private:
    Plug plug;
    bool existed;
    Stored before, after;
    Write write;
};

template <class T, class Value>
std::unique_ptr<UndoItem> valueItem(const Plug& plug, bool existed, Value before, Value after,
                                    void (Plug::*write)(T) const)
{
    return std::make_unique<ValueItem<T>>(plug, existed, std::move(before), std::move(after), write);
}

/// A node made: undone by removing it, redone by bringing the same node back.
class CreationItem final : public UndoItem {
public:
    explicit CreationItem(Node& made) : node(&made) {}
    void undo(Session& session) override { removal = session.graph().remove(*node); }
    void redo(Session& session) override { session.graph().restore(removal); }

private:
    Ref<Node> node;
    Graph::Removal removal;
};

class RemovalItem final : public UndoItem {
public:
    RemovalItem(Node& removed, Graph::Removal record) : node(&removed), removal(std::move(record)) {}
    void undo(Session& session) override { session.graph().restore(removal); }
    void redo(Session& session) override { removal = session.graph().remove(*node); }

private:
    Ref<Node> node;
    Graph::Removal removal;
};

/// The plug whose slot holds everything below `plug`: the array itself for elements of number arrays and for
/// whatever lies in weight rows.
Plug slotOwner(Plug plug)
{
    const Attribute* outer = plug.attribute();
    while (outer && !outer->flags.weightRows)
        outer = outer->parent;
    if (outer)
        return Plug(plug.node(), outer);
    return plug.isElement() && isNumericArray(*plug.attribute()) ? plug.array() : plug;
}

/// The stored values below one plug, before and after a change.
class SubtreeItem final : public UndoItem {
public:
    explicit SubtreeItem(const Plug& below) : plug(slotOwner(below)), before(take()) {}
    void undo(Session&) override { exchange(before, after); }
    void redo(Session&) override { exchange(after, before); }
    void putBack() { put(before); }

private:
    using Stored = std::optional<Slot>;

    Stored take() const
    {
        const Slot* slot = std::as_const(plug.node()->slots()).find(plug);
        return slot ? Stored(slot->copy()) : std::nullopt;
    }
    void put(Stored& values)
    {
        if (values)
            plug.node()->slots().make(plug) = std::move(*values);
        else
            plug.node()->slots().erase(plug);
        values.reset();
        plug.changed();
    }
    void exchange(Stored& wanted, Stored& other)
    {
        other = take();
        put(wanted);
    }

    Plug plug;
    Stored before, after;
};

} // namespace

void Edits::replaceBelow(const Plug& plug, const std::function<void()>& change)
{
    auto item = std::make_unique<SubtreeItem>(plug);
    try {
        change();
    } catch (...) {
        item->putBack();
        throw;
    }
    push(std::move(item));
}

void Edits::push(std::unique_ptr<UndoItem> item)
{
    owner.graph().modified = true;
    owner.undo().push(std::move(item));
}

void Edits::perform(std::function<void(Session&)> again, std::function<void(Session&)> back)
{
    again(owner);
    push(std::make_unique<UndoCall>(std::move(back), std::move(again)));
}

Node& Edits::create(const NodeType& type, const std::string& name, DagNode* parent)
{
    Node& node = owner.graph().create(type, name, parent);
    // A shape made without a parent brought its transform along; taking that out takes both out.
    DagNode* dag = node.asDag();
    const bool ownTransform = dag && dag->isShape() && !parent && dag->parent();
    push(std::make_unique<CreationItem>(ownTransform ? *dag->parent() : node));
    return node;
}

void Edits::remove(Node& node)
{
    const Ref<Node> keep(&node);
    push(std::make_unique<RemovalItem>(node, owner.graph().remove(node)));
}

void Edits::rename(Node& node, const std::string& name)
{
    const Ref<Node> keep(&node);
    const std::string before = node.name();
    perform([keep, name](Session& session) { session.graph().rename(*keep, name); },
            [keep, before](Session& session) { session.graph().rename(*keep, before); });
}

void Edits::reparent(DagNode& node, DagNode* parent)
{
    const Ref<DagNode> keep(&node), target(parent), before(node.parent());
    const std::string name = node.name();
    const auto& siblings = before ? before->children() : owner.graph().roots();
    std::size_t position = 0;
    while (position < siblings.size() && siblings[position] != keep)
        ++position;
    perform([keep, target](Session& session) { session.graph().reparent(*keep, target.get()); },
            [keep, before, position, name](Session& session) {
                session.graph().reparent(*keep, before.get(), position);
                if (keep->name() != name)
                    session.graph().rename(*keep, name);
            });
}

void Edits::setNumber(const Plug& plug, double value)
{
    const bool existed = plug.exists();
    const double before = existed ? plug.number() : 0.0;
    plug.setNumber(value);
    push(valueItem(plug, existed, before, value, &Plug::setNumber));
}

void Edits::setText(const Plug& plug, const std::string& value)
{
    const bool existed = plug.exists();
    std::string before = existed ? plug.text() : std::string();
    plug.setText(value);
    push(valueItem(plug, existed, std::move(before), value, &Plug::setText));
}

void Edits::setMatrix(const Plug& plug, const Imath::M44d& value)
{
    const bool existed = plug.exists();
    const Imath::M44d before = existed ? plug.matrix() : Imath::M44d();
    plug.setMatrix(value);
    push(valueItem(plug, existed, before, value, &Plug::setMatrix));
}

void Edits::setData(const Plug& plug, DataRef value)
{
    const bool existed = plug.exists();
    DataRef before = existed ? plug.data() : DataRef();
    plug.setData(value);
    push(valueItem(plug, existed, std::move(before), std::move(value), &Plug::setData));
}

void Edits::setLocked(const Plug& plug, bool locked)
{
    const bool before = plug.isLocked();
    perform([plug, locked](Session&) { plug.setLocked(locked); },
            [plug, before](Session&) { plug.setLocked(before); });
}

void Edits::setKeyable(const Plug& plug, bool keyable)
{
    const bool before = plug.isKeyable();
    perform([plug, keyable](Session&) { plug.setKeyable(keyable); },
            [plug, before](Session&) { plug.setKeyable(before); });
}

void Edits::setChannelBox(const Plug& plug, bool shown)
{
    const bool before = plug.isInChannelBox();
    perform([plug, shown](Session&) { plug.setChannelBox(shown); },
            [plug, before](Session&) { plug.setChannelBox(before); });
}

void Edits::unset(const Plug& plug)
{
    replaceBelow(plug, [&plug] { plug.unset(); });
}

void Edits::connect(const Plug& source, const Plug& destination, bool force)
{
    const Plug before = destination.source();
    perform([source, destination, force](Session& session) {
        session.graph().connect(source, destination, force);
    },
            [source, destination, before](Session& session) {
                session.graph().disconnect(source, destination);
                if (!before.isNull())
                    session.graph().connect(before, destination);
            });
}

void Edits::disconnect(const Plug& source, const Plug& destination)
{
    perform([source, destination](Session& session) { session.graph().disconnect(source, destination); },
            [source, destination](Session& session) { session.graph().connect(source, destination); });
}

void Edits::addAttribute(Node& node, Ref<Attribute> root)
{
    const Ref<Node> keep(&node);
    perform([keep, root](Session& session) { session.graph().addAttribute(*keep, root); },
            [keep, root](Session& session) { session.graph().removeAttribute(*keep, *root); });
}

void Edits::removeAttribute(Node& node, const Attribute& root)
{
    const Ref<Node> keep(&node);
    Ref<Attribute> same;
    for (const Ref<Attribute>& each : node.dynamicAttributes())
        if (each.get() == &root)
            same = each;
    if (!same)
        throw Error("The attribute " + root.longName + " of " + node.uniqueName() + " is not dynamic.");
    replaceBelow(Plug(&node, same.get()), [] {}); // its values come back after the attribute has
    perform([keep, same](Session& session) { session.graph().removeAttribute(*keep, *same); },
            [keep, same](Session& session) { session.graph().addAttribute(*keep, same); });
}

void Edits::setAliases(Node& node, std::vector<std::pair<std::string, std::string>> aliases)
{
    const Ref<Node> keep(&node);
    perform([keep, aliases = std::move(aliases)](Session&) { keep->aliases = aliases; },
            [keep, before = node.aliases](Session&) { keep->aliases = before; });
}

void Edits::setNodeLocked(Node& node, bool locked)
{
    const Ref<Node> keep(&node);
    perform([keep, locked](Session&) { keep->locked = locked; },
            [keep, before = node.locked](Session&) { keep->locked = before; });
}

} // namespace host
