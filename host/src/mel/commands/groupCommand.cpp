// group: a new transform above objects.
#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/geometryCommands.h"
#include "mel/commands/nodeCommands.h"
#include "mel/commands/plugArguments.h"
#include "nodes/geometry.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <ImathBox.h>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// The lowest node above all of them; null = the world.
DagNode* commonParent(const std::vector<DagNode*>& nodes)
{
    DagNode* above = nodes.front()->parent();
    const auto isAboveAll = [&] {
        for (const DagNode* const node : nodes)
            if (!above->isAncestorOf(*node))
                return false;
        return true;
    };
    while (above && !isAboveAll())
        above = above->parent();
    return above;
}

void extend(Imath::Box3d& box, DagNode& node)
{
    const Imath::M44d world = worldMatrix(node);
    const GeometryRef geometry = node.isShape() && !node.isIntermediate() ? shapeGeometry(node) : nullptr;
    if (geometry)
        for (const Imath::V3d& point : geometry->points())
            box.extendBy(point * world);
    else if (!node.isShape() && node.children().empty())
        box.extendBy(world.translation());
    for (const Ref<DagNode>& child : node.children())
        extend(box, *child);
}

/// The pivots of a group are in the middle of what it holds.
void centrePivots(Session& session, DagNode& group)
{
    Imath::Box3d box;
    for (const Ref<DagNode>& child : group.children())
        extend(box, *child);
    if (box.isEmpty())
        return;
    const Imath::V3d centre = box.center() * worldMatrix(group).inverse();
    for (const char* pivot : {"rotatePivot", "scalePivot"})
        for (unsigned axis = 0; axis < 3; ++axis)
            session.edits().setNumber(group.plug(pivot).child(axis), centre[static_cast<int>(axis)]);
}

/// Every object of the call, or of the selection; a component stands for its object, a shape for its
/// transform.
std::vector<DagNode*> membersOf(Session& session, const Args& args)
{
    std::vector<DagNode*> members;
    for (Node* const node : nodesOrSelection(session, args.objectNames())) {
        DagNode* dag = node->asDag();
        if (dag && dag->isShape())
            dag = dag->parent();
        if (!dag)
            throw Error("group: " + node->uniqueName() + " is not in the DAG.");
        members.push_back(dag);
    }
    if (members.empty())
        throw Error("group: Nothing is selected; -empty makes a group without members.");
    return members;
}

DagNode* parentFor(Session& session, const Args& args, const std::vector<DagNode*>& members)
{
    if (args.isSet("world"))
        return nullptr;
    if (!args.isSet("parent"))
        return members.empty() ? nullptr : commonParent(members);
    DagNode* const parent = session.graph().get(args.text("parent")).asDag();
    if (!parent || parent->isShape())
        throw Error("group: " + args.text("parent") + " cannot be a parent.");
    return parent;
}

Value group(Session& session, const Args& args)
{
    std::vector<DagNode*> members;
    if (!args.isSet("empty"))
        members = membersOf(session, args);
    else if (!args.objects().empty())
        throw Error("group: -empty takes no objects.");
    const NodeType& type = *session.graph().types().find("transform");
    DagNode& made = *session.edits()
                         .create(type, args.textOr("name", "group1"), parentFor(session, args, members))
                         .asDag();
    for (DagNode* const member : members)
        moveUnder(session, *member, &made, args.isSet("relative") ? Placing::kRelative : Placing::kAbsolute);
    centrePivots(session, made);
    selectOnly(session, made);
    return made.uniqueName();
}

} // namespace

void registerGroupCommand(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("group")
                     .flag("em", "empty")
                     .flag("n", "name", {ArgType::kString})
                     .flag("w", "world")
                     .flag("p", "parent", {ArgType::kString})
                     .flag("r", "relative")
                     .flag("a", "absolute")
                     .objects(0)
                     .undoable(),
                 group);
}

} // namespace host
