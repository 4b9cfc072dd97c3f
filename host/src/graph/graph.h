#pragma once

#include "graph/node.h"

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace host {

class Session;
class StoredValue;
struct Link;

/// All nodes of a scene, their names, connections and DAG order. Raw operations: they take effect at once
/// and are not recorded; undo/edits.h wraps them. Everything throws host::Error and then has changed nothing.
class Graph {
public:
    explicit Graph(Session& session);
    ~Graph();

    Session& session() const { return owner; }
    NodeTypeRegistry& types() { return registry; }

    // --- nodes
    /// A new node in the scene. An empty name gives the type's default name with a number; a taken name gets
    /// a number ("body1"). DAG nodes go under `parent` (null = world). A known shape type with a null parent
    /// gets a transform of its own first, as createNode does; the shape is returned.
    Node& create(const NodeType& type, const std::string& name = {}, DagNode* parent = nullptr);
    /// Takes a node out of the scene: its connections are cut and its DAG subtree goes with it. Returns what
    /// is needed to bring it all back (see Removal).
    struct Connection {
        Plug source, destination;
        std::uint64_t order = 0; ///< place among all connections; 0 = made anew when it is connected
        /// Of one that was cut: what the destination itself held meanwhile, hidden by the connection.
        std::shared_ptr<const StoredValue> hidden = nullptr;
    };
    struct Removal {
        struct Entry {
            Ref<Node> node;
            Ref<DagNode> parent;      ///< null = world or no DAG node
            std::size_t position = 0; ///< among the parent's children
        };
        std::vector<Entry> nodes; ///< in the order in which they were removed
        std::vector<Connection> connections;
    };
    enum class Locks { kObeyed, kIgnored };
    Removal remove(Node& node, Locks locks = Locks::kObeyed);
    void restore(const Removal& removal);
    void rename(Node& node, const std::string& name); ///< the final name may carry a number
    void setUuid(Node& node, const std::string& uuid);
    const std::vector<Ref<Node>>& nodes() const { return all; } ///< in creation order
    void clear(); ///< empties the scene (file -new), defaults stay out

    /// The whole scene taken out, to be put back as it was: the same objects in the same order. Its nodes
    /// are not alive meanwhile. No observer is told.
    class Contents;
    std::unique_ptr<Contents> takeContents();
    /// Drops what is in the scene now.
    void putContents(std::unique_ptr<Contents> contents);

    // --- namespaces, as prefixes of names ("a:b:node"); nodes may be made in one that does not exist yet
    std::vector<std::string> namespaces() const;

    // --- look-up
    /// By unique name, partial or full DAG path, uuid; null when missing; throws when ambiguous.
    Node* find(const std::string& nameOrPath) const;
    /// All nodes that a name or path without wild cards fits.
    std::vector<Node*> findAll(const std::string& nameOrPath) const;
    Node& get(const std::string& nameOrPath) const; ///< throws `No object matches name: x`
    /// All matches of a pattern with * and ?, in creation order; plain names match in the root namespace
    /// (or in any when `anyNamespace`). DAG paths with wild cards are matched part by part.
    std::vector<Node*> match(const std::string& pattern, bool anyNamespace = false) const;
    /// "node.attr[2].child"; throws naming what is missing.
    Plug plug(const std::string& text) const;

    // --- connections (one source per destination)
    void connect(const Plug& source, const Plug& destination, bool force = false);
    /// The destination keeps the value that the connection gave it. Returns what is needed to reconnect.
    Connection disconnect(const Plug& source, const Plug& destination);
    /// Brings a connection back with its place in the order, and what it hid; what fed the destination in
    /// between is cut.
    void reconnect(const Connection& connection);
    /// Undoes a connection: the destination has its own value again, not the last one delivered.
    void unmake(const Plug& destination);
    /// The connection into exactly this plug; a null destination when there is none.
    Connection connectionInto(const Plug& destination) const;
    /// The lowest logical index of an array from which on nothing exists (connectAttr -nextAvailable).
    std::uint32_t nextAvailable(const Plug& array) const;
    /// Connections into / out of the node, in the order they were made.
    std::vector<Connection> inputs(const Node& node) const;
    std::vector<Connection> outputs(const Node& node) const;
    std::vector<Connection> connections() const; ///< all, in the order they were made
    Plug source(const Plug& destination) const;
    std::vector<Plug> destinations(const Plug& source) const;
    bool isFed(const Plug& plug) const;

    // --- DAG
    const std::vector<Ref<DagNode>>& roots() const { return worldChildren; }
    void reparent(DagNode& node, DagNode* parent, std::size_t position = static_cast<std::size_t>(-1));

    // --- dynamic attributes
    void addAttribute(Node& node, Ref<Attribute> root);
    /// Returns the connections that went with it.
    std::vector<Connection> removeAttribute(Node& node, const Attribute& root);
    /// An attribute that only a file named: kept as text, connectable. `path` is the text after the dot.
    /// "name[3]" makes an array attribute; a longer path becomes one attribute with the path as its name.
    Plug keepAttribute(Node& node, const std::string& path);

    // --- change
    /// Marks all outputs that depend on the plug dirty, here and along connections and the DAG.
    void dirty(const Plug& plug);
    /// Warns, once per attribute, that a value depends on itself; the reader goes on with the old value.
    void reportCycle(const Plug& plug);
    /// Counts every change of the scene; caches compare it.
    std::uint64_t changeCount() const { return changes; }
    void touchChange() { ++changes; }
    bool modified = false; ///< unsaved changes

    /// Called after a node has left (deleted) or come back into the scene; for selection, tools, sets.
    std::vector<std::function<void(Node&, bool added)>> observers;

private:
    struct Parts;
    friend class Node;
    friend class DagNode;

    Ref<Node> make(const NodeType& type);
    void enter(Node& node, DagNode* parent, std::size_t position);
    void leave(Node& node);
    void attach(DagNode& node, DagNode* parent, std::size_t position);
    void detach(DagNode& node);
    std::size_t positionOf(const DagNode& node) const;
    void setName(Node& node, const std::string& name);
    std::string freeName(const std::string& wish, const Node& node, const DagNode* parent,
                         bool anywhere) const;
    bool isTaken(const std::string& name, const Node& node, const DagNode* parent, bool anywhere) const;
    std::string newUuid();
    void tell(Node& node, bool added);
    void dirtyPlace(Node& node);
    DagNode& ownTransform(const NodeType& shape, const std::string& shapeName);

    Connection describe(const Link& link) const;
    std::vector<Link*> linksBelow(const Plug& plug) const;
    void requireConnectable(const Plug& source, const Plug& destination) const;
    void add(Connection connection);
    enum class Afterwards { kOwnValue, kDelivered }; ///< what the destination of a cut connection holds
    void cut(Link& link);
    std::vector<Connection> cutAll(const std::vector<std::pair<Link*, Afterwards>>& cuts);
    void arrive(const Plug& destination);
    void passOn(Node& node, const Attribute& root, const Plug* changed);
    void markAffected(Node& node, const Attribute& root);
    Ref<Attribute> keptAttribute(const std::string& name) const;
    void mark(Node& node, const Attribute& output);
    void propagate();
    /// Brings up to date what an output is computed from, without nesting one computation in the other.
    void pull(Node& node, const Attribute& output);

    Session& owner;
    NodeTypeRegistry registry;
    std::vector<Ref<Node>> all;
    std::vector<Ref<DagNode>> worldChildren;
    std::unique_ptr<Parts> parts;
    std::uint64_t changes = 0;
    /// Counts the starts and ends of computations: while it stands, no output has come up to date.
    std::uint64_t computations = 1;
};

class Graph::Contents {
public:
    Contents();
    ~Contents();
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;

private:
    friend class Graph;
    std::vector<Ref<Node>> all;
    std::vector<Ref<DagNode>> worldChildren;
    std::unique_ptr<Parts> parts;
    bool modified = false;
};

} // namespace host
