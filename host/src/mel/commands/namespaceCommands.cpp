// namespace, namespaceInfo: the prefixes of names, as a whole. A namespace is there while a node has it in
// its name, and one that was made by hand until the scene is left.
#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/nodeCommands.h"
#include "scene/sceneInfo.h"
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

/// Without the colons around it: "" is the root.
std::string plain(std::string name)
{
    while (!name.empty() && name.front() == ':')
        name.erase(0, 1);
    while (!name.empty() && name.back() == ':')
        name.pop_back();
    return name;
}

std::string joined(const std::string& space, const std::string& rest)
{
    return space.empty() ? rest : space + ":" + rest;
}

bool isIn(const std::string& name, const std::string& space)
{
    return name.compare(0, space.size() + 1, space + ":") == 0;
}

std::vector<std::string> allNamespaces(Session& session)
{
    std::vector<std::string> all = session.graph().namespaces();
    for (const std::string& empty : session.sceneInfo().emptyNamespaces)
        if (std::find(all.begin(), all.end(), empty) == all.end())
            all.push_back(empty);
    std::sort(all.begin(), all.end());
    return all;
}

bool isThere(Session& session, const std::string& space)
{
    const std::vector<std::string> all = allNamespaces(session);
    return space.empty() || std::find(all.begin(), all.end(), space) != all.end();
}

std::string existing(Session& session, const std::string& name)
{
    std::string space = plain(name);
    if (space.empty() || !isThere(session, space))
        throw Error("namespace: there is no namespace '" + name + "'.");
    return space;
}

std::vector<Ref<Node>> nodesIn(Session& session, const std::string& space)
{
    std::vector<Ref<Node>> nodes;
    for (const Ref<Node>& node : session.graph().nodes())
        if (isIn(node->name(), space))
            nodes.push_back(node);
    return nodes;
}

void setEmpty(Session& session, const std::string& space, bool there)
{
    const bool before = session.sceneInfo().emptyNamespaces.count(space) != 0;
    if (before == there)
        return;
    const auto set = [space](bool present) {
        return [space, present](Session& now) {
            if (present)
                now.sceneInfo().emptyNamespaces.insert(space);
            else
                now.sceneInfo().emptyNamespaces.erase(space);
        };
    };
    session.edits().perform(set(there), set(before));
}

/// Every node of a namespace, and of those inside it, gets another one; the first is gone.
void moveContents(Session& session, const std::string& from, const std::string& to)
{
    for (const Ref<Node>& node : nodesIn(session, from))
        session.edits().rename(*node, joined(to, node->name().substr(from.size() + 1)));
    const std::set<std::string> empty = session.sceneInfo().emptyNamespaces;
    for (const std::string& space : empty) {
        if (!isIn(space, from) && space != from)
            continue;
        setEmpty(session, space, false);
        if (space != from)
            setEmpty(session, joined(to, space.substr(from.size() + 1)), true);
    }
}

void removeNamespace(Session& session, const Args& args)
{
    const std::string space = existing(session, args.text("removeNamespace"));
    const std::vector<Ref<Node>> nodes = nodesIn(session, space);
    if (args.isSet("mergeNamespaceWithRoot")) {
        moveContents(session, space, {});
    } else if (args.isSet("deleteNamespaceContent")) {
        std::vector<Node*> doomed;
        doomed.reserve(nodes.size());
        for (const Ref<Node>& node : nodes)
            doomed.push_back(node.get());
        deleteNodes(session, doomed);
    } else if (!nodes.empty()) {
        throw Error("namespace: '" + space +
                    "' is not empty (-mergeNamespaceWithRoot, -deleteNamespaceContent).");
    }
    setEmpty(session, space, false);
}

Value namespaceCommand(Session& session, const Args& args)
{
    if (args.isSet("exists"))
        return isThere(session, plain(args.text("exists")));
    if (args.isSet("add")) {
        const std::string space = joined(args.isSet("parent") ? plain(args.text("parent")) : std::string(),
                                         plain(args.text("add")));
        if (space.empty() || isThere(session, space))
            throw Error("namespace: '" + args.text("add") + "' is there already.");
        setEmpty(session, space, true);
        return space;
    }
    if (args.isSet("set")) {
        if (!plain(args.text("set")).empty())
            throw Error("namespace: only the root can be the current namespace (-set \":\"); new nodes get "
                        "theirs with their name.");
        return ":";
    }
    if (args.isSet("rename")) {
        const std::string from = existing(session, args.text("rename", 0));
        const std::string to = plain(args.text("rename", 1));
        if (to.empty() || isThere(session, to))
            throw Error("namespace: '" + args.text("rename", 1) +
                        "' is no name for it, or is there already.");
        const bool empty = nodesIn(session, from).empty();
        moveContents(session, from, to);
        setEmpty(session, to, empty);
        return to;
    }
    if (args.isSet("moveNamespace")) {
        moveContents(session, existing(session, args.text("moveNamespace", 0)),
                     plain(args.text("moveNamespace", 1)));
        return {};
    }
    if (!args.isSet("removeNamespace"))
        throw Error("namespace needs one of -exists, -add, -set, -rename, -moveNamespace, -removeNamespace.");
    removeNamespace(session, args);
    return {};
}

Value namespaceInfo(Session& session, const Args& args)
{
    if (args.isSet("currentNamespace"))
        return ":";
    const std::string space = args.objects().empty() ? std::string() : plain(args.objectNames().front());
    if (!isThere(session, space))
        throw Error("namespaceInfo: there is no namespace '" + args.objectNames().front() + "'.");
    const bool deep = args.isSet("recurse");
    const auto isBelow = [&](const std::string& name) {
        if (!space.empty() && !isIn(name, space))
            return false;
        return deep || name.find(':', space.empty() ? 0 : space.size() + 1) == name.npos;
    };
    const bool all = args.isSet("listNamespace");
    mel::StringArray names;
    if (all || args.isSet("listOnlyDependencyNodes"))
        for (const Ref<Node>& node : session.graph().nodes())
            if (isBelow(node->name()))
                names.push_back(node->uniqueName());
    if (all || args.isSet("listOnlyNamespaces"))
        for (const std::string& each : allNamespaces(session))
            if (isBelow(each))
                names.push_back(each);
    return names;
}

} // namespace

void registerNamespaceCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("namespace")
                     .flag("ex", "exists", {ArgType::kString})
                     .flag("add", "add", {ArgType::kString})
                     .flag("p", "parent", {ArgType::kString})
                     .flag("set", "set", {ArgType::kString})
                     .flag("ren", "rename", {ArgType::kString, ArgType::kString})
                     .flag("mv", "moveNamespace", {ArgType::kString, ArgType::kString})
                     .flag("rm", "removeNamespace", {ArgType::kString})
                     .flag("mnr", "mergeNamespaceWithRoot")
                     .flag("dnc", "deleteNamespaceContent")
                     .flag("f", "force")
                     .undoable(),
                 namespaceCommand);
    registry.add(CommandSpec("namespaceInfo")
                     .flag("cur", "currentNamespace")
                     .flag("ls", "listNamespace")
                     .flag("lon", "listOnlyNamespaces")
                     .flag("lod", "listOnlyDependencyNodes")
                     .flag("r", "recurse")
                     .objects(0, 1),
                 namespaceInfo);
}

} // namespace host
