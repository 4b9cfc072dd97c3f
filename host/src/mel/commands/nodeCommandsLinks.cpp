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
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// The element behind all others of an array.
Plug nextElement(Session& session, const Plug& array)
{
    if (!array.isArray())
        throw Error("'" + array.name() + "' is no array that could have a next element.");
    return array.element(session.graph().nextAvailable(array));
}

Value connectAttr(Session& session, const Args& args)
{
    Graph& graph = session.graph();
    const std::vector<std::string> names = args.objectNames();
    const Plug source = plugNamed(session, names[0]);
    Plug destination = plugNamed(session, names[1]);
    if (args.isSet("nextAvailable"))
        destination = nextElement(session, destination);
    const bool force = args.isSet("force");
    if (graph.source(destination) == source) {
        if (!force)
            throw Error("'" + source.name() + "' is already connected to '" + destination.name() + "'.");
        return {};
    }
    session.edits().connect(source, destination, force);
    if (args.isSet("lock"))
        session.edits().setLocked(destination, args.boolean("lock"));
    return "Connected " + source.name() + " to " + destination.name() + ".";
}

Value disconnectAttr(Session& session, const Args& args)
{
    Graph& graph = session.graph();
    const std::vector<std::string> names = args.objectNames();
    const Plug source = plugNamed(session, names[0]);
    Plug destination = plugNamed(session, names[1]);
    if (args.isSet("nextAvailable")) {
        const Plug array = destination;
        for (const std::uint32_t index : array.existingIndices()) {
            if (graph.source(array.element(index)) == source)
                destination = array.element(index);
        }
    }
    if (!(graph.source(destination) == source))
        throw Error("There is no connection from '" + source.name() + "' to '" + destination.name() +
                    "' to disconnect.");
    session.edits().disconnect(source, destination);
    return "Disconnect " + source.name() + " from " + destination.name() + ".";
}

Value isConnected(Session& session, const Args& args)
{
    const std::vector<std::string> names = args.objectNames();
    const Plug source = plugNamed(session, names[0]);
    return session.graph().source(plugNamed(session, names[1])) == source;
}

Value connectionInfo(Session& session, const Args& args)
{
    const Plug plug = plugNamed(session, args.objectNames().front());
    const Plug source = session.graph().source(plug);
    const std::vector<Plug> destinations = session.graph().destinations(plug);
    if (args.isSet("sourceFromDestination"))
        return source.isNull() ? std::string() : source.name();
    if (args.isSet("destinationFromSource")) {
        mel::StringArray names;
        for (const Plug& destination : destinations)
            names.push_back(destination.name());
        return names;
    }
    if (args.isSet("isSource") || args.isSet("isExactSource"))
        return !destinations.empty();
    if (args.isSet("isDestination") || args.isSet("isExactDestination"))
        return !source.isNull();
    if (args.isSet("isLocked"))
        return plug.isLocked();
    throw Error("connectionInfo needs one of -sourceFromDestination, -destinationFromSource, -isSource, "
                "-isDestination, -isExactSource, -isExactDestination, -isLocked.");
}

} // namespace

void registerConnectionCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("connectAttr")
                     .flag("f", "force")
                     .flag("na", "nextAvailable")
                     .flag("l", "lock", {ArgType::kBool})
                     .objects(2, 2)
                     .undoable(),
                 connectAttr);
    registry.add(CommandSpec("disconnectAttr").flag("na", "nextAvailable").objects(2, 2).undoable(),
                 disconnectAttr);
    registry.add(CommandSpec("connectionInfo")
                     .flag("sfd", "sourceFromDestination")
                     .flag("dfs", "destinationFromSource")
                     .flag("is", "isSource")
                     .flag("id", "isDestination")
                     .flag("ies", "isExactSource")
                     .flag("ied", "isExactDestination")
                     .flag("il", "isLocked")
                     .objects(1, 1),
                 connectionInfo);
    registry.add(CommandSpec("isConnected").objects(2, 2), isConnected);
}

} // namespace host
