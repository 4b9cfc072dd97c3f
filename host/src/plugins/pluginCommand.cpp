#include "plugins/pluginCommand.h"

#include "plugins/commandState.h"
#include "plugins/guard.h"
#include "session.h"
#include "types/api.h"
#include "types/error.h"
#include "undo/undoQueue.h"

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>

namespace host {

namespace {

ResultScope* innermost = nullptr;

constexpr std::size_t kLongestUndoName = 200;

/// A command of a plug-in on the undo queue.
class PluginCommandItem final : public UndoItem {
public:
    explicit PluginCommandItem(std::unique_ptr<MPxCommand> owned) : command(std::move(owned)) {}

    void undo(Session&) override
    {
        call("undoIt", [this] { return command->undoIt(); });
    }
    void redo(Session&) override
    {
        call("redoIt", [this] { return command->redoIt(); });
    }

private:
    void call(const char* step, const std::function<MStatus()>& run) const
    {
        requireSuccess(Api::state(*command).name + ": " + step, run);
    }

    std::unique_ptr<MPxCommand> command;
};

} // namespace

std::unique_ptr<MPxCommand> PluginCommand::create() const
{
    std::unique_ptr<MPxCommand> made;
    guarded(name, [&] { made.reset(static_cast<MPxCommand*>(creator())); });
    if (!made)
        throw Error(name + ": the plug-in made no command object.");
    CommandState& state = Api::state(*made);
    state.name = name;
    state.commandString = name;
    state.syntax = syntax;
    return made;
}

mel::Value runPluginCommand(Session& session, const PluginCommand& command, std::vector<mel::Value> arguments)
{
    // Copies: the command may unload the plug-in that registered it.
    const std::string name = command.name;
    MArgList list;
    const std::string undoName = callLine(name, arguments, kLongestUndoName);
    Api::arguments(list).values = std::move(arguments);
    if (command.syntax)
        parseArguments(*command.syntax, Api::arguments(list), name);

    UndoQueue::CommandScope entry(session.undo(), undoName);
    ResultScope result;
    std::unique_ptr<MPxCommand> object = command.create();
    requireSuccess(name, [&] { return object->doIt(list); });
    bool undoable = false;
    guarded(name, [&] { undoable = object->isUndoable(); });
    if (undoable && session.undo().recording())
        session.undo().push(std::make_unique<PluginCommandItem>(std::move(object)));
    return result.value;
}

void keepFinalised(Session& session, std::unique_ptr<MPxCommand> command, const std::string& text)
{
    UndoQueue::CommandScope entry(session.undo(), text);
    session.undo().push(std::make_unique<PluginCommandItem>(std::move(command)));
}

ResultScope::ResultScope() : outer(innermost)
{
    innermost = this;
}

ResultScope::~ResultScope()
{
    innermost = outer;
}

mel::Value* ResultScope::current()
{
    return innermost ? &innermost->value : nullptr;
}

} // namespace host
