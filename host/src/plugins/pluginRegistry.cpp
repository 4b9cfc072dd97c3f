#include "plugins/pluginRegistry.h"

#include "mel/command.h"
#include "messages.h"
#include "plugins/commandState.h"
#include "plugins/guard.h"
#include "plugins/unfinishedCommands.h"
#include "session.h"
#include "tools/contextCommands.h"
#include "tools/sceneCallbacks.h"
#include "tools/tools.h"
#include "types/api.h"
#include "types/error.h"
#include "undo/undoQueue.h"

#include <maya/MPxToolCommand.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace host {

namespace {

namespace fs = std::filesystem;

/// Counts a call of a plug-in's command, however it ends.
class Running {
public:
    explicit Running(Plugin& called) : plugin(&called) { ++plugin->running; }
    ~Running() { --plugin->running; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    Ref<Plugin> plugin;
};

std::string existing(const fs::path& file)
{
    std::error_code ignored;
    for (const fs::path& candidate : {file, fs::path(file.string() + ".so")}) {
        if (fs::is_regular_file(candidate, ignored))
            return fs::absolute(candidate, ignored).lexically_normal().string();
    }
    return {};
}

std::vector<std::string> environmentFolders()
{
    std::vector<std::string> folders;
    const char* const path = std::getenv("MAYA_PLUG_IN_PATH");
    std::istringstream list(path ? path : "");
    for (std::string folder; std::getline(list, folder, ':');) {
        if (!folder.empty())
            folders.push_back(folder);
    }
    return folders;
}

bool isLoadedInProcess(const std::string& file)
{
    void* const handle = dlopen(file.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

} // namespace

PluginRegistry::PluginRegistry(Session& session)
    : owner(session), unfinished(std::make_shared<UnfinishedCommands>())
{}

PluginRegistry::~PluginRegistry()
{
    leaveAll();
}

void PluginRegistry::leaveAll()
{
    while (!plugins.empty()) {
        const Ref<Plugin> plugin(plugins.back());
        try {
            takeBack(*plugin);
            close(*plugin);
        } catch (const Error& error) {
            // Its code still runs: closing the library would pull the ground from under it.
            owner.messages().error(error.what());
            static_cast<void>(plugin->library.release());
            plugins.pop_back();
        }
    }
}

void PluginRegistry::addFolder(const std::string& folder)
{
    folders.push_back(folder);
}

std::string PluginRegistry::fileOf(const std::string& pathOrName) const
{
    if (pathOrName.find('/') != std::string::npos)
        return existing(pathOrName);
    std::vector<std::string> searched = environmentFolders();
    searched.insert(searched.end(), folders.begin(), folders.end());
    searched.emplace_back("."); // the current folder comes last
    for (const std::string& folder : searched) {
        std::string file = existing(fs::path(folder) / pathOrName);
        if (!file.empty())
            return file;
    }
    return {};
}

Plugin& PluginRegistry::load(const std::string& pathOrName)
{
    const std::string file = fileOf(pathOrName);
    if (file.empty())
        throw Error("Unable to load plug-in " + pathOrName + ": no such file.");
    const std::string name = fs::path(file).stem().string();
    if (find(name))
        throw Error("Unable to load plug-in " + file + ": a plug-in named \"" + name +
                    "\" is already loaded.");

    Ref<Plugin> plugin(new Plugin(name, std::make_unique<PluginLibrary>(file)));
    plugins.push_back(plugin);
    try {
        requireSuccess("Unable to load plug-in " + file + ": initializePlugin failed",
                       [&] { return plugin->library->initialize(Api::wrap(plugin.get())); });
    } catch (const Error&) {
        takeBack(*plugin);
        close(*plugin);
        throw;
    }
    return *plugin;
}

void PluginRegistry::unload(const std::string& name, bool force)
{
    const Ref<Plugin> plugin(find(name));
    if (!plugin.get())
        throw Error("Plug-in \"" + name + "\" is not loaded.");
    if (plugin->running > 0)
        throw Error("Plug-in \"" + name + "\" cannot be unloaded: one of its commands is running.");
    owner.undo().flush();
    finished.clear();
    try {
        requireSuccess("Plug-in \"" + name + "\": uninitializePlugin failed",
                       [&] { return plugin->library->uninitialize(Api::wrap(plugin.get())); });
        const std::string left = leftovers(*plugin);
        if (!left.empty())
            throw Error("Plug-in \"" + name + "\" cannot be unloaded: it left registered: " + left + ".");
    } catch (const Error& error) {
        if (!force)
            throw;
        owner.messages().error(error.what());
    }
    takeBack(*plugin);
    close(*plugin);
}

Plugin* PluginRegistry::find(const std::string& nameOrPath) const
{
    const std::string file = fileOf(nameOrPath);
    for (const Ref<Plugin>& plugin : plugins) {
        if (plugin->name == nameOrPath || fs::path(nameOrPath).filename().string() == plugin->name + ".so" ||
            plugin->library->path() == file)
            return plugin.get();
    }
    return nullptr;
}

void PluginRegistry::addCommand(Plugin& plugin, PluginCommand command)
{
    const Ref<Plugin> held(&plugin);
    owner.commands().addRaw(command.name, [held, command](Session& session, auto arguments) {
        const Running running(*held);
        return runPluginCommand(session, command, std::move(arguments));
    });
    plugin.commands[command.name] = std::move(command);
}

void PluginRegistry::removeCommand(Plugin& plugin, const std::string& name)
{
    if (plugin.commands.erase(name) == 0)
        throw Error("Plug-in \"" + plugin.name + "\" has registered no command \"" + name + "\".");
    owner.commands().remove(name);
}

void PluginRegistry::addContext(Plugin& plugin, const std::string& name, PluginCreator creator,
                                PluginCommand toolCommand)
{
    ContextCommands::ToolCreator toolCreator;
    if (toolCommand.creator)
        toolCreator = [toolCommand, keeper = unfinished] {
            std::unique_ptr<MPxCommand> made = toolCommand.create();
            auto* const command = static_cast<MPxToolCommand*>(made.get());
            Api::state(*command).keeper = keeper;
            keeper->keep(std::move(made));
            return command;
        };
    if (toolCommand.creator)
        addCommand(plugin, toolCommand);
    try {
        owner.tools().contextCommands().add(
            name, [creator] { return static_cast<MPxContextCommand*>(creator()); }, toolCreator);
    } catch (const Error&) {
        if (toolCommand.creator)
            removeCommand(plugin, toolCommand.name);
        throw;
    }
    plugin.contexts[name] = {name, toolCommand.name};
}

void PluginRegistry::removeContext(Plugin& plugin, const std::string& name, const std::string& toolCommand)
{
    const auto found = plugin.contexts.find(name);
    if (found == plugin.contexts.end() || found->second.toolCommand != toolCommand)
        throw Error("Plug-in \"" + plugin.name + "\" has registered no context command \"" + name + "\"" +
                    (toolCommand.empty() ? "" : " with the tool command \"" + toolCommand + "\"") + ".");
    // Refused while one of the tools is at work; the record then stays.
    owner.tools().contextCommands().remove(name);
    plugin.contexts.erase(found);
    unfinished->drop(toolCommand);
    if (!toolCommand.empty())
        removeCommand(plugin, toolCommand);
}

bool PluginRegistry::finalise(MPxToolCommand& command, const std::string& text)
{
    CommandState& state = Api::state(command);
    if (state.finalised)
        return false;
    bool undoable = false;
    guarded(state.name, [&] { undoable = command.isUndoable(); });
    state.finalised = true;
    state.keeper.reset();
    std::unique_ptr<MPxCommand> owned = unfinished->release(command);
    if (!owned)
        owned.reset(&command);
    if (undoable && owner.undo().recording()) {
        const bool named = state.commandString != state.name;
        keepFinalised(owner, std::move(owned), named ? state.commandString : text);
        return true;
    }
    finished.clear();
    finished.push_back(std::move(owned));
    return true;
}

void PluginRegistry::takeBack(Plugin& plugin)
{
    while (!plugin.contexts.empty()) {
        const PluginContext context = plugin.contexts.begin()->second;
        removeContext(plugin, context.name, context.toolCommand);
    }
    while (!plugin.commands.empty())
        removeCommand(plugin, std::string(plugin.commands.begin()->first)); // a copy: the entry goes
}

std::string PluginRegistry::leftovers(const Plugin& plugin) const
{
    std::string names;
    for (const auto& context : plugin.contexts)
        names += (names.empty() ? "" : ", ") + context.first;
    for (const auto& command : plugin.commands)
        names += (names.empty() ? "" : ", ") + command.first;
    return names;
}

void PluginRegistry::removeCallbacks(const Plugin& plugin)
{
    SceneCallbacks& callbacks = owner.tools().callbacks();
    const auto left = callbacks.idsOf([&](SceneCallbacks::Function function) {
        return plugin.library->contains(reinterpret_cast<const void*>(function));
    });
    for (const SceneCallbacks::Id id : left)
        callbacks.remove(id);
    if (!left.empty())
        owner.messages().error("Plug-in \"" + plugin.name + "\" left " + std::to_string(left.size()) +
                               " callback(s) registered. They were removed; on the platform this is fatal.");
}

void PluginRegistry::close(Plugin& plugin)
{
    removeCallbacks(plugin);
    // Leaving, its tool may have recorded what it was about: such a command is code of the plug-in too.
    owner.undo().flush();
    finished.clear();
    const Ref<Plugin> held(&plugin);
    plugins.erase(std::find(plugins.begin(), plugins.end(), held));
    const std::string file = plugin.library->path();
    plugin.library.reset();
    if (isLoadedInProcess(file))
        owner.messages().info("Plug-in \"" + plugin.name +
                              "\" stays in memory; loaded again, it keeps its static data.");
}

} // namespace host
