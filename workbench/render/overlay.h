#pragma once

#include "render/sceneView.h"

namespace host {
class Session;
}

namespace workbench {

/// Draws over the current frame buffer what stands in front of the scene: bones, the tool's labels and lines,
/// heads-up displays, the view's axes and the status line. Needs a current context.
void paintOverlay(host::Session& session, const SceneView& view);

} // namespace workbench
