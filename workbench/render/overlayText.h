#pragma once

#include "render/overlayPen.h"

namespace host {
class Session;
}

namespace workbench {

constexpr float kStatusHeight = 24.0F; ///< pixels of the status line along the lower edge

/// The labels, lines and marquee of the current tool. Of labels that would cover each other only the one
/// nearest to the camera is drawn, so that what is drawn can be read.
void drawToolDrawing(OverlayPen& pen, host::Session& session);
/// Heads-up displays in their sections.
void drawHeadsUp(OverlayPen& pen, host::Session& session);
/// The tool's help text and name.
void drawStatusLine(OverlayPen& pen, host::Session& session);

} // namespace workbench
