#include "undo/graphItems.h"

#include "session.h"

#include <algorithm>

namespace host {

std::unique_ptr<PresenceItem> PresenceItem::created(Node& top)
{
    std::unique_ptr<PresenceItem> item(new PresenceItem(top));
    item->wasCreated = true;
    return item;
}

std::unique_ptr<PresenceItem> PresenceItem::removed(Node& top, Graph::Removal removal)
{
    std::unique_ptr<PresenceItem> item(new PresenceItem(top));
    item->gone = std::move(removal);
    return item;
}

void PresenceItem::bringBack(Session& session)
{
    session.graph().restore(gone);
    gone = {};
}

void PresenceItem::takeOut(Session& session)
{
    // A copy of a locked node is locked from the beginning; it can be taken back all the same.
    gone = session.graph().remove(*node, Graph::Locks::kIgnored);
}

void PresenceItem::undo(Session& session)
{
    if (wasCreated)
        takeOut(session);
    else
        bringBack(session);
}

void PresenceItem::redo(Session& session)
{
    if (wasCreated)
        bringBack(session);
    else
        takeOut(session);
}

RenameItem::RenameItem(Node& renamed, std::string oldName)
    : node(&renamed), before(std::move(oldName)), after(renamed.name())
{}

void RenameItem::undo(Session& session)
{
    session.graph().rename(*node, before);
}
void RenameItem::redo(Session& session)
{
    session.graph().rename(*node, after);
}

DagPlace::DagPlace(const DagNode& node) : name(node.name())
{
    if (node.parent())
        parent = Ref<DagNode>(node.parent());
    const auto& siblings = node.parent() ? node.parent()->children() : node.graph().roots();
    const auto found = std::find_if(siblings.begin(), siblings.end(),
                                    [&](const Ref<DagNode>& sibling) { return sibling.get() == &node; });
    position = static_cast<std::size_t>(found - siblings.begin());
}

void DagPlace::apply(Session& session, DagNode& node) const
{
    session.graph().reparent(node, parent.get(), position);
    if (node.name() != name)
        session.graph().rename(node, name);
}

ReparentItem::ReparentItem(DagNode& moved, DagPlace from)
    : node(&moved), before(std::move(from)), after(moved)
{}

void ReparentItem::undo(Session& session)
{
    before.apply(session, *node);
}
void ReparentItem::redo(Session& session)
{
    after.apply(session, *node);
}

void ConnectItem::undo(Session& session)
{
    session.graph().unmake(made.destination);
    for (const Graph::Connection& connection : displaced)
        session.graph().reconnect(connection);
}

void ConnectItem::redo(Session& session)
{
    for (const Graph::Connection& connection : displaced)
        session.graph().unmake(connection.destination);
    session.graph().reconnect(made);
}

void DisconnectItem::undo(Session& session)
{
    session.graph().reconnect(broken);
}
void DisconnectItem::redo(Session& session)
{
    broken = session.graph().disconnect(broken.source, broken.destination);
}

void AttributeItem::bringBack(Session& session)
{
    session.graph().addAttribute(*node, attribute);
    for (const Graph::Connection& connection : connections)
        session.graph().reconnect(connection);
}

void AttributeItem::takeOut(Session& session)
{
    connections = session.graph().removeAttribute(*node, *attribute);
}

void AttributeItem::undo(Session& session)
{
    if (wasRemoved)
        bringBack(session);
    else
        takeOut(session);
}

void AttributeItem::redo(Session& session)
{
    if (wasRemoved)
        takeOut(session);
    else
        bringBack(session);
}

} // namespace host
