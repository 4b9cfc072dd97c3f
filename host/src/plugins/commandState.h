#pragma once

#include "plugins/syntax.h"

#include <memory>
#include <string>

namespace host {

class UnfinishedCommands;

/// What stands behind an MPxCommand. Filled by whoever made the object by a registered creator.
struct CommandState {
    std::string name;                     ///< under which the command is registered
    std::shared_ptr<const Syntax> syntax; ///< null when it was registered without one
    std::string commandString;            ///< the name unless the command set another text
    bool history = true;
    std::weak_ptr<UnfinishedCommands> keeper; ///< of a tool command until it is finalised
    bool finalised = false;                   ///< a tool command that was handed over to the undo queue
};

} // namespace host
