#pragma once

#include <ImathVec.h>

#include <vector>

namespace host {

class Component;
class DagNode;
class Node;
class Session;
namespace mel {
class CommandRegistry;
}

// Shared by the geometry families.

/// Deformed positions of control points, in component order; object or world space.
std::vector<Imath::V3d> pointPositions(DagNode& shape, const Component* component, bool world);

/// Makes one node the active selection, recorded for undo.
void selectOnly(Session& session, Node& node);

void registerTransformCommands(mel::CommandRegistry& registry); ///< joint, xform, move, rotate, scale
void registerPointCommands(mel::CommandRegistry& registry);     ///< pointPosition, polyEvaluate

} // namespace host
