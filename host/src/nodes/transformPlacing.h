#pragma once

#include <ImathMatrix.h>
#include <ImathVec.h>

namespace host {

class DagNode;
class Session;

// Values of a transform chosen so that it comes to stand as it should. Everything goes through Edits; only
// values that change are set. Throws host::Error where there are none.

/// Translate, rotate, scale and shear for a local or a world matrix; pivots, rotate axis and joint orient
/// stay.
void placeLocally(Session& session, DagNode& node, const Imath::M44d& local);
void placeInWorld(Session& session, DagNode& node, const Imath::M44d& world);

/// The node's rotation in the world without scale and shear, in degrees and in its rotate order.
Imath::V3d worldRotation(DagNode& node);
/// Sets rotate alone.
void turnInWorld(Session& session, DagNode& node, const Imath::V3d& degrees);
/// Its scale in the world, without shear.
Imath::V3d worldScale(DagNode& node);

/// Sets the pivots without moving the node: the pivot translations make up for it.
void setPivots(Session& session, DagNode& node, const Imath::V3d& rotatePivot, const Imath::V3d& scalePivot);
/// The same for points of the world; a null pointer leaves a pivot as it is.
void setWorldPivots(Session& session, DagNode& node, const Imath::V3d* rotatePivot,
                    const Imath::V3d* scalePivot);

} // namespace host
