#pragma once

#include "render/overlayPen.h"
#include "render/sceneView.h"

#include <ImathMatrix.h>

namespace workbench {

/// Joints and bones, over everything; the influence being edited stands out.
void drawBones(OverlayPen& pen, const SceneView& view);
/// The directions of the world's axes, in the lower left corner.
void drawAxes(OverlayPen& pen, const Imath::M44d& toCamera);

} // namespace workbench
