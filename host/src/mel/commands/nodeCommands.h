#pragma once

#include <string>
#include <vector>

namespace host {
class DagNode;
class Node;
class Session;
namespace mel {
class CommandRegistry;
}

// The families that registerNodeCommands is made of.
void registerAttributeCommands(
    mel::CommandRegistry& registry); ///< setAttr, addAttr, aliasAttr, deleteAttr ...
void registerConnectionCommands(mel::CommandRegistry& registry); ///< connectAttr, disconnectAttr
void registerDeleteCommand(mel::CommandRegistry& registry);      ///< delete
void registerHierarchyCommands(mel::CommandRegistry& registry);  ///< parent, duplicate
void registerGroupCommand(mel::CommandRegistry& registry);       ///< group
void registerVisibilityCommands(mel::CommandRegistry& registry); ///< hide, showHidden
void registerNamespaceCommands(mel::CommandRegistry& registry);  ///< namespace, namespaceInfo

/// The name that the shape of a transform has by custom: body -> bodyShape, body1 -> bodyShape1.
std::string customaryShapeName(const std::string& transform);

/// Deletes nodes. Where a deformer goes, what it deformed goes on without it, and its set and groups go too.
/// A deformer goes with the handle or lattice that moves it. Recorded.
void deleteNodes(Session& session, const std::vector<Node*>& nodes);

/// What a node keeps when it gets another parent: its place in the world, or its own values.
enum class Placing { kAbsolute, kRelative };
/// Puts a node under another one (null = the world). Recorded; throws host::Error.
void moveUnder(Session& session, DagNode& node, DagNode* parent, Placing placing);

} // namespace host
