#pragma once

#include <ImathVec.h>

#include <array>
#include <vector>

namespace host {

class Component;
class DagNode;
class Node;
class Session;
struct SelectionItem;
namespace mel {
class CommandRegistry;
}

// Shared by the geometry families.

/// Deformed positions of control points, in component order; object or world space.
std::vector<Imath::V3d> pointPositions(DagNode& shape, const Component* component, bool world);

/// Moves an object, or the control points of a component, to a place or by a step.
struct Placement {
    Imath::V3d value;
    bool relative = false;
    bool world = false;
    std::array<bool, 3> axes = {true, true, true}; ///< which of x, y and z count
};
void moveItem(Session& session, const SelectionItem& item, const Placement& to);

/// Makes one node the active selection, recorded for undo.
void selectOnly(Session& session, Node& node);

void registerTransformCommands(mel::CommandRegistry& registry); ///< joint, move, rotate, scale, xform
void registerXformCommand(mel::CommandRegistry& registry);
void registerPointCommands(mel::CommandRegistry& registry); ///< pointPosition, polyEvaluate

} // namespace host
