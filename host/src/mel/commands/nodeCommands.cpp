#include "mel/commands/nodeCommands.h"

#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/geometryCommands.h"
#include "mel/commands/plugArguments.h"
#include "mel/commands/register.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

Value createNode(Session& session, const Args& args)
{
    Graph& graph = session.graph();
    const std::string type = args.objects().front().toString();
    const NodeType* const known = graph.types().find(type);
    if (!known || !known->known)
        throw Error("Unknown object type: " + type);
    const std::string name = args.textOr("name", {});
    if (args.isSet("shared") && !name.empty() && graph.find(name))
        return std::string();
    DagNode* parent = nullptr;
    if (args.isSet("parent")) {
        parent = graph.get(args.text("parent")).asDag();
        if (!parent || !known->dag)
            throw Error("createNode: " + args.text("parent") + " cannot be the parent of a " + type + ".");
    }
    Node& node = session.edits().create(*known, name, parent);
    if (!args.isSet("skipSelect"))
        selectOnly(session, node);
    return node.uniqueName();
}

void renameWithShapes(Session& session, Node& node, const std::string& name, bool shapesToo)
{
    const std::string before = node.name();
    session.edits().rename(node, name);
    const DagNode* const dag = node.asDag();
    if (!dag || dag->isShape() || !shapesToo)
        return;
    const std::vector<Ref<DagNode>> children = dag->children();
    for (const Ref<DagNode>& child : children) {
        if (child->isShape() &&
            (child->name() == customaryShapeName(before) || child->name() == before + "Shape"))
            session.edits().rename(*child, customaryShapeName(node.name()));
    }
}

Value rename(Session& session, const Args& args)
{
    const std::vector<std::string> names = args.objectNames();
    const std::vector<Node*> nodes = nodesOrSelection(session, {names.begin(), names.end() - 1});
    const bool many = nodes.size() > 1;
    Value last;
    const std::vector<Ref<Node>> held(nodes.begin(), nodes.end());
    for (const Ref<Node>& node : held) {
        renameWithShapes(session, *node, names.back(), !args.isSet("ignoreShape"));
        last = node->uniqueName();
    }
    return many ? Value(static_cast<int>(held.size())) : last;
}

Value lockNode(Session& session, const Args& args)
{
    const std::vector<Node*> nodes = nodesOrSelection(session, args.objectNames());
    if (args.query()) {
        mel::IntArray states;
        for (const Node* const node : nodes)
            states.push_back(node->locked ? 1 : 0);
        return states;
    }
    for (Node* const node : nodes)
        session.edits().setNodeLocked(*node, args.booleanOr("lock", true));
    return {};
}

} // namespace

std::string customaryShapeName(const std::string& transform)
{
    std::size_t digits = transform.size();
    while (digits > 0 && transform[digits - 1] >= '0' && transform[digits - 1] <= '9')
        --digits;
    return transform.substr(0, digits) + "Shape" + transform.substr(digits);
}

void registerNodeCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("createNode")
                     .flag("n", "name", {ArgType::kString})
                     .flag("p", "parent", {ArgType::kString})
                     .flag("s", "shared")
                     .flag("ss", "skipSelect")
                     .objects(1, 1)
                     .undoable(),
                 createNode);
    registerDeleteCommand(registry);
    registry.add(CommandSpec("rename").flag("is", "ignoreShape").objects(1, 2).undoable(), rename);
    registry.add(CommandSpec("lockNode").flag("l", "lock", {ArgType::kBool}).objects(0).query().undoable(),
                 lockNode);
    registerAttributeCommands(registry);
    registerConnectionCommands(registry);
    registerHierarchyCommands(registry);
    registerVisibilityCommands(registry);
    registerNamespaceCommands(registry);
}

} // namespace host
