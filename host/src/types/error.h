#pragma once

#include <stdexcept>
#include <string>

namespace host {

/// A refusal inside the host: the text names the node, plug, command or flag at fault and is shown to the
/// user as it stands. The interface classes turn it into a status; the MEL runner turns it into an error.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace host
