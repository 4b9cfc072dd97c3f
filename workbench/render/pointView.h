#pragma once

#include "render/sceneView.h"
#include "render/shapeView.h"
#include "render/weightMap.h"

namespace workbench {

/// What joins the control points of a curve, surface or lattice.
void addCage(SceneView& view, const ShapeView& shape);
/// The points of a shape that are worth showing: control points of curves, surfaces and lattices, coloured by
/// the weights if there are any, vertices of a mesh whose points are being edited, and everything that is
/// selected, in the colour of its falloff.
void addPoints(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights);

} // namespace workbench
