#pragma once

#include "render/drawScale.h"
#include "render/sceneView.h"
#include "render/textLayout.h"

namespace host {
class Session;
}

namespace workbench {

/// Draws over the current frame buffer what stands in front of the scene: bones, the tool's labels and lines,
/// heads-up displays, the legend of the weight colours, the view's axes and the status line. Needs a current
/// context.
void paintOverlay(host::Session& session, const SceneView& view, const DrawScale& scale);

/// The texts that paintOverlay draws, and where. Needs no context.
std::vector<PlacedText> overlayTexts(host::Session& session, const SceneView& view, const DrawScale& scale);

} // namespace workbench
