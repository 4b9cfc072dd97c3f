#pragma once

#include "render/sceneView.h"
#include "render/shapeView.h"
#include "render/weightMap.h"

namespace workbench {

/// A curve as a line, a surface as shaded faces with a line at every knot; coloured by the weights if there
/// are any, as the control points share them out. False, and nothing is added, when the shape's numbers make
/// no spline. Trims are not drawn.
bool addCurve(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights);
bool addSurface(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights);

} // namespace workbench
