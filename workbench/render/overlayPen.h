#pragma once

#include "render/colors.h"
#include "render/fonts.h"
#include "view/viewport.h"

#include <imgui.h>

#include <string>

namespace workbench {

/// What the parts of the overlay draw with. Positions on the screen are pixels from the upper left corner.
struct OverlayPen {
    ImDrawList& list;
    const Fonts& fonts;
    host::ViewProjection projection;

    float width() const { return static_cast<float>(projection.width); }
    float height() const { return static_cast<float>(projection.height); }
    /// From port pixels, which count from the lower left corner.
    ImVec2 fromPort(double x, double y) const
    {
        return {static_cast<float>(x), static_cast<float>(projection.height - y)};
    }
    /// Where a point of the world is on the screen; false when it is behind the camera.
    bool onScreen(const Imath::V3d& world, ImVec2& at) const;
    ImVec2 textSize(const std::string& text, int pixels) const;
    /// Text with a thin dark outline, its upper left corner at `at`.
    void text(ImVec2 at, const std::string& text, int pixels, const Color& color) const;
};

ImU32 packed(const Color& color);

} // namespace workbench
