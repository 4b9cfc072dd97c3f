#pragma once

#include "render/drawScale.h"
#include "render/sceneView.h"

#include <ImathMatrix.h>

namespace workbench {

/// What a camera shows and on how many pixels.
struct CameraView {
    Imath::M44d toCamera, toClip;
    double width, height; ///< of the frame buffer, pixels
};

/// Draws a view of the scene into the current frame buffer, background first. Needs a current context.
void paintScene(const SceneView& view, const CameraView& camera, const DrawScale& scale);

} // namespace workbench
