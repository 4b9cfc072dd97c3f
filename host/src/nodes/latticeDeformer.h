#pragma once

#include "nodes/geometry.h"

#include <optional>

namespace host {

/// Free-form deformation: a lattice of control points over the unit cube around the origin, every point of
/// it reaching everything inside. A place (s, t, u) of the cube, each 0..1, goes to the sum over all lattice
/// points of B(i, s) B(j, t) B(k, u) P(i, j, k) with the Bernstein polynomials of degree divisions - 1.
class FreeForm {
public:
    explicit FreeForm(std::shared_ptr<const LatticeData> controlPoints) : lattice(std::move(controlPoints)) {}

    /// Where a place in the space of the base cube goes, in the space of the lattice; nothing outside the
    /// cube.
    std::optional<Imath::V3d> at(const Imath::V3d& place) const;

private:
    std::shared_ptr<const LatticeData> lattice;
};

} // namespace host
