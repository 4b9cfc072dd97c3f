#pragma once

#include <map>
#include <string>
#include <vector>

namespace host {

/// A command that a person defined: run by its name in a script or through a hot key.
struct RunTimeCommand {
    std::string annotation, label, category, command, language = "mel", hotkeyContext, plugIn, tags, image;
    bool isDefault = false; ///< not kept in the preferences
};

/// The named object that a hot key runs.
struct NameCommand {
    std::string annotation, command, sourceType = "mel";
};

struct NamedCommands {
    std::map<std::string, RunTimeCommand> runTime; ///< also registered as MEL commands of the same name
    std::map<std::string, NameCommand> byName;
};

} // namespace host
