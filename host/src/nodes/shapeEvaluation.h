#pragma once

#include "nodes/geometry.h"

#include <string>

namespace host {

class Attribute;
class Node;

/// How a type of geometry shape names what all of them have.
struct ShapeAttributes {
    const char* input;   ///< fed by history: inMesh, create, latticeInput
    const char* stored;  ///< the shape's own geometry, used when nothing feeds it
    const char* offsets; ///< of control points, on top: pnts, controlPoints
    const char* local;   ///< output in object space: outMesh, local, latticeOutput
    const char* world;   ///< output array; carries object space points too, the matrix is the path's
};

/// Null when the node is no shape with control points.
const ShapeAttributes* shapeAttributes(const Node& node);

/// Computes a shape's outputs. What feeds it counts, or its own geometry when nothing does or what feeds it
/// is not evaluated here; then the offsets of its control points, unless a tweak node upstream has them.
void computeShape(Node& node, const Attribute& output);

} // namespace host
