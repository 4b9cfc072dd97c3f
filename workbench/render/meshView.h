#pragma once

#include "render/sceneView.h"
#include "render/shapeView.h"
#include "render/weightMap.h"

namespace workbench {

/// A mesh: its faces, shaded smoothly across soft edges and coloured by the weights if there are any, and its
/// edges, coloured by the falloff of a soft selection.
void addMesh(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights);

} // namespace workbench
