#pragma once

#include "nodes/geometry.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace host {

class DagNode;
class Node;
class Plug;

/// Logical indices of a deformer's geometries, ascending.
std::vector<std::uint32_t> filterIndices(Node& filter);
/// The shape at the end of what a deformer's output feeds, through other deformers; null when there is none.
DagNode* outputShape(Node& filter, std::uint32_t index);
/// The shape at the beginning of the history behind a deformer's input; null when there is none.
DagNode* inputShape(Node& filter, std::uint32_t index);
/// The logical index of the geometry that the deformer changes for a shape.
std::optional<std::uint32_t> filterIndexOf(Node& filter, const DagNode& shape);
/// The object set of a deformer's members; null when it has none.
Node* filterSet(Node& filter);
/// The points of the output shape that the deformer works on, ascending; throws host::Error when there is no
/// such geometry.
std::vector<int> filterMembers(Node& filter, std::uint32_t index);

/// The plug whose three children hold the offset of a control point: of the shape itself, or of the tweak
/// node in its history when there is one. Throws host::Error when the node is no shape with control points.
Plug offsetPlug(DagNode& shape, int point);

} // namespace host
