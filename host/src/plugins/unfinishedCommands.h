#pragma once

#include <maya/MApiNamespace.h>

#include <memory>
#include <string>
#include <vector>

namespace host {

/// Tool commands that contexts have made and not finalised. The platform does not say who deletes one that
/// never is, so contexts leave them behind; here they are owned until they are finalised or the context
/// command goes. A context that deletes its own is fine too.
class UnfinishedCommands {
public:
    ~UnfinishedCommands();

    void keep(std::unique_ptr<MPxCommand> command);
    /// Hands the command to the caller; null when it is not among these.
    std::unique_ptr<MPxCommand> release(const MPxCommand& command);
    /// Somebody else is deleting it.
    void forget(const MPxCommand& command);
    /// Deletes those that were registered under the name.
    void drop(const std::string& name);

private:
    std::vector<std::unique_ptr<MPxCommand>> commands; ///< the newest last
};

} // namespace host
