#pragma once

namespace host {
namespace mel {
class CommandRegistry;
}

// The parts of registerInterfaceCommands(), one per source.
void registerHeadsUpCommands(mel::CommandRegistry& registry); ///< headsUpDisplay
void registerHotkeyCommands(mel::CommandRegistry& registry);  ///< hotkeySet, hotkeyCtx, hotkey
void registerNamedCommands(mel::CommandRegistry& registry);   ///< runTimeCommand, nameCommand

} // namespace host
