#pragma once

#include "selection/pointList.h"

#include <maya/MDagPath.h>
#include <maya/MFnBase.h>
#include <maya/MObject.h>

#include <cstdint>

namespace host {

class DagNode;
class Node;

// What the deformer function sets share. All of them throw host::Error.

/// The deformer that a set is attached to.
Node& filterOf(const MFnBase& set);

/// A shape and points of it as a caller of the interface names them: by a path (to the shape or its
/// transform) and a component (null = all points).
struct PointSelection {
    DagNode* shape;
    std::uint32_t index; ///< logical index of the deformer's geometry
    PointList points;    ///< in component order
};

/// Throws when the deformer does not deform the shape or the component is none of its points.
PointSelection pointSelection(Node& filter, const MDagPath& path, const MObject& component);
/// The same with the geometry given by its index.
PointSelection pointSelection(Node& filter, std::uint32_t index, const MObject& component);

} // namespace host
