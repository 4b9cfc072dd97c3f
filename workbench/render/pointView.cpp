#include "render/pointView.h"

#include <functional>

namespace workbench {

namespace {

using host::Geometry;

/// Calls back with the pairs of points that the cage of a shape joins.
using Join = std::function<void(int from, int to)>;

void joinCurve(const host::CurveData& curve, const Join& join)
{
    const int count = static_cast<int>(curve.count());
    for (int point = 1; point < count; ++point)
        join(point - 1, point);
    if (curve.form == 1 && count > 2)
        join(count - 1, 0);
}

void joinSurface(const host::SurfaceData& surface, const Join& join)
{
    for (int u = 0; u < surface.numU; ++u) {
        for (int v = 0; v < surface.numV; ++v) {
            const int at = u * surface.numV + v;
            if (u + 1 < surface.numU)
                join(at, at + surface.numV);
            if (v + 1 < surface.numV)
                join(at, at + 1);
        }
    }
}

void joinLattice(const host::LatticeData& lattice, const Join& join)
{
    const int steps[3] = {1, lattice.s, lattice.s * lattice.t};
    const int counts[3] = {lattice.s, lattice.t, lattice.u};
    const int all = counts[0] * counts[1] * counts[2];
    for (int at = 0; at < all; ++at) {
        for (int axis = 0; axis < 3; ++axis) {
            if ((at / steps[axis]) % counts[axis] + 1 < counts[axis])
                join(at, at + steps[axis]);
        }
    }
}

} // namespace

void addCage(SceneView& view, const ShapeView& shape)
{
    const auto first = static_cast<unsigned>(view.lines.vertices.size());
    const bool isLattice = shape.geometry.kind() == Geometry::Kind::kLattice;
    Color color = shape.selected && isLattice ? kSelectedBodyWire : kHullColor;
    // Beside what it shapes the cage of a spline is only a hint.
    color[3] *= isLattice ? 1.0F : 0.5F;
    for (const Imath::V3d& point : shape.world)
        view.lines.vertices.push_back(drawVertex(point, color));
    const Join join = [&](int from, int to) {
        view.lines.indices.push_back(first + static_cast<unsigned>(from));
        view.lines.indices.push_back(first + static_cast<unsigned>(to));
    };
    switch (shape.geometry.kind()) {
    case Geometry::Kind::kCurve:
        joinCurve(static_cast<const host::CurveData&>(shape.geometry), join);
        break;
    case Geometry::Kind::kSurface:
        joinSurface(static_cast<const host::SurfaceData&>(shape.geometry), join);
        break;
    case Geometry::Kind::kLattice:
        joinLattice(static_cast<const host::LatticeData&>(shape.geometry), join);
        break;
    case Geometry::Kind::kMesh:
        break;
    }
}

void addPoints(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights)
{
    constexpr float kControlSize = 5.0F, kVertexSize = 2.4F, kSelectedSize = 6.5F, kPreselectedSize = 9.0F;
    constexpr float kClearEnough = 0.99F;
    const bool isMesh = shape.geometry.kind() == Geometry::Kind::kMesh;
    for (const int point : shape.preselected)
        view.points.push_back(
            drawVertex(shape.world[static_cast<std::size_t>(point)], kPreselectionColor, kPreselectedSize));
    // The vertices of a mesh show while its points are edited, unless they would cover it.
    const bool plainPoints = !isMesh || (!shape.falloff.empty() && shape.clarity > kClearEnough);
    const float plainSize = isMesh ? kVertexSize : kControlSize;
    Color plain = kPointColor;
    plain[3] = isMesh ? 0.55F : 1.0F;
    for (std::size_t point = 0; point < shape.world.size(); ++point) {
        const float falloff = shape.falloff.empty() ? 0.0F : shape.falloff[point];
        if (falloff > 0.0F)
            view.points.push_back(
                drawVertex(shape.world[point], falloffColor(falloff),
                           plainSize + (kSelectedSize - plainSize) * (0.35F + 0.65F * falloff)));
        else if (plainPoints)
            view.points.push_back(drawVertex(shape.world[point],
                                             weights && !isMesh ? weights->color(point) : plain, plainSize));
    }
}

} // namespace workbench
