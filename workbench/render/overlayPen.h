#pragma once

#include "render/colors.h"
#include "render/drawScale.h"
#include "render/fonts.h"
#include "render/textLayout.h"
#include "view/viewport.h"

#include <imgui.h>

#include <string>

namespace workbench {

/// What the parts of the overlay measure with. Positions on the screen are picture pixels from the upper left
/// corner.
struct OverlayFrame {
    const Fonts& fonts;
    host::ViewProjection projection; ///< of the port
    DrawScale scale;

    float width() const { return static_cast<float>(projection.width * scale.density); }
    float height() const { return static_cast<float>(projection.height * scale.density); }
    float unit() const { return static_cast<float>(scale.unit); }
    float mark() const { return static_cast<float>(scale.mark); }
    /// From port pixels, which count from the lower left corner.
    ImVec2 fromPort(double x, double y) const
    {
        return {static_cast<float>(x * scale.density),
                static_cast<float>((projection.height - y) * scale.density)};
    }
    /// Where a point of the world is on the screen; false when it is behind the camera.
    bool onScreen(const Imath::V3d& world, ImVec2& at) const;
    /// `pixels` is a size at a scale of 1; the answer is in picture pixels.
    ImVec2 textSize(const std::string& text, int pixels) const;
    /// The text, or as much of its beginning as fits with "..." behind it; empty when not even that fits.
    std::string fitted(const std::string& text, int pixels, float width) const;
};

/// What the parts of the overlay draw with.
struct OverlayPen : OverlayFrame {
    ImDrawList& list;

    OverlayPen(const OverlayFrame& frame, ImDrawList& drawList) : OverlayFrame(frame), list(drawList) {}
    /// Text with a thin dark outline, its upper left corner at `at`.
    void text(ImVec2 at, const std::string& text, int pixels, const Color& color) const;
    /// Text without one, for a calm ground.
    void plainText(ImVec2 at, const std::string& text, int pixels, const Color& color) const;
};

ImU32 packed(const Color& color);

} // namespace workbench
