#include "messages.h"
#include "plugins/guard.h"
#include "plugins/pluginRegistry.h"
#include "session.h"
#include "types/api.h"
#include "types/error.h"

#define MNoVersionString
#include <maya/MFnPlugin.h>
#include <maya/MSyntax.h>

#include <utility>

namespace {

using host::Plugin;

/// The plug-in that a function set is attached to, if it is loaded; else null, with a failing status.
Plugin* pluginOf(const MFnBase& set, MStatus* status = nullptr)
{
    auto* plugin = dynamic_cast<Plugin*>(host::Api::object(set));
    const bool usable = plugin && plugin->alive();
    host::report(status, usable ? MStatus::kSuccess : MStatus::kFailure);
    return usable ? plugin : nullptr;
}

/// Runs a registration; what the registry refuses is shown and becomes a failing status.
MStatus attempt(const MFnBase& set, const std::function<void(host::PluginRegistry&, Plugin&)>& change)
{
    host::Session* session = host::Session::currentOrNull();
    Plugin* plugin = pluginOf(set);
    if (!session || !plugin)
        return MStatus::kFailure;
    try {
        change(session->plugins(), *plugin);
    } catch (const host::Error& error) {
        session->messages().error(error.what());
        return MStatus::kFailure;
    }
    return MStatus::kSuccess;
}

host::PluginCommand commandFrom(const MString& name, MCreatorFunction creator, MCreateSyntaxFunction syntax)
{
    host::PluginCommand command;
    command.name = name.asChar();
    command.creator = creator;
    if (command.name.empty() || !creator)
        throw host::Error("A command needs a name and a creator.");
    if (syntax)
        host::guarded(command.name, [&] {
            command.syntax = std::make_shared<const host::Syntax>(host::Api::syntax(syntax()));
        });
    return command;
}

} // namespace

MFnPlugin::MFnPlugin() = default;

MFnPlugin::MFnPlugin(MObject& object, const char* vendor, const char* version, const char* requiredApiVersion,
                     MStatus* status)
{
    const MStatus attached = setObject(object);
    host::report(status, attached);
    Plugin* plugin = pluginOf(*this);
    if (!plugin)
        return;
    // The first set describes the plug-in; others, as uninitializePlugin makes one, only attach to it.
    if (std::exchange(plugin->described, true))
        return;
    if (vendor)
        plugin->vendor = vendor;
    if (version)
        plugin->version = version;
    if (requiredApiVersion)
        plugin->requiredApi = requiredApiVersion;
}

MFnPlugin::~MFnPlugin() = default;

MFn::Type MFnPlugin::type() const
{
    return MFn::kPlugin;
}

MString MFnPlugin::vendor(MStatus* status) const
{
    const Plugin* plugin = pluginOf(*this, status);
    return plugin ? host::Api::wrap(plugin->vendor) : MString();
}

MString MFnPlugin::version(MStatus* status) const
{
    const Plugin* plugin = pluginOf(*this, status);
    return plugin ? host::Api::wrap(plugin->version) : MString();
}

MString MFnPlugin::apiVersion(MStatus* status) const
{
    const Plugin* plugin = pluginOf(*this, status);
    return plugin ? host::Api::wrap(plugin->library->apiVersion()) : MString();
}

MString MFnPlugin::name(MStatus* status) const
{
    const Plugin* plugin = pluginOf(*this, status);
    return plugin ? host::Api::wrap(plugin->name) : MString();
}

MString MFnPlugin::loadPath(MStatus* status) const
{
    const Plugin* plugin = pluginOf(*this, status);
    if (!plugin)
        return {};
    const std::string& file = plugin->library->path();
    return host::Api::wrap(file.substr(0, file.rfind('/')));
}

MObject MFnPlugin::findPlugin(const MString& pluginName)
{
    host::Session* session = host::Session::currentOrNull();
    return session ? host::Api::wrap(session->plugins().find(pluginName.asChar())) : MObject();
}

MStatus MFnPlugin::registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   MCreateSyntaxFunction createSyntaxFunction)
{
    return attempt(*this, [&](host::PluginRegistry& registry, Plugin& plugin) {
        registry.addCommand(plugin, commandFrom(commandName, creatorFunction, createSyntaxFunction));
    });
}

MStatus MFnPlugin::deregisterCommand(const MString& commandName)
{
    return attempt(*this, [&](host::PluginRegistry& registry, Plugin& plugin) {
        registry.removeCommand(plugin, commandName.asChar());
    });
}

MStatus MFnPlugin::registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction)
{
    return attempt(*this, [&](host::PluginRegistry& registry, Plugin& plugin) {
        const host::PluginCommand context = commandFrom(commandName, creatorFunction, nullptr);
        registry.addContext(plugin, context.name, context.creator, {});
    });
}

MStatus MFnPlugin::registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                          const MString& toolCmdName, MCreatorFunction toolCmdCreator,
                                          MCreateSyntaxFunction toolCmdSyntax)
{
    return attempt(*this, [&](host::PluginRegistry& registry, Plugin& plugin) {
        const host::PluginCommand context = commandFrom(commandName, creatorFunction, nullptr);
        registry.addContext(plugin, context.name, context.creator,
                            commandFrom(toolCmdName, toolCmdCreator, toolCmdSyntax));
    });
}

MStatus MFnPlugin::deregisterContextCommand(const MString& commandName)
{
    return deregisterContextCommand(commandName, MString());
}

MStatus MFnPlugin::deregisterContextCommand(const MString& commandName, const MString& toolCmdName)
{
    return attempt(*this, [&](host::PluginRegistry& registry, Plugin& plugin) {
        registry.removeContext(plugin, commandName.asChar(), toolCmdName.asChar());
    });
}
