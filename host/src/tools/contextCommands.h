#pragma once

#include "mel/value.h"

#include <maya/MApiNamespace.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {

class Session;

/// The commands that plug-ins registered to make, edit and query tools:
///
///     toolContext                          makes toolContext1, toolContext2, ... and returns its name
///     toolContext myTool                   makes a tool of that name
///     toolContext -e -flag value myTool    edits, -q -flag queries, -exists asks
///
/// Making takes the edit flags too. Flags are checked against the command's syntax before the plug-in sees
/// them; with -e and -q both, it edits. None of this is recorded for undo by itself.
/// There is one command object per tool: the one whose makeObj() made it also edits and queries it.
class ContextCommands {
public:
    using Creator = std::function<MPxContextCommand*()>;
    using ToolCreator = std::function<MPxToolCommand*()>;

    explicit ContextCommands(Session& session);
    ~ContextCommands();

    /// Registers the command. `toolCreator` makes the tool command of its contexts and may be empty. Throws
    /// host::Error when a command of that name exists.
    void add(const std::string& name, Creator creator, ToolCreator toolCreator);
    /// Removes the command with its contexts, after leaving the current tool if it is one of them. Throws
    /// host::Error when there is no such context command, or while it or a tool is at work.
    void remove(const std::string& name);
    /// Removes one tool, however it is called; the same errors.
    void removeTool(const std::string& tool);
    bool exists(const std::string& name) const { return commands.count(name) != 0; }

    /// A new tool command for contexts of that command, owned by whoever registered it; null when none was.
    MPxToolCommand* newToolCommand(const std::string& name) const;

private:
    using Object = std::unique_ptr<MPxContextCommand>;
    using Arguments = std::vector<mel::Value>;
    struct Command {
        Creator creator;
        ToolCreator toolCreator;
        std::map<std::string, Object> objects; ///< by the name of the tool that each made
    };

    mel::Value run(const std::string& name, const Arguments& arguments);
    mel::Value make(const std::string& name, const std::string& tool, Object object);
    mel::Value apply(const std::string& name, MPxContextCommand& object, bool edit);
    MPxContextCommand& objectOf(const std::string& name, const std::string& tool);

    Session& owner;
    std::map<std::string, Command> commands;
    int running = 0; ///< calls that have not returned
};

} // namespace host
