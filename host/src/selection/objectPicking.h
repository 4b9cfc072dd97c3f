#pragma once

#include "selection/picking.h"

namespace host {

// The object-mode halves of pickPoint and pickRectangle (selection/picking.h): transforms under a pixel or in
// a marquee whose corners are in order. There must be a camera.

/// Whether a click may take it: visible, and no template or reference by its own or an ancestor's drawing
/// override; the override nearest to the node counts.
bool isPickable(const DagNode& node);
SelectionList pickObject(Session& session, double x, double y, bool visibleOnly);
SelectionList pickObjects(Session& session, const PixelRectangle& box, bool visibleOnly);

} // namespace host
