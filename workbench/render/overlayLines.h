#pragma once

#include "render/overlayPen.h"
#include "render/overlayText.h"

namespace host {
class Session;
}

namespace workbench {

/// The lines and marquee of the current tool.
void drawToolLines(OverlayPen& pen, host::Session& session);
/// The scale of the weight colours; its numbers are texts.
void drawLegend(OverlayPen& pen, const LegendPlace& place);
/// The ground of the status line.
void drawStatusGround(OverlayPen& pen);

} // namespace workbench
