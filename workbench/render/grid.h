#pragma once

#include "render/sceneView.h"

namespace workbench {

/// The ground grid, a unit per cell, fading outwards, with the x axis red and the z axis blue.
void addGrid(SceneView::Shape& grid);

} // namespace workbench
