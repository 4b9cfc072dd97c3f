#pragma once

#include "layers/layerStack.h"
#include "layers/skinShape.h"

#include <maya/MDoubleArray.h>

#include <map>
#include <vector>

namespace layers {

/// The skin's weights before any layer, one value per vertex.
struct BaseWeights {
    std::map<int, std::vector<double>> influences; ///< by logical index
    std::vector<double> dualQuaternion;
    MDoubleArray composed;  ///< what was written last; kept for its room
    bool isBlended = false; ///< layers have been written over the dual-quaternion weights
};

/// Throws std::runtime_error when the skin cannot be read.
BaseWeights readBase(const SkinShape& shape);

/// Writes base and layers into the skin, so that the shape moves. A layer that holds others counts only
/// through their amounts. Each other layer lies over what is below it: with an amount of a (its opacity and
/// mask, times those of the groups around it) and influence weights that sum to s, what is below counts
/// 1 - a * min(s, 1) and the layer's weights a / max(s, 1). Dual-quaternion weights are mixed by the amount
/// alone; where no layer has any, and none had before, those of the skin are left alone. Nothing is clamped:
/// a weight nudged beyond its range still moves the shape. Throws std::runtime_error when the skin cannot be
/// written.
void compose(const SkinShape& shape, BaseWeights& base, const LayerStack& stack);

} // namespace layers
