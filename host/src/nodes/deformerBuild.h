#pragma once

#include "selection/selectionList.h"

#include <string>
#include <vector>

namespace host {

class DagNode;
class Node;
class Session;

// Deformers wired into a scene with the nodes that the platform puts around them. Everything goes through
// Edits: recorded, and rolled back when it fails. host::Error for what cannot be done.

/// How a deformer knows its points.
enum class Membership {
    kSet,           ///< an object set with groupId and groupParts, as scenes have had it from the beginning
    kComponentTags, ///< all points by the expression "*", no set, as newer scenes have it
};

/// Where and how a new deformer joins the history of its shapes.
struct DeformerPlace {
    Membership membership = Membership::kSet;
    /// Before all other deformers, straight after the tweaks; otherwise last.
    bool frontOfChain = false;
};

/// The points that a deformer is to move on one shape; points empty = all.
struct DeformedShape {
    Ref<DagNode> shape;
    std::vector<int> points;
};

/// The deformable shapes behind a selection: shapes themselves, shapes below transforms, shapes with point
/// components. One entry per shape, in order. Other items are an error.
std::vector<DeformedShape> deformedShapes(const SelectionList& list);

/// Puts `deformer` (a fresh geometryFilter) into the history of every shape: the undeformed shape becomes an
/// intermediate "...Orig" with a tweak node behind it when there is no history yet. Input n and output n of
/// the deformer belong to the n-th shape.
void wireDeformer(Session& session, Node& deformer, const std::vector<DeformedShape>& shapes,
                  const DeformerPlace& place);

/// A new object set of that name (numbered when taken) with these members; components get a groupId.
Node& createSet(Session& session, const std::string& name, const SelectionList& members);
void addToSet(Session& session, Node& set, const SelectionList& members);
/// Takes whole objects and the components of a shape out of a set.
void removeFromSet(Session& session, Node& set, const SelectionList& members);

} // namespace host
