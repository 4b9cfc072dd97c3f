#include "render/grid.h"

#include "render/shapeView.h"

#include <cmath>

namespace workbench {

namespace {

constexpr int kHalfCells = 12;

void addLine(SceneView::Shape& grid, const Imath::V3d& from, const Imath::V3d& to, Color color)
{
    // In pieces, so that the fading shows along the line too.
    constexpr int kPieces = 2 * kHalfCells;
    for (int piece = 0; piece <= kPieces; ++piece) {
        const Imath::V3d at = from + (to - from) * (static_cast<double>(piece) / kPieces);
        const double away = std::hypot(at.x, at.z) / kHalfCells;
        Color faded = color;
        faded[3] *= static_cast<float>(std::max(0.0, 1.0 - away * away * 0.85));
        const auto index = static_cast<unsigned>(grid.vertices.size());
        grid.vertices.push_back(drawVertex(at, faded));
        if (piece > 0)
            grid.indices.insert(grid.indices.end(), {index - 1, index});
    }
}

} // namespace

void addGrid(SceneView::Shape& grid)
{
    constexpr Color kLine = {0.75F, 0.78F, 0.82F, 0.16F};
    constexpr Color kXAxis = {0.90F, 0.36F, 0.34F, 0.65F};
    constexpr Color kZAxis = {0.36F, 0.56F, 0.95F, 0.65F};
    for (int cell = -kHalfCells; cell <= kHalfCells; ++cell) {
        const double at = cell, half = kHalfCells;
        addLine(grid, {-half, 0, at}, {half, 0, at}, cell == 0 ? kXAxis : kLine);
        addLine(grid, {at, 0, -half}, {at, 0, half}, cell == 0 ? kZAxis : kLine);
    }
}

} // namespace workbench
