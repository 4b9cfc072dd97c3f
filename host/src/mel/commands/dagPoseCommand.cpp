// dagPose: the bind poses of joints, asked and restored.
#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/deformerCommands.h"
#include "mel/commands/plugArguments.h"
#include "nodes/bindPose.h"
#include "session.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

using mel::Args;
using mel::CommandSpec;
using mel::Value;

/// The poses that the call is about: named themselves, or the bind poses of named or selected objects.
std::vector<Node*> posesMeant(Session& session, const Args& args)
{
    std::vector<Node*> poses;
    const auto add = [&](Node* pose) {
        if (std::find(poses.begin(), poses.end(), pose) == poses.end())
            poses.push_back(pose);
    };
    for (Node* const node : nodesOrSelection(session, args.objectNames())) {
        if (node->type().isA("dagPose"))
            add(node);
        else
            for (Node* const pose : bindPosesOf(*node))
                add(pose);
    }
    return poses;
}

Value query(const Args& args, const std::vector<Node*>& poses)
{
    mel::StringArray names;
    for (Node* const pose : poses) {
        if (args.isSet("bindPose") && !args.isSet("members") && !args.isSet("atPose")) {
            names.push_back(pose->uniqueName());
            continue;
        }
        std::vector<DagNode*> members = strayedFrom(*pose);
        if (!args.isSet("atPose")) {
            members.clear();
            for (const PoseMember& member : membersOf(*pose))
                members.push_back(member.node);
        }
        for (const DagNode* const member : members)
            names.push_back(member->uniqueName());
    }
    return names;
}

Value dagPose(Session& session, const Args& args)
{
    const std::vector<Node*> poses = posesMeant(session, args);
    if (args.query()) {
        if (!args.isSet("bindPose") && !args.isSet("members") && !args.isSet("atPose"))
            throw Error("dagPose -query needs -bindPose, -members or -atPose.");
        return query(args, poses);
    }
    if (!args.isSet("restore"))
        throw Error("dagPose: only -restore and -query are supported.");
    if (poses.size() != 1)
        throw Error(poses.empty() ? "dagPose: there is no bind pose."
                                  : "dagPose: there is more than one bind pose; name the one to restore.");
    restorePose(session, *poses.front(), args.isSet("global"));
    return poses.front()->name();
}

} // namespace

void registerDagPoseCommand(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("dagPose")
                     .flag("r", "restore")
                     .flag("bp", "bindPose")
                     .flag("m", "members")
                     .flag("ap", "atPose")
                     .flag("g", "global")
                     .objects(0)
                     .query()
                     .undoable(),
                 dagPose);
}

} // namespace host
