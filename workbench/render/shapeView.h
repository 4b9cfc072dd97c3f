#pragma once

#include "nodes/geometry.h"
#include "render/colors.h"
#include "render/shader.h"
#include "view/viewport.h"

#include <ImathVec.h>

#include <map>
#include <set>
#include <vector>

namespace host {
class DagNode;
class Node;
class Session;
} // namespace host

namespace workbench {

/// Falloff of each point of a shape, 0 for points that are not selected; empty when none is.
using PointFalloff = std::vector<float>;

/// What the selection says about how things look.
struct Highlights {
    std::set<const host::Node*> wholeNodes;
    std::map<const host::DagNode*, PointFalloff> points;
    std::map<const host::DagNode*, std::vector<int>> preselection;

    const PointFalloff& pointsOf(const host::DagNode& shape) const;
    std::vector<int> preselectedOf(const host::DagNode& shape) const;
};

/// The selection with its soft part and mirrored part.
Highlights highlightsOf(host::Session& session);

/// A geometry shape on its way to the picture. Points are in object space; `world` are the same in world
/// space.
struct ShapeView {
    const host::DagNode& node;
    const host::Geometry& geometry;
    std::vector<Imath::V3d> world;
    const PointFalloff& falloff;
    std::vector<int> preselected; ///< points under the pointer
    bool selected;                ///< as a whole
    /// 1 where the shape's edges are long on the screen, less where they crowd: what is drawn on every edge
    /// and point must be fainter then, so that the shading still shows.
    float clarity;
};

/// `unit` is how many port pixels the painter's own pixel is.
float clarityOf(const host::Geometry& geometry, const std::vector<Imath::V3d>& world,
                const host::ViewProjection& projection, double unit);

DrawVertex drawVertex(const Imath::V3d& position, const Color& color, float size = 1.0F);

} // namespace workbench
