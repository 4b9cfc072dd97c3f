#include "render/nurbsBasis.h"

#include <algorithm>

namespace workbench {

namespace {

/// The values of the splines of a degree that are not zero in the span that begins at knot `span`.
std::vector<double> basisValues(const std::vector<double>& knots, std::size_t span, std::size_t degree,
                                double at)
{
    std::vector<double> values(degree + 1, 0.0);
    values[0] = 1.0;
    for (std::size_t level = 1; level <= degree; ++level) {
        double carried = 0.0;
        for (std::size_t low = 0; low < level; ++low) {
            const double right = knots[span + low + 1], left = knots[span + low + 1 - level];
            const double share = right > left ? values[low] / (right - left) : 0.0;
            values[low] = carried + (right - at) * share;
            carried = (at - left) * share;
        }
        values[level] = carried;
    }
    return values;
}

/// Their derivatives, from the values one degree lower.
std::vector<double> basisSlopes(const std::vector<double>& knots, std::size_t span, std::size_t degree,
                                double at)
{
    const std::vector<double> lower = basisValues(knots, span, degree - 1, at);
    std::vector<double> slopes(degree + 1, 0.0);
    for (std::size_t k = 0; k < degree; ++k) {
        const double width = knots[span + k + 1] - knots[span + k + 1 - degree];
        const double slope = width > 0.0 ? static_cast<double>(degree) * lower[k] / width : 0.0;
        slopes[k] -= slope;
        slopes[k + 1] += slope;
    }
    return slopes;
}

bool makesSpline(int degree, const std::vector<double>& knots, int count)
{
    return degree >= 1 && count > degree && knots.size() == static_cast<std::size_t>(count + degree - 1) &&
           std::is_sorted(knots.begin(), knots.end());
}

} // namespace

std::vector<BasisSample> basisSamples(int degree, const std::vector<double>& knots, int count, int perSpan)
{
    if (!makesSpline(degree, knots, count))
        return {};
    std::vector<double> full = {knots.front()};
    full.insert(full.end(), knots.begin(), knots.end());
    full.push_back(knots.back());
    const auto order = static_cast<std::size_t>(degree), points = static_cast<std::size_t>(count);
    std::vector<BasisSample> samples;
    const auto add = [&](std::size_t span, double at, bool atKnot) {
        samples.push_back(
            {span - order, basisValues(full, span, order, at), basisSlopes(full, span, order, at), atKnot});
    };
    std::size_t last = 0;
    for (std::size_t span = order; span < points; ++span) {
        const double from = full[span], to = full[span + 1];
        if (!(to > from))
            continue;
        for (int step = 0; step < perSpan; ++step)
            add(span, from + (to - from) * step / perSpan, step == 0);
        last = span;
    }
    if (last != 0)
        add(last, full[last + 1], true);
    return samples;
}

} // namespace workbench
