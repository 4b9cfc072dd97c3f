// hide, showHidden: objects out of sight and back.
#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/nodeCommands.h"
#include "mel/commands/plugArguments.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

namespace host {

namespace {

using mel::Args;
using mel::CommandSpec;
using mel::Value;

void setVisibility(Session& session, Node& node, bool visible)
{
    const Plug plug = node.plug("visibility");
    if ((plug.number() != 0.0) != visible)
        session.edits().setNumber(plug, visible ? 1.0 : 0.0);
}

Value setVisible(Session& session, const Args& args, bool visible)
{
    std::vector<Node*> nodes;
    if (!visible || !args.isSet("allObjects")) {
        nodes = nodesOrSelection(session, args.objectNames());
        if (nodes.empty())
            throw Error("Nothing is selected.");
    } else {
        for (const Ref<Node>& node : session.graph().nodes())
            if (node->asDag() && !node->isDefault)
                nodes.push_back(node.get());
    }
    for (Node* const node : nodes) {
        if (!node->asDag())
            throw Error(args.commandName() + ": " + node->uniqueName() + " is not in the DAG.");
        setVisibility(session, *node, visible);
    }
    return {};
}

/// Also what is above the objects, without which they would stay out of sight.
Value showHidden(Session& session, const Args& args)
{
    setVisible(session, args, true);
    if (args.isSet("allObjects") || !args.isSet("above"))
        return {};
    for (Node* const node : nodesOrSelection(session, args.objectNames()))
        for (DagNode* above = node->asDag()->parent(); above; above = above->parent())
            setVisibility(session, *above, true);
    return {};
}

} // namespace

void registerVisibilityCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("hide").objects(0).undoable(),
                 [](Session& session, const Args& args) { return setVisible(session, args, false); });
    registry.add(CommandSpec("showHidden").flag("all", "allObjects").flag("a", "above").objects(0).undoable(),
                 showHidden);
}

} // namespace host
