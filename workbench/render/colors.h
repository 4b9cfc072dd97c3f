#pragma once

#include <array>

namespace workbench {

using Color = std::array<float, 4>; ///< red, green, blue, alpha, 0 to 1, as shown (not linear)

constexpr Color kBodyColor = {0.62F, 0.60F, 0.58F, 1.0F};
constexpr Color kOutsiderColor = {0.42F, 0.42F, 0.42F, 1.0F}; ///< points that the deformer leaves alone
constexpr Color kSelectedBodyWire = {0.45F, 0.95F, 0.68F, 0.55F};
constexpr Color kWireColor = {0.07F, 0.09F, 0.13F, 0.30F};
constexpr Color kCurveColor = {0.55F, 0.78F, 1.0F, 1.0F};
constexpr Color kSurfaceColor = {0.52F, 0.57F, 0.64F, 1.0F};
constexpr Color kIsoparmColor = {0.10F, 0.12F, 0.18F, 0.45F};
constexpr Color kHullColor = {0.80F, 0.62F, 0.85F, 0.55F}; ///< what joins control points
constexpr Color kPointColor = {0.62F, 0.48F, 0.90F, 1.0F};
constexpr Color kPreselectionColor = {1.0F, 0.30F, 0.25F, 1.0F};

Color mixed(const Color& a, const Color& b, float share);
/// Falloff of a soft selection: bright yellow at 1, orange and dark red towards 0, transparent at 0.
Color falloffColor(float weight);
/// A weight on the surface: dark blue at 0 over green and yellow to orange at 1. Values outside are clamped.
Color weightColor(float weight);

} // namespace workbench
