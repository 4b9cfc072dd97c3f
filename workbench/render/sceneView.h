#pragma once

#include "render/shader.h"

#include <ImathVec.h>

#include <vector>

namespace host {
class Session;
}

namespace workbench {

/// The scene as triangles, lines and points in world space, in the order in which they are drawn: grid,
/// surfaces, lines on them, points.
struct SceneView {
    struct Shape {
        std::vector<DrawVertex> vertices;
        std::vector<unsigned> indices; ///< three per triangle or two per line
    };
    Shape grid;
    Shape surfaces;
    Shape lines;
    std::vector<DrawVertex> points;

    /// A joint and, unless it has no joint above it, the bone from there. Drawn over everything.
    struct Bone {
        Imath::V3d from, to;
        bool hasParent = false;
        bool selected = false;
        bool highlighted = false; ///< the influence being edited
    };
    std::vector<Bone> bones;
};

SceneView viewOf(host::Session& session);

} // namespace workbench
