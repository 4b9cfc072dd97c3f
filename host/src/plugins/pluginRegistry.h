#pragma once

#include "plugins/plugin.h"

#include <maya/MApiNamespace.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

class Session;
class UnfinishedCommands;

/// The plug-ins of a session: loading and unloading shared libraries, and what they registered.
/// Its end unloads all of them by force.
class PluginRegistry {
public:
    explicit PluginRegistry(Session& session);
    ~PluginRegistry();
    PluginRegistry(const PluginRegistry&) = delete;
    PluginRegistry& operator=(const PluginRegistry&) = delete;

    /// Where plug-ins given by name alone are looked for, after the folders of MAYA_PLUG_IN_PATH.
    void addFolder(const std::string& folder);
    /// The file of a plug-in given by path or by name, with or without ".so"; empty when there is none.
    std::string fileOf(const std::string& pathOrName) const;

    /// Loads and initialises. Throws host::Error that names the file and the reason: a file that cannot be
    /// opened or is no plug-in, a name that is taken, an initializePlugin that fails or throws. Nothing that
    /// it registered stays then.
    Plugin& load(const std::string& pathOrName);
    /// Uninitialises and closes. The undo queue is emptied first: it may hold commands of the plug-in.
    /// Throws host::Error, and the plug-in stays loaded, when uninitializePlugin fails or throws, or leaves
    /// commands or contexts registered; `force` removes those instead. It is refused while one of its
    /// commands runs. Callbacks that the plug-in leaves behind are removed and reported as an error, since on
    /// the platform they crash.
    void unload(const std::string& name, bool force = false);
    /// The program ends: every plug-in goes, the last one first, and none is asked to uninitialize, as on the
    /// platform. Callbacks that an exit callback should have removed are reported; what fails is reported and
    /// its library kept open.
    void leaveAll();

    /// By name or by path; null when it is not loaded.
    Plugin* find(const std::string& nameOrPath) const;
    /// In the order in which they were loaded.
    const std::vector<Ref<Plugin>>& all() const { return plugins; }

    // What MFnPlugin does. All throw host::Error: names that are taken or not registered by this plug-in.
    void addCommand(Plugin& plugin, PluginCommand command);
    void removeCommand(Plugin& plugin, const std::string& name);
    /// `toolCommand` has no creator when there is none.
    void addContext(Plugin& plugin, const std::string& name, PluginCreator creator,
                    PluginCommand toolCommand);
    void removeContext(Plugin& plugin, const std::string& name, const std::string& toolCommand);

    /// Hands a tool command over to the undo queue, as an entry named by the command string, when the command
    /// has set one, or else by `text`. False when it was handed over before. Throws host::Error, and the
    /// caller keeps it, when it cannot be asked whether it is undoable. One that is not undoable, or that
    /// nobody records, is kept until the next one: its caller still runs in it.
    bool finalise(MPxToolCommand& command, const std::string& text);

private:
    void takeBack(Plugin& plugin);
    std::string leftovers(const Plugin& plugin) const;
    void removeCallbacks(const Plugin& plugin);
    void close(Plugin& plugin);

    Session& owner;
    std::vector<Ref<Plugin>> plugins;
    std::vector<std::string> folders;
    std::shared_ptr<UnfinishedCommands> unfinished; ///< tool commands, by the commands that know their keeper
    std::vector<std::unique_ptr<MPxCommand>> finished; ///< finalised but not undoable
};

} // namespace host
