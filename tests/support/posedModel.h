#pragma once

#include "support/weightModel.h"

namespace testing_support {

/// Where the weights of a model put the points of a shape, in its own space, worked out once more and
/// plainly: the deformers in their order, then the skin, whose hip stands still while knee and toe move as
/// one.
Points posedPoints(const WeightModel& scene, int shape);

} // namespace testing_support
