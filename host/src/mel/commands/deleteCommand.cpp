// delete: nodes with what is of no use without them, or the history of shapes.
#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/nodeCommands.h"
#include "mel/commands/plugArguments.h"
#include "nodes/historyRemoval.h"
#include "nodes/shapeEvaluation.h"
#include "selection/selectionState.h"
#include "session.h"
#include "undo/edits.h"

#include <algorithm>

namespace host {

namespace {

using mel::Args;
using mel::CommandSpec;
using mel::Value;

using Nodes = std::vector<Ref<Node>>;

/// The groupParts that cuts a deformer's points out of a geometry, when it works for that deformer alone.
Node* ownGroup(const Plug& source)
{
    const bool isGroup = !source.isNull() && source.node()->type().name == "groupParts";
    return isGroup && source.destinations().size() == 1 ? source.node() : nullptr;
}

/// What a deformer handed on to its outputs now comes from its inputs: deleting it must not empty the shapes.
/// Appends the groups that nobody needs then.
void bridgeGeometry(Session& session, Node& deformer, Nodes& left)
{
    Graph& graph = session.graph();
    const Plug outputs = deformer.plug("outputGeometry"), inputs = deformer.plug("input");
    for (const std::uint32_t index : outputs.existingIndices()) {
        const Plug input = inputs.element(index);
        Plug source = graph.source(input.child("inputGeometry"));
        if (Node* const group = ownGroup(source)) {
            source = graph.source(group->plug("inputGeometry"));
            left.emplace_back(group);
        }
        const Plug id = graph.source(input.child("groupId"));
        if (!id.isNull() && id.node()->type().name == "groupId")
            left.emplace_back(id.node());
        if (source.isNull())
            continue;
        for (const Plug& destination : graph.destinations(outputs.element(index)))
            session.edits().connect(source, destination, true);
    }
}

/// The set of a deformer's members, unless another deformer uses it too.
void addOwnSets(Node& deformer, Nodes& left)
{
    for (const Plug& user : deformer.plug("message").destinations()) {
        Node& set = *user.node();
        if (set.type().isA("objectSet") && user.attribute()->longName == "usedBy" &&
            set.plug("usedBy").existingIndices().size() == 1)
            left.emplace_back(&set);
    }
}

void deleteDeformer(Session& session, Node& deformer)
{
    Nodes left;
    if (!deformer.locked) {
        bridgeGeometry(session, deformer, left);
        addOwnSets(deformer, left);
    }
    session.edits().remove(deformer);
    for (const Ref<Node>& node : left)
        if (node->alive())
            session.edits().remove(*node);
}

/// The deformers that a handle, a lattice or its base moves, here or below; with a lattice goes its base.
void addMoved(DagNode& node, Nodes& found)
{
    const std::string& type = node.type().name;
    const bool isLattice = type == "lattice" || type == "baseLattice";
    if (isLattice || type == "clusterHandle" || type == "softModHandle")
        for (const Graph::Connection& link : node.graph().outputs(node))
            if (link.destination.node()->type().isA("geometryFilter") &&
                link.destination.attribute()->root().longName != "input")
                found.emplace_back(link.destination.node());
    if (type == "lattice")
        for (const Ref<Node>& deformer : Nodes(found)) {
            const Plug base =
                deformer->type().isA("ffd") ? deformer->plug("baseLatticeMatrix").source() : Plug();
            DagNode* const shape = base.isNull() ? nullptr : base.node()->asDag();
            if (shape)
                found.emplace_back(shape->isShape() && shape->parent() ? shape->parent() : shape);
        }
    for (const Ref<DagNode>& child : node.children())
        addMoved(*child, found);
}

void removeHistoryBelow(Session& session, DagNode& node)
{
    if (shapeAttributes(node) && !node.isIntermediate())
        removeHistory(session, node);
    // A copy: intermediate shapes go.
    const std::vector<Ref<DagNode>> children = node.children();
    for (const Ref<DagNode>& child : children)
        if (child->alive())
            removeHistoryBelow(session, *child);
}

/// What is selected goes with its nodes and comes back with them.
void restoreSelectionOnUndo(Session& session)
{
    session.edits().perform([](Session&) {},
                            [before = session.selection().active()](Session& again) {
                                if (again.selection().active().items.size() != before.items.size())
                                    again.selection().setActive(before);
                            });
}

Value deleteHistory(Session& session, const Args& args)
{
    std::vector<Node*> nodes;
    if (!args.isSet("all"))
        nodes = nodesOrSelection(session, args.objectNames());
    else
        for (const Ref<DagNode>& root : session.graph().roots())
            nodes.push_back(root.get());
    restoreSelectionOnUndo(session);
    for (Node* const node : nodes)
        if (DagNode* const dag = node->asDag())
            removeHistoryBelow(session, *dag);
    return {};
}

Value deleteHistoryOfSelection(Session& session, const Args&)
{
    restoreSelectionOnUndo(session);
    for (Node* const node : nodesOrSelection(session, {}))
        if (DagNode* const dag = node->asDag())
            removeHistoryBelow(session, *dag);
    return {};
}

Value deleteCommand(Session& session, const Args& args)
{
    if (args.isSet("constructionHistory"))
        return deleteHistory(session, args);
    if (!args.isSet("all")) {
        deleteNodes(session, nodesOrSelection(session, args.objectNames()));
        return {};
    }
    std::vector<Node*> nodes;
    for (const Ref<Node>& node : session.graph().nodes()) {
        if (!node->isDefault)
            nodes.push_back(node.get());
    }
    deleteNodes(session, nodes);
    return {};
}

} // namespace

void deleteNodes(Session& session, const std::vector<Node*>& nodes)
{
    if (!nodes.empty())
        restoreSelectionOnUndo(session);
    Nodes doomed;
    for (Node* const node : nodes) {
        if (DagNode* const dag = node->asDag())
            addMoved(*dag, doomed);
        doomed.emplace_back(node);
    }
    for (const Ref<Node>& node : doomed) {
        if (!node->alive())
            continue;
        if (node->type().isA("geometryFilter"))
            deleteDeformer(session, *node);
        else
            session.edits().remove(*node);
    }
}

void registerDeleteCommand(mel::CommandRegistry& registry)
{
    registry.add(
        CommandSpec("delete").flag("all", "all").flag("ch", "constructionHistory").objects(0).undoable(),
        deleteCommand);
    registry.add(CommandSpec("DeleteHistory").undoable(), deleteHistoryOfSelection);
}

} // namespace host
