#include "plugins/unfinishedCommands.h"

#include "plugins/commandState.h"
#include "types/api.h"

#include <maya/MPxCommand.h>

#include <algorithm>
#include <iterator>

namespace host {

UnfinishedCommands::~UnfinishedCommands() = default;

void UnfinishedCommands::keep(std::unique_ptr<MPxCommand> command)
{
    commands.push_back(std::move(command));
}

std::unique_ptr<MPxCommand> UnfinishedCommands::release(const MPxCommand& command)
{
    // A command is finalised soon after it is made.
    const auto found = std::find_if(commands.rbegin(), commands.rend(),
                                    [&](const auto& each) { return each.get() == &command; });
    if (found == commands.rend())
        return nullptr;
    std::unique_ptr<MPxCommand> released = std::move(*found);
    commands.erase(std::next(found).base());
    return released;
}

void UnfinishedCommands::forget(const MPxCommand& command)
{
    std::unique_ptr<MPxCommand> deleted = release(command);
    static_cast<void>(deleted.release()); // its owner is at it
}

void UnfinishedCommands::drop(const std::string& name)
{
    const auto dropped = std::stable_partition(commands.begin(), commands.end(), [&](const auto& command) {
        return Api::state(*command).name != name;
    });
    // They go when they are no longer listed: the end of a command looks itself up.
    const std::vector<std::unique_ptr<MPxCommand>> last(std::make_move_iterator(dropped),
                                                        std::make_move_iterator(commands.end()));
    commands.erase(dropped, commands.end());
}

} // namespace host
