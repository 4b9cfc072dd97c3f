#pragma once

#include "mel/value.h"

namespace host {

/// What an MCommandResult holds: the value that a command gave, void while nothing has been put in.
struct CommandResult {
    mel::Value value;
};

} // namespace host
