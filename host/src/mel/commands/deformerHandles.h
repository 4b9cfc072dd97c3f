#pragma once

#include "nodes/deformerBuild.h"

#include <ImathBox.h>
#include <ImathVec.h>

#include <vector>

namespace host {

// Deformers that are moved by objects of their own: cluster, softMod, lattice.

/// The box around the points that are to be moved, in world space, and its middle. Throws host::Error for a
/// shape without points.
Imath::Box3d boxAround(const std::vector<DeformedShape>& shapes);
Imath::V3d centreOf(const std::vector<DeformedShape>& shapes);

struct HandleNames {
    const char* type;       ///< node type of the handle's shape
    const char* transforms; ///< its output
    const char* received;   ///< the deformer's input for it
};

/// A transform "...Handle" with the handle's shape, pivots at `centre`, connected to the deformer. Recorded.
Node& createHandle(Session& session, Node& deformer, const Imath::V3d& centre, const HandleNames& names);

} // namespace host
