#pragma once

#include "support/weightModel.h"

#include <string>

namespace testing_support {

// Where a scene and its model differ, in words. Differences are relative above 1, absolute below.

struct Tolerance {
    double number, skin, layer;
};

bool near(double a, double b, double tolerance);
/// Names the first array that differs by more than the tolerance; empty: none does.
std::string difference(const Weights& a, const Weights& b, const std::vector<ModelShape>& shapes,
                       const Tolerance& tolerance);
/// Empty when they hold the same points with the same falloffs.
std::string difference(const Pieces& a, const Pieces& b);
/// "[0: 3 4][1: 7]": shapes and points.
std::string textOf(const Pieces& pieces);

} // namespace testing_support
