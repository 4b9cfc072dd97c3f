// loadPlugin, unloadPlugin and pluginInfo.

#include "mel/command.h"
#include "mel/commands/register.h"
#include "mel/interpreter.h"
#include "messages.h"
#include "plugins/pluginRegistry.h"
#include "session.h"
#include "types/error.h"

namespace host {

namespace {

using mel::Args;
using mel::CommandSpec;
using mel::StringArray;
using mel::Value;

StringArray namesOf(const std::vector<Ref<Plugin>>& plugins)
{
    StringArray names;
    for (const Ref<Plugin>& plugin : plugins)
        names.push_back(plugin->name);
    return names;
}

Plugin& named(Session& session, const std::string& name)
{
    Plugin* const plugin = session.plugins().find(name);
    if (!plugin)
        throw Error("pluginInfo: the plug-in '" + name + "' is not loaded.");
    return *plugin;
}

Value loadPlugin(Session& session, const Args& args)
{
    session.mel().requireOutside("loadPlugin");
    StringArray loaded;
    for (const std::string& name : args.objectNames()) {
        if (Plugin* const present = session.plugins().find(name)) {
            if (!args.isSet("quiet"))
                session.messages().warning("Plug-in, \"" + present->name + "\", is already loaded.");
            continue;
        }
        loaded.push_back(session.plugins().load(name).name);
    }
    return loaded;
}

Value unloadPlugin(Session& session, const Args& args)
{
    StringArray unloaded;
    for (const std::string& name : args.objectNames()) {
        Plugin* const plugin = session.plugins().find(name);
        if (!plugin)
            throw Error("unloadPlugin: the plug-in '" + name + "' is not loaded.");
        unloaded.push_back(plugin->name);
        session.plugins().unload(unloaded.back(), args.isSet("force"));
    }
    return unloaded;
}

StringArray commandsOf(const Plugin& plugin)
{
    StringArray names;
    for (const auto& command : plugin.commands)
        names.push_back(command.first);
    return names;
}

StringArray toolsOf(const Plugin& plugin)
{
    StringArray names;
    for (const auto& context : plugin.contexts)
        names.push_back(context.first);
    return names;
}

Value pluginInfo(Session& session, const Args& args)
{
    if (!args.query())
        throw Error("pluginInfo: only query mode is supported; use -query.");
    if (args.isSet("listPlugins"))
        return namesOf(session.plugins().all());
    if (args.objects().empty())
        throw Error("pluginInfo: name a plug-in, or use -listPlugins.");
    const std::string name = args.objectNames().front();
    const bool loaded = session.plugins().find(name) != nullptr;
    if (args.isSet("loaded") || args.isSet("registered"))
        return loaded;
    const Plugin& plugin = named(session, name);
    if (args.isSet("name"))
        return plugin.name;
    if (args.isSet("path"))
        return plugin.library->path();
    if (args.isSet("vendor"))
        return plugin.vendor;
    if (args.isSet("version"))
        return plugin.version;
    if (args.isSet("apiVersion"))
        return plugin.library->apiVersion();
    if (args.isSet("command"))
        return commandsOf(plugin);
    if (args.isSet("tool"))
        return toolsOf(plugin);
    if (args.isSet("unloadOk"))
        return plugin.running == 0;
    throw Error("pluginInfo: say what to query.");
}

} // namespace

void registerPluginCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("loadPlugin").flag("qt", "quiet").objects(1), loadPlugin);
    registry.add(CommandSpec("unloadPlugin").flag("f", "force").objects(1), unloadPlugin);
    registry.add(CommandSpec("pluginInfo")
                     .flag("ls", "listPlugins")
                     .flag("l", "loaded")
                     .flag("r", "registered")
                     .flag("n", "name")
                     .flag("p", "path")
                     .flag("vd", "vendor")
                     .flag("v", "version")
                     .flag("av", "apiVersion")
                     .flag("c", "command")
                     .flag("t", "tool")
                     .flag("uo", "unloadOk")
                     .query()
                     .objects(0, 1),
                 pluginInfo);
}

} // namespace host
