#pragma once

#include "selection/selectionList.h"

namespace host {

class Session;

/// Two opposite corners in port pixels, in any order.
struct PixelRectangle {
    double x1, y1, x2, y2;
};

// What lies on the screen, under the session's selection mode and view. In component mode: vertices, CVs and
// lattice points of all visible shapes, ascending, one item per shape in scene order. In object mode:
// transforms, by their shapes, joints by their position; cameras cannot be picked. `visibleOnly` leaves out
// points that a mesh hides from the camera. Without a camera nothing is picked.

/// A click. Component mode: the one point nearest to the pixel, at most clickBoxSize pixels away; of points
/// equally near the one nearest to the camera. Object mode: a joint or other object without a surface within
/// that distance; else the mesh in front at the pixel (visibleOnly), or the one whose wireframe is nearest.
/// Curves are picked by their control polygons, surfaces and lattices by their points.
SelectionList pickPoint(Session& session, double x, double y, bool visibleOnly);

/// A marquee: every point inside, its border included. Object mode: objects with a point inside, and meshes
/// in front at the marquee's corners or middle (visibleOnly) or with an edge through it.
SelectionList pickRectangle(Session& session, const PixelRectangle& rectangle, bool visibleOnly);

/// Sets the pre-selection highlight for a mouse position: the visible mesh vertex that a click would take.
/// Empty in object mode and while the preference is off.
void updatePreselection(Session& session, double x, double y);

} // namespace host
