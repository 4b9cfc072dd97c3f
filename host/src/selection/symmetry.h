#pragma once

#include "selection/selectionState.h"

#include <vector>

namespace host {

class DagNode;

/// Which vertex of a mesh mirrors which, by the displayed positions: in the shape's own space about its
/// origin, or in world space about the world's. The mirror image of a vertex is the vertex nearest to its
/// mirrored position, at most the tolerance away.
class MirrorMap {
public:
    /// Throws host::Error for topological symmetry.
    MirrorMap(DagNode& mesh, const SymmetryOptions& options);

    /// The mirror image of a vertex; itself on the seam; -1 when there is none or no such vertex.
    int of(int vertex) const { return has(vertex) ? images[static_cast<std::size_t>(vertex)] : -1; }
    /// On the seam or on the side where the coordinate is positive.
    bool onPositiveSide(int vertex) const
    {
        return has(vertex) && positive[static_cast<std::size_t>(vertex)];
    }

private:
    bool has(int vertex) const { return vertex >= 0 && static_cast<std::size_t>(vertex) < images.size(); }

    std::vector<int> images;
    std::vector<bool> positive;
};

} // namespace host
