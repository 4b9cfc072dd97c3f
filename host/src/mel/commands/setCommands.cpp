// sets: making, asking and changing object sets.
#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "nodes/deformerBuild.h"
#include "nodes/setMembers.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

mel::StringArray memberNames(Node& set)
{
    const SelectionList members = setMembers(set);
    mel::StringArray names;
    for (std::size_t item = 0; item < members.items.size(); ++item)
        for (const std::string& text : members.texts(item))
            names.push_back(text);
    return names;
}

bool isMember(Node& set, const SelectionItem& asked)
{
    for (const SelectionItem& item : setMembers(set, true).items) {
        if (item.node != asked.node)
            continue;
        if (!item.component || !asked.component)
            return !item.component;
        DagNode& shape = *item.node->asDag();
        const std::vector<int> have = pointIndices(shape, item.component.get());
        bool all = true;
        for (const int point : pointIndices(shape, asked.component.get()))
            all = all && std::find(have.begin(), have.end(), point) != have.end();
        return all;
    }
    return false;
}

/// An object has one shading group: forcing it into one takes it out of the others.
void leaveOtherShading(Session& session, const Node& set, const SelectionList& members)
{
    if (!set.type().isA("shadingEngine"))
        return;
    for (const Ref<Node>& other : session.graph().nodes())
        if (other.get() != &set && other->type().isA("shadingEngine"))
            removeFromSet(session, *other, members);
}

Value setsCommand(Session& session, const Args& args)
{
    if (args.query() && args.objects().empty())
        throw Error("sets: name the set to query.");
    if (args.query())
        return memberNames(deformerNamed(session, args, args.objectNames().front(), "objectSet"));
    if (args.isSet("isMember")) {
        Node& set = deformerNamed(session, args, args.text("isMember"), "objectSet");
        for (const SelectionItem& item : commandTargets(session, args.objectNames()).items)
            if (!isMember(set, item))
                return 0;
        return 1;
    }
    for (const char* flag : {"addElement", "include", "forceElement"})
        if (args.isSet(flag)) {
            Node& set = deformerNamed(session, args, args.text(flag), "objectSet");
            const SelectionList members = commandTargets(session, args.objectNames());
            if (std::string(flag) == "forceElement")
                leaveOtherShading(session, set, members);
            addToSet(session, set, members);
            return set.name();
        }
    if (args.isSet("remove")) {
        Node& set = deformerNamed(session, args, args.text("remove"), "objectSet");
        removeFromSet(session, set, commandTargets(session, args.objectNames()));
        return set.name();
    }
    if (args.isSet("clear")) {
        Node& set = deformerNamed(session, args, args.text("clear"), "objectSet");
        removeFromSet(session, set, setMembers(set));
        return set.name();
    }
    SelectionList members;
    if (!args.isSet("empty")) {
        if (args.objects().empty())
            members = session.selection().active();
        else
            members = commandTargets(session, args.objectNames());
    }
    return createSet(session, args.textOr("name", "set1"), members).name();
}

} // namespace

void registerSetCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("sets")
                     .flag("n", "name", {ArgType::kString})
                     .flag("em", "empty")
                     .flag("add", "addElement", {ArgType::kString})
                     .flag("in", "include", {ArgType::kString})
                     .flag("fe", "forceElement", {ArgType::kString})
                     .flag("rm", "remove", {ArgType::kString})
                     .flag("im", "isMember", {ArgType::kString})
                     .flag("cl", "clear", {ArgType::kString})
                     .objects(0)
                     .query()
                     .edit()
                     .undoable(),
                 setsCommand);
}

} // namespace host
