#include "tools/contextCommands.h"

#include "mel/command.h"
#include "plugins/syntax.h"
#include "session.h"
#include "tools/toolApi.h"
#include "tools/tools.h"
#include "types/api.h"
#include "types/error.h"

#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MPxToolCommand.h>
#include <maya/MSyntax.h>

#include <exception>

namespace host {

namespace {

/// Counts a call for its length, however it ends.
class Running {
public:
    explicit Running(int& calls) : counted(calls) { ++counted; }
    ~Running() { --counted; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    int& counted;
};

void check(MStatus status, const std::string& name, const char* step)
{
    if (!status)
        throw Error(name + ": " + step + " failed.");
}

/// The object with its syntax, flags of the plug-in included.
std::unique_ptr<MPxContextCommand> makeObject(const ContextCommands::Creator& creator,
                                              const std::string& name)
{
    std::unique_ptr<MPxContextCommand> object(creator ? creator() : nullptr);
    if (!object)
        throw Error(name + ": the command could not be made.");
    ContextCommandState& state = ToolApi::state(*object);
    state.syntax = std::make_shared<Syntax>();
    MSyntax handle = Api::wrap(state.syntax);
    handle.enableQuery(true);
    handle.enableEdit(true);
    handle.setObjectType(MSyntax::kStringObjects, 0, 1);
    check(object->appendSyntax(), name, "building the syntax");
    return object;
}

} // namespace

ContextCommands::ContextCommands(Session& session) : owner(session) {}

ContextCommands::~ContextCommands() = default;

void ContextCommands::add(const std::string& name, Creator creator, ToolCreator toolCreator)
{
    owner.commands().addRaw(name, [this, name](Session&, const Arguments& arguments) {
        const Running call(running);
        try {
            return run(name, arguments);
        } catch (const Error&) {
            throw;
        } catch (const std::exception& problem) {
            throw Error(name + " failed with an exception: " + problem.what());
        } catch (...) {
            throw Error(name + " failed with an exception.");
        }
    });
    commands[name] = {std::move(creator), std::move(toolCreator), {}};
}

void ContextCommands::remove(const std::string& name)
{
    if (!exists(name))
        throw Error("There is no context command '" + name + "'.");
    if (running > 0)
        throw Error("Context command '" + name + "' cannot be removed while it runs.");
    owner.tools().removeContextsOf(name);
    owner.commands().remove(name);
    commands.erase(name);
}

void ContextCommands::removeTool(const std::string& tool)
{
    if (running > 0)
        throw Error("The tool '" + tool + "' cannot be removed while its command runs.");
    owner.tools().removeContext(tool);
    for (auto& command : commands)
        command.second.objects.erase(tool);
}

MPxToolCommand* ContextCommands::newToolCommand(const std::string& name) const
{
    const auto found = commands.find(name);
    if (found == commands.end() || !found->second.toolCreator)
        return nullptr;
    return found->second.toolCreator();
}

mel::Value ContextCommands::run(const std::string& name, const Arguments& arguments)
{
    // -exists is the host's own flag and answers for any name.
    for (std::size_t at = 0; at + 1 < arguments.size(); ++at) {
        const std::string word = arguments[at].isString() ? arguments[at].toString() : std::string();
        if (word == "-exists" || word == "-ex") {
            const std::string tool = arguments[at + 1].toString();
            return commands.at(name).objects.count(tool) != 0;
        }
    }
    // Which tool is meant shows only after parsing, and parsing needs a syntax: a fresh object tells.
    Object object = makeObject(commands.at(name).creator, name);
    ContextCommandState& state = ToolApi::state(*object);
    const std::shared_ptr<const ParsedArgs> parsed = parseArguments(*state.syntax, ArgList{arguments}, name);
    state.parsed = parsed;
    const std::string tool = parsed->objects.empty() ? std::string() : parsed->objects.front();
    if (!parsed->edit && !parsed->query)
        return make(name, tool, std::move(object));
    if (tool.empty())
        throw Error(name + ": the name of a tool is needed.");
    MPxContextCommand& target = objectOf(name, tool);
    ToolApi::state(target).parsed = parsed;
    return apply(name, target, parsed->edit);
}

mel::Value ContextCommands::make(const std::string& name, const std::string& tool, Object object)
{
    Tools& tools = owner.tools();
    const std::string finalName = tool.empty() ? tools.freeContextName(name) : tool;
    if (tools.findContext(finalName))
        throw Error(name + ": a tool named '" + finalName + "' already exists.");
    std::unique_ptr<MPxContext> context(object->makeObj());
    if (!context)
        throw Error(name + ": the tool could not be made.");
    const bool flags = !ToolApi::state(*object).parsed->uses.empty();
    MPxContextCommand& kept = *object;
    tools.addContext(finalName, name, std::move(context));
    commands.at(name).objects[finalName] = std::move(object);
    if (flags)
        apply(name, kept, true);
    return finalName;
}

mel::Value ContextCommands::apply(const std::string& name, MPxContextCommand& object, bool edit)
{
    ContextCommandState& state = ToolApi::state(object);
    state.result = {};
    if (edit)
        check(object.doEditFlags(), name, "editing");
    else
        check(object.doQueryFlags(), name, "the query");
    return state.result;
}

MPxContextCommand& ContextCommands::objectOf(const std::string& name, const std::string& tool)
{
    std::map<std::string, Object>& objects = commands.at(name).objects;
    const auto found = objects.find(tool);
    if (found == objects.end())
        throw Error(name + ": tool '" + tool + "' does not exist.");
    return *found->second;
}

} // namespace host
