#pragma once

#include "render/shader.h"

#include <ImathVec.h>

#include <vector>

namespace host {
class Session;
}

namespace workbench {

class PressWatch;

/// The scene as triangles, lines and points in world space, in the order in which they are drawn: grid,
/// surfaces, lines on them, points. Sizes and widths
/// are in the painter's own pixels (render/drawScale.h).
struct SceneView {
    struct Shape {
        std::vector<DrawVertex> vertices;
        std::vector<unsigned> indices; ///< three per triangle or two per line
    };
    Shape grid;
    Shape surfaces;
    Shape lines;  ///< thin ones: edges, cages
    Shape curves; ///< what is itself a line
    std::vector<DrawVertex> points;

    /// A joint and, unless it has no joint above it, the bone from there. Drawn over everything.
    struct Bone {
        Imath::V3d from, to;
        bool hasParent = false;
        bool selected = false;
        bool highlighted = false; ///< the influence being edited
    };
    std::vector<Bone> bones;

    bool showsWeights = false;   ///< some shape is coloured by its weights
    bool showsOutsiders = false; ///< some of its points have none
    /// Which of the tool's labels come first where there is no room for all, one number per label; empty
    /// when that is not known.
    std::vector<float> labelRanks;
};

/// `press` tells which point a stroke began on.
SceneView viewOf(host::Session& session, const PressWatch* press = nullptr);

} // namespace workbench
