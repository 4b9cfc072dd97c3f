#pragma once

#include <cstddef>
#include <vector>

namespace workbench {

/// What one parameter of a spline takes from its control points: `values.size()` of them from `first` on.
struct BasisSample {
    std::size_t first = 0;
    std::vector<double> values;
    std::vector<double> slopes; ///< derivatives of the values by the parameter
    bool atKnot = false;        ///< a span begins or ends here
};

/// Samples along one direction of a spline with `count` control points: both ends of every span and
/// `perSpan - 1` between. Knots are as files hold them, without the outermost two. Empty when the numbers do
/// not make a spline.
std::vector<BasisSample> basisSamples(int degree, const std::vector<double>& knots, int count, int perSpan);

} // namespace workbench
