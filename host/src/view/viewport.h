#pragma once

#include "graph/node.h"

#include <ImathMatrix.h>
#include <ImathVec.h>

#include <string>

namespace host {

class Session;

/// World to pixels for many points: what Viewport::project does, taken once.
struct ViewProjection {
    Imath::M44d toClip;
    double width, height;

    /// Unrounded pixels and depth (0 at the near plane, 1 at the far plane); false when behind the camera.
    bool project(const Imath::V3d& world, Imath::V3d& pixelsAndDepth) const;
    /// Whether such a point lies in the port, its border included, and between the clipping planes.
    bool shows(const Imath::V3d& pixelsAndDepth) const;
    friend bool operator==(const ViewProjection& a, const ViewProjection& b)
    {
        return a.toClip == b.toClip && a.width == b.width && a.height == b.height;
    }
};

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

    /// Both are the identity when there is no camera. Scaling of the camera's transforms does not count.
    Imath::M44d viewMatrix() const;       ///< world -> camera, row vectors
    Imath::M44d projectionMatrix() const; ///< camera -> clip; OpenGL conventions (z -1 near, 1 far)

    /// World point to port pixels, rounded to the nearest whole pixel. False when it is clipped:
    /// behind the camera, outside the port or beyond the clipping planes (x, y are then still set where the
    /// projection exists).
    bool worldToView(const Imath::V3d& world, short& x, short& y) const;
    ViewProjection projection() const;
    /// Unrounded pixels and depth (0 near .. 1 far); false when behind the camera or there is none.
    bool project(const Imath::V3d& world, Imath::V3d& pixelsAndDepth) const;
    void viewToWorld(double x, double y, Imath::V3d& nearPoint, Imath::V3d& farPoint) const;
    /// Moves the camera so that the box fills the view (viewFit), keeping its direction.
    void frame(const Imath::V3d& low, const Imath::V3d& high);

private:
    Session& owner;
    Ref<DagNode> cameraShape;
};

} // namespace host
