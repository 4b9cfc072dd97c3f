#pragma once

#include "plugins/pluginCommand.h"
#include "plugins/pluginLibrary.h"
#include "types/object.h"

#include <map>
#include <memory>
#include <string>

namespace host {

/// A context command that a plug-in registered, with the tool command of its contexts if it has one.
struct PluginContext {
    std::string name;
    std::string toolCommand; ///< empty when it was registered without one
};

/// One loaded plug-in: what its entry points get as an MObject. It is alive from before initializePlugin to
/// after uninitializePlugin; the registry owns it.
class Plugin final : public Object {
public:
    Plugin(std::string pluginName, std::unique_ptr<PluginLibrary> loaded)
        : name(std::move(pluginName)), library(std::move(loaded))
    {}

    MFn::Type apiType() const override { return MFn::kPlugin; }
    bool hasFn(MFn::Type type) const override { return type == MFn::kPlugin || type == MFn::kBase; }
    bool alive() const override { return library != nullptr; }

    const std::string name;
    bool described = false; ///< vendor and version have been told
    std::string vendor = "Unknown";
    std::string version = "Unknown";
    std::string requiredApi = "Any";
    std::map<std::string, PluginCommand> commands; ///< tool commands too
    std::map<std::string, PluginContext> contexts;
    std::unique_ptr<PluginLibrary> library; ///< null once unloaded
    int running = 0;                        ///< calls of its commands that have not returned yet
};

} // namespace host
