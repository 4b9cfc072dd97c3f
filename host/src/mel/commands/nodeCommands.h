#pragma once

namespace host {
namespace mel {
class CommandRegistry;
}

// The families that registerNodeCommands is made of.
void registerAttributeCommands(
    mel::CommandRegistry& registry); ///< setAttr, addAttr, aliasAttr, deleteAttr ...
void registerConnectionCommands(mel::CommandRegistry& registry); ///< connectAttr, disconnectAttr
void registerHierarchyCommands(mel::CommandRegistry& registry);  ///< parent, duplicate

} // namespace host
