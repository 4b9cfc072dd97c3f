#pragma once

#include "render/sceneView.h"
#include "render/shapeView.h"
#include "view/viewport.h"

#include <optional>

namespace workbench {

/// A mesh: its faces, smoothly shaded and coloured by the weights if there are any (one per vertex), and its
/// edges, coloured by the falloff of a soft selection. Where edges are close together on the screen they are
/// drawn fainter, so that the shading still shows.
void addMesh(SceneView& view, const ShapeView& shape, const host::ViewProjection& projection,
             const std::optional<std::vector<double>>& weights);

} // namespace workbench
