#pragma once

#include "render/overlayPen.h"
#include "render/sceneView.h"
#include "render/textLayout.h"

namespace host {
class Session;
}

namespace workbench {

/// Where the scale of the weight colours stands.
struct LegendPlace {
    bool shown = false;
    Box bar, outsiders; ///< the second has no size when there are no points without weight
};
LegendPlace legendPlace(const OverlayFrame& frame, const SceneView& view);

/// The height of the status line along the lower edge, picture pixels.
float statusHeight(const OverlayFrame& frame);
/// The corner in which the directions of the world's axes are drawn.
Box axesBox(const OverlayFrame& frame);

/// All texts of the picture, none over another: status line, legend and heads-up displays first, then the
/// tool's labels by their rank and the nearer ones first, as far as there is room. A text that is too long
/// for its place is cut short.
std::vector<PlacedText> placeTexts(const OverlayFrame& frame, host::Session& session, const SceneView& view);

} // namespace workbench
