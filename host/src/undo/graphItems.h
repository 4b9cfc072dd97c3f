#pragma once

#include "graph/graph.h"
#include "graph/storedRange.h"
#include "graph/storedValue.h"
#include "undo/undoQueue.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// A node, with its subtree, that has come into the scene or left it.
class PresenceItem final : public UndoItem {
public:
    static std::unique_ptr<PresenceItem> created(Node& top);
    static std::unique_ptr<PresenceItem> removed(Node& top, Graph::Removal removal);
    void undo(Session& session) override;
    void redo(Session& session) override;

private:
    explicit PresenceItem(Node& top) : node(&top) {}
    void bringBack(Session& session);
    void takeOut(Session& session);

    Ref<Node> node;
    Graph::Removal gone;
    bool wasCreated = false;
};

class RenameItem final : public UndoItem {
public:
    RenameItem(Node& renamed, std::string oldName);
    void undo(Session& session) override;
    void redo(Session& session) override;

private:
    Ref<Node> node;
    std::string before, after;
};

/// Where a node hangs in the hierarchy, and its name, which may have got a number on the way.
struct DagPlace {
    explicit DagPlace(const DagNode& node);
    void apply(Session& session, DagNode& node) const;

    Ref<DagNode> parent;
    std::size_t position = 0;
    std::string name;
};

class ReparentItem final : public UndoItem {
public:
    ReparentItem(DagNode& moved, DagPlace from);
    void undo(Session& session) override;
    void redo(Session& session) override;

private:
    Ref<DagNode> node;
    DagPlace before, after;
};

/// What is stored at and below a plug.
class ValueItem final : public UndoItem {
public:
    ValueItem(StoredValue from, StoredValue to) : before(std::move(from)), after(std::move(to)) {}
    void undo(Session&) override { before.putBack(); }
    void redo(Session&) override { after.putBack(); }

private:
    StoredValue before, after;
};

/// What an array holds at some indices.
class RangeItem final : public UndoItem {
public:
    RangeItem(StoredRange from, StoredRange to) : before(std::move(from)), after(std::move(to)) {}
    void undo(Session&) override { before.putBack(); }
    void redo(Session&) override { after.putBack(); }

private:
    StoredRange before, after;
};

/// A flag of a plug: locked, keyable, in the channel box.
class FlagItem final : public UndoItem {
public:
    using Setter = void (Plug::*)(bool) const;
    FlagItem(const Plug& changed, Setter setter, bool from, bool to)
        : plug(changed), set(setter), before(from), after(to)
    {}
    void undo(Session&) override { (plug.*set)(before); }
    void redo(Session&) override { (plug.*set)(after); }

private:
    Plug plug;
    Setter set;
    bool before, after;
};

/// A connection made, and the ones it displaced.
class ConnectItem final : public UndoItem {
public:
    ConnectItem(Graph::Connection connection, std::vector<Graph::Connection> cut)
        : made(std::move(connection)), displaced(std::move(cut))
    {}
    void undo(Session& session) override;
    void redo(Session& session) override;

private:
    Graph::Connection made;
    std::vector<Graph::Connection> displaced;
};

class DisconnectItem final : public UndoItem {
public:
    explicit DisconnectItem(Graph::Connection connection) : broken(std::move(connection)) {}
    void undo(Session& session) override;
    void redo(Session& session) override;

private:
    Graph::Connection broken;
};

/// A dynamic attribute that a node has got or lost, with its connections.
class AttributeItem final : public UndoItem {
public:
    AttributeItem(Node& changed, Ref<Attribute> root) : node(&changed), attribute(std::move(root)) {}
    AttributeItem(Node& changed, Ref<Attribute> root, std::vector<Graph::Connection> cut)
        : node(&changed), attribute(std::move(root)), connections(std::move(cut)), wasRemoved(true)
    {}
    void undo(Session& session) override;
    void redo(Session& session) override;

private:
    void bringBack(Session& session);
    void takeOut(Session& session);

    Ref<Node> node;
    Ref<Attribute> attribute;
    std::vector<Graph::Connection> connections;
    bool wasRemoved = false;
};

} // namespace host
