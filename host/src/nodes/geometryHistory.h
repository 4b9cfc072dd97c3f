#pragma once

#include "graph/plug.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace host {

class DagNode;
class Node;

// The one walk along the geometry of a scene: from deformer to deformer, through what cuts groups of points
// out of it and through intermediate shapes. Circles end it.

/// A connection through which geometry comes.
struct GeometryStep {
    Plug source, input;
    Node& node() const { return *source.node(); } ///< what the geometry comes from
    /// Which geometry of that node it is.
    std::uint32_t index() const { return source.isElement() ? source.logicalIndex() : 0; }
    bool fromFilter() const; ///< the node is a deformer
    bool fromShape() const;
};

/// What leads to an input, the nearest step first.
struct GeometryHistory {
    explicit GeometryHistory(const Plug& input);
    /// Of a shape with control points; nothing leads to other nodes.
    explicit GeometryHistory(Node& shape);

    /// Throws host::Error when it runs in a circle: nothing can be put in or taken away there.
    void requireEnd() const;

    std::vector<GeometryStep> steps; ///< those of a circle once
    bool circular = false;

private:
    void follow(Plug input);
};

/// The plug from which a node has the geometry that leaves by one of its outputs; null when the node makes
/// it, or is none that geometry goes through.
Plug geometryInput(const Plug& output);

/// The deformers between a shape and the next shape behind it, the last one first. Throws host::Error when
/// they work in a circle.
std::vector<Node*> deformersOf(Node& shape);
/// Which geometry of a deformer is on the way between a shape and the next shape behind it; none when the
/// deformer does not deform the shape.
std::optional<std::uint32_t> indexInHistory(Node& shape, const Node& deformer);

/// The shape at the end of what an output of a deformer feeds, and the nearest behind an input, also through
/// nodes that nobody knows; null when there is none.
DagNode* shapeFedBy(const Plug& output);
DagNode* shapeBehind(const Plug& input);

} // namespace host
