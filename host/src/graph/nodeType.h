#pragma once

#include "graph/attribute.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace host {

class Node;
class Plug;

/// What all nodes of one type share: name, inheritance, attributes, what affects what, and the function
/// that computes. Built once by nodes/, owned by the registry, immutable afterwards.
class NodeType : public std::enable_shared_from_this<NodeType> {
public:
    /// Computes one output attribute (a root attribute flagged output) of the node, all its elements, and
    /// stores the result in the node's slots with Node::store...(). Throws host::Error on bad input.
    using Compute = void (*)(Node& node, const Attribute& output);
    /// Called once for each new node, to give it the elements and values a fresh node has.
    using Initialise = void (*)(Node& node);

    /// Called while a value that is not stored, a geometry say, still comes to an input, which is about to
    /// lose it: stores what shall outlive it beside the input, in the same compound.
    using KeepInput = void (*)(const Plug& input);

    std::string name;               ///< "skinCluster"
    const NodeType* base = nullptr; ///< attributes and function types are inherited
    MFn::Type apiType = MFn::kPluginDependNode;
    std::vector<MFn::Type> functionTypes; ///< own additions; base types' are asked too
    bool dag = false;                     ///< lives in the DAG
    bool shape = false;                   ///< a DAG leaf with geometry or a camera, lives under a transform
    bool known = true;       ///< false: not evaluated, only kept (attributes are added as a file names them)
    std::string defaultName; ///< base of automatic names; the type name when empty
    Compute compute = nullptr;
    Initialise initialise = nullptr;
    KeepInput keepInput = nullptr;

    std::vector<Ref<Attribute>> roots; ///< base type's first, in order
    /// input root -> output roots that must be computed again when it (or anything below it) changes.
    std::unordered_map<const Attribute*, std::vector<const Attribute*>> affects;
    /// A DAG type's output that its children's matrices depend on ("worldMatrix"), and the output of a child
    /// that is dirtied when its parent's dagOutput is ("worldMatrix", too; others by affects).
    const Attribute* dagOutput = nullptr;

    /// The outputs to compute again after a change of the root attribute of that childIndex.
    const std::vector<const Attribute*>& affectedBy(unsigned rootIndex) const;
    /// Any attribute, at any depth, by long or short name; null when there is none.
    const Attribute* find(const std::string& longOrShortName) const;
    bool hasFn(MFn::Type type) const;
    bool isA(const std::string& typeName) const;

    // Used while the type is being built, in this order.
    Attribute& add(AttributeSpec spec);
    void affect(const std::string& input, const std::string& output);
    void affectAll(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs);

private:
    friend class NodeTypeRegistry;
    void derive(const NodeType& from);
    void index(const Attribute& attribute);

    std::shared_ptr<const NodeType> baseOwner; ///< handles may keep a type longer than its registry
    std::unordered_map<std::string, const Attribute*> byName;
    std::vector<std::vector<const Attribute*>> affectsByRoot;
};

class NodeTypeRegistry {
public:
    NodeTypeRegistry(); ///< registers every type of nodes/ (see nodes/registerTypes.h)
    ~NodeTypeRegistry();

    const NodeType* find(const std::string& name) const;
    /// The type of that name, or a new unknown one that keeps what it is given. `dag` and `shape` are what
    /// the file's use of the node shows (createNode -p).
    const NodeType& findOrKeep(const std::string& name, bool dag, bool shape);
    /// A new type, derived from a registered base (empty = none).
    NodeType& add(const std::string& name, const std::string& baseName);
    std::vector<std::string> names() const;

private:
    std::map<std::string, std::shared_ptr<NodeType>> types;
};

} // namespace host
