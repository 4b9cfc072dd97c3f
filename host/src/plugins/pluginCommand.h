#pragma once

#include "mel/value.h"
#include "plugins/syntax.h"

#include <maya/MApiNamespace.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

class Session;

/// Makes an object of a plug-in's class: MCreatorFunction, without the header that defines the version of a
/// plug-in.
using PluginCreator = void* (*)();

/// A command that a plug-in registered.
struct PluginCommand {
    std::string name;
    PluginCreator creator = nullptr;
    std::shared_ptr<const Syntax> syntax; ///< null when the command reads its arguments itself

    /// A new object of the plug-in's class, knowing its name and syntax. Throws host::Error.
    std::unique_ptr<MPxCommand> create() const;
};

/// Runs the command on the arguments of a call: checks them against the syntax, makes an object, calls doIt.
/// An object that is undoable is kept on the undo queue, together with what doIt recorded, as one entry.
/// Exceptions and failing statuses become host::Error; what doIt had recorded is then taken back.
mel::Value runPluginCommand(Session& session, const PluginCommand& command,
                            std::vector<mel::Value> arguments);

/// Puts a finalised tool command on the undo queue, which owns it from then on, as an entry named `text`.
void keepFinalised(Session& session, std::unique_ptr<MPxCommand> command, const std::string& text);

/// Where MPxCommand::setResult writes, for the length of one call; calls nest.
class ResultScope {
public:
    ResultScope();
    ~ResultScope();
    ResultScope(const ResultScope&) = delete;
    ResultScope& operator=(const ResultScope&) = delete;

    mel::Value value;
    /// The innermost result, null when no command of a plug-in runs.
    static mel::Value* current();

private:
    ResultScope* outer;
};

} // namespace host
