#pragma once

#include "graph/nodeType.h"
#include "graph/plug.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace host {

class DagNode;
class Graph;
class SlotTree;   ///< the node's values (graph/slots.h)
struct NodeState; ///< its links, flags and freshness (graph/nodeState.h)

/// A node of the scene. Made, renamed, deleted and connected only by Graph; its values change through Plug
/// (unrecorded) or Edits (recorded).
class Node : public Object {
public:
    Node(Graph& graph, const NodeType& type);

    const NodeType& type() const { return nodeType; }
    Graph& graph() const { return scene; } ///< valid while alive()
    /// Name with its namespace and without a DAG path: "rig:joint1". Unique among non-DAG nodes; DAG nodes
    /// are unique among their siblings.
    const std::string& name() const { return nodeName; }
    /// Shortest name or path that finds just this node.
    std::string uniqueName() const;
    const std::string& uuid() const { return nodeUuid; }

    bool alive() const override { return inScene; }
    MFn::Type apiType() const override { return nodeType.apiType; }
    bool hasFn(MFn::Type type) const override { return nodeType.hasFn(type); }
    DagNode* asDag();
    const DagNode* asDag() const;

    /// Static or dynamic attribute, any depth, by long or short name; null when there is none.
    const Attribute* findAttribute(const std::string& longOrShortName) const;
    /// Whether the attribute is one of this node's, or below one.
    bool owns(const Attribute& attribute) const;
    /// The plug of an attribute by name, no index chosen; throws host::Error naming node and attribute.
    Plug plug(const std::string& longOrShortName);
    /// A plug by path: "worldMatrix[0]", "input[1].groupId", an alias, short or long names. Throws.
    Plug plugByPath(const std::string& path);
    const std::vector<Ref<Attribute>>& dynamicAttributes() const { return dynamicRoots; }

    /// Aliases in the order they were made: alias and attribute path ("weight[3]").
    std::vector<std::pair<std::string, std::string>> aliases;
    bool locked = false;         ///< lockNode: no deleting, renaming, adding of attributes
    bool isDefault = false;      ///< exists in every scene (":initialShadingGroup", "persp"): not deletable
    bool shared = false;         ///< made by createNode -shared: opening a file makes it once, whoever asks
    bool isIntermediate() const; ///< a DAG object that is only history (intermediateObject)
    /// File statements about this node that the host keeps as text, in file order, without the node name
    /// ("setAttr \".foo\" 3"); written back by the scene writer.
    std::vector<std::string> keptStatements;

    // For compute functions: the node's own values, no evaluation of other outputs, no dirty propagation.
    // store... puts a computed value into an output's slot.
    void storeNumber(const Plug& plug, double value);
    void storeText(const Plug& plug, const std::string& value);
    void storeMatrix(const Plug& plug, const Imath::M44d& value);
    void storeData(const Plug& plug, DataRef value);
    /// Brings one output up to date (does nothing when clean).
    void evaluate(const Attribute& output);
    bool isDirty(const Attribute& output) const;

    SlotTree& slots() const { return *values; }
    NodeState& state() const { return *bookkeeping; }

protected:
    ~Node() override;

private:
    friend class Graph;
    friend class Plug;
    void evaluateAlone(const Attribute& root);
    void compute(const Attribute& output);

    const NodeType& nodeType;
    std::shared_ptr<const NodeType> typeOwner; ///< a handle may outlive the registry
    Graph& scene;
    std::string nodeName;
    std::string nodeUuid;
    bool inScene = false;
    std::vector<Ref<Attribute>> dynamicRoots;
    std::unique_ptr<SlotTree> values;
    std::unique_ptr<NodeState> bookkeeping;
};

/// A node with a place in the DAG. Instancing is refused, so a node has one parent and one path.
class DagNode final : public Node {
public:
    using Node::Node;
    DagNode* parent() const { return parentNode; } ///< null under the world
    const std::vector<Ref<DagNode>>& children() const { return childNodes; }
    std::string fullPath() const;    ///< "|a|b|bShape"
    std::string partialPath() const; ///< shortest unique path
    unsigned depth() const;          ///< nodes on the path: 1 for a child of the world
    bool isShape() const { return type().shape; }
    bool isAncestorOf(const DagNode& other) const;

private:
    friend class Graph;
    DagNode* parentNode = nullptr;
    std::vector<Ref<DagNode>> childNodes;
};

} // namespace host
