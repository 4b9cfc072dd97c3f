#pragma once

#include "nodes/geometry.h"

#include <vector>

namespace workbench {

/// Which corners of a mesh's faces share a normal: those at one vertex that soft edges join. A vertex with
/// hard edges is drawn several times, once for each smooth side.
struct ShadingCorners {
    std::vector<unsigned> drawnOfCorner; ///< drawn vertex of each face corner, in the topology's order
    std::vector<int> vertexOfDrawn;      ///< mesh vertex of each drawn vertex
};

ShadingCorners shadingCornersOf(const host::MeshTopology& topology);

} // namespace workbench
