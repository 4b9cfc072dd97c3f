#pragma once

#include "render/sceneView.h"
#include "render/shapeView.h"

namespace workbench {

/// A curve, surface or lattice: its control polygon, control net or cage.
void addControlShape(SceneView& view, const ShapeView& shape);
/// The points of a shape that are worth showing: control points of curves, surfaces and lattices, vertices of
/// a mesh whose points are being edited, and everything that is selected, in the colour of its falloff.
void addPoints(SceneView& view, const ShapeView& shape);

} // namespace workbench
