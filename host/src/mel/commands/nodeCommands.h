#pragma once

#include <string>

namespace host {
namespace mel {
class CommandRegistry;
}

// The families that registerNodeCommands is made of.
void registerAttributeCommands(
    mel::CommandRegistry& registry); ///< setAttr, addAttr, aliasAttr, deleteAttr ...
void registerConnectionCommands(mel::CommandRegistry& registry); ///< connectAttr, disconnectAttr
void registerHierarchyCommands(mel::CommandRegistry& registry);  ///< parent, duplicate

/// The name that the shape of a transform has by custom: body -> bodyShape, body1 -> bodyShape1.
std::string customaryShapeName(const std::string& transform);

} // namespace host
