#pragma once

#include "graph/node.h"

#include <ImathMatrix.h>
#include <ImathVec.h>

#include <string>

namespace host {

class Session;

/// The one model panel ("modelPanel4") and its camera. Pixels count from the lower left corner of the port;
/// a pixel (x, y) is the position x, y itself (no half-pixel shift), as worldToView rounds to whole pixels.
class Viewport {
public:
    explicit Viewport(Session& session);

    int width = 960, height = 540;

    /// The camera shape looked through (lookThru); "perspShape" by default. Null when it was deleted.
    DagNode* camera() const;
    void lookThrough(DagNode& cameraShape);
    void resetCamera(); ///< back to the default perspective camera, for a new scene

    Imath::M44d viewMatrix() const;       ///< world -> camera, row vectors
    Imath::M44d projectionMatrix() const; ///< camera -> clip; OpenGL conventions (z -1 near, 1 far)

    /// World point to port pixels, rounded to the nearest whole pixel. False when behind the camera or
    /// outside the port (x, y are then still set where the projection exists).
    bool worldToView(const Imath::V3d& world, short& x, short& y) const;
    /// Unrounded pixels and depth (0 near .. 1 far); false when behind the camera.
    bool project(const Imath::V3d& world, Imath::V3d& pixelsAndDepth) const;
    void viewToWorld(double x, double y, Imath::V3d& nearPoint, Imath::V3d& farPoint) const;
    /// Moves the camera so that the box fills the view (viewFit), keeping its direction.
    void frame(const Imath::V3d& low, const Imath::V3d& high);

private:
    Session& owner;
    Ref<DagNode> cameraShape;
};

} // namespace host
