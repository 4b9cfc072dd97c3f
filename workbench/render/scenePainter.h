#pragma once

#include "render/sceneView.h"

#include <ImathMatrix.h>

namespace workbench {

/// Draws a view of the scene into the current frame buffer, background first. Needs a current context.
void paintScene(const SceneView& view, const Imath::M44d& toCamera, const Imath::M44d& toClip);

} // namespace workbench
