#pragma once

#include "render/sceneView.h"
#include "render/shapeView.h"

#include <optional>

namespace workbench {

/// A mesh: its faces, smoothly shaded and coloured by the weights if there are any (one per vertex), and its
/// edges, coloured by the falloff of a soft selection.
void addMesh(SceneView& view, const ShapeView& shape, const std::optional<std::vector<double>>& weights);

} // namespace workbench
