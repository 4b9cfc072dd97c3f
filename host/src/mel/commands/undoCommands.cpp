#include "mel/command.h"
#include "mel/commands/register.h"
#include "messages.h"
#include "session.h"
#include "types/error.h"
#include "undo/undoQueue.h"

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

Value undo(Session& session, const Args&)
{
    session.undo().undo();
    return {};
}

Value redo(Session& session, const Args&)
{
    session.undo().redo();
    return {};
}

Value printQueue(Session& session)
{
    const std::vector<std::string> names = session.undo().names();
    for (std::size_t entry = 0; entry < names.size(); ++entry)
        session.messages().info(std::to_string(entry + 1) + ": " + names[entry]);
    return names;
}

Value queryUndoInfo(Session& session, const Args& args)
{
    const UndoQueue& queue = session.undo();
    if (args.isSet("undoName"))
        return queue.undoName();
    if (args.isSet("redoName"))
        return queue.redoName();
    if (args.isSet("printQueue"))
        return printQueue(session);
    if (args.isSet("undoQueueEmpty"))
        return queue.undoCount() == 0;
    if (args.isSet("redoQueueEmpty"))
        return queue.redoCount() == 0;
    if (args.isSet("state") || args.isSet("stateWithoutFlush"))
        return queue.enabled();
    if (args.isSet("infinity"))
        return queue.infinite();
    if (args.isSet("length"))
        return static_cast<int>(queue.length());
    throw Error("undoInfo: the query needs a flag that says what to tell.");
}

Value undoInfo(Session& session, const Args& args)
{
    if (args.query())
        return queryUndoInfo(session, args);
    UndoQueue& queue = session.undo();
    if (args.isSet("openChunk") && args.isSet("closeChunk"))
        throw Error("undoInfo: -openChunk and -closeChunk exclude each other.");
    if (args.isSet("length") && args.integer("length") < 0)
        throw Error("undoInfo: -length cannot be negative.");
    if (args.isSet("state"))
        queue.setEnabled(args.boolean("state"));
    if (args.isSet("stateWithoutFlush"))
        queue.setWithoutFlush(args.boolean("stateWithoutFlush"));
    if (args.isSet("infinity"))
        queue.setInfinite(args.boolean("infinity"));
    if (args.isSet("length"))
        queue.setLength(static_cast<std::size_t>(args.integer("length")));
    if (args.isSet("openChunk"))
        queue.openChunk(args.textOr("chunkName", {}));
    if (args.isSet("closeChunk"))
        queue.closeChunk();
    if (args.isSet("printQueue"))
        return printQueue(session);
    return {};
}

} // namespace

void registerUndoCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("undo"), undo);
    registry.add(CommandSpec("redo"), redo);
    registry.add(CommandSpec("undoInfo")
                     .flag("ock", "openChunk")
                     .flag("cck", "closeChunk")
                     .flag("cn", "chunkName", {ArgType::kString})
                     .flag("st", "state", {ArgType::kBool})
                     .flag("swf", "stateWithoutFlush", {ArgType::kBool})
                     .flag("in", "infinity", {ArgType::kBool})
                     .flag("l", "length", {ArgType::kInt})
                     .flag("un", "undoName")
                     .flag("rn", "redoName")
                     .flag("pq", "printQueue")
                     .flag("uqe", "undoQueueEmpty")
                     .flag("rqe", "redoQueueEmpty")
                     .query(),
                 undoInfo);
}

} // namespace host
