#include "nodes/latticeDeformer.h"

namespace host {

namespace {

/// The Bernstein polynomials of degree count - 1 at x, by raising the degree step by step: only sums of
/// products of numbers between 0 and 1.
std::vector<double> bernstein(int count, double x)
{
    std::vector<double> values(static_cast<std::size_t>(count), 0.0);
    values[0] = 1.0;
    for (std::size_t degree = 1; degree < values.size(); ++degree) {
        for (std::size_t i = degree; i > 0; --i)
            values[i] = (1.0 - x) * values[i] + x * values[i - 1];
        values[0] *= 1.0 - x;
    }
    return values;
}

bool inside(double x)
{
    return x >= 0.0 && x <= 1.0;
}

} // namespace

std::optional<Imath::V3d> FreeForm::at(const Imath::V3d& place) const
{
    const Imath::V3d parameter = place + Imath::V3d(0.5);
    if (!inside(parameter.x) || !inside(parameter.y) || !inside(parameter.z))
        return std::nullopt;
    const std::vector<double> alongS = bernstein(lattice->s, parameter.x);
    const std::vector<double> alongT = bernstein(lattice->t, parameter.y);
    const std::vector<double> alongU = bernstein(lattice->u, parameter.z);
    auto point = lattice->points().begin();
    Imath::V3d sum(0.0);
    for (const double u : alongU)
        for (const double t : alongT)
            for (const double s : alongS)
                sum += s * t * u * *point++;
    return sum;
}

} // namespace host
