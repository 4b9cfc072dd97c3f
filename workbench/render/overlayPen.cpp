#include "render/overlayPen.h"

#include <cmath>

namespace workbench {

ImU32 packed(const Color& color)
{
    return ImGui::ColorConvertFloat4ToU32(ImVec4(color[0], color[1], color[2], color[3]));
}

bool OverlayPen::onScreen(const Imath::V3d& world, ImVec2& at) const
{
    Imath::V3d pixels;
    if (!projection.project(world, pixels))
        return false;
    at = fromPort(pixels.x, pixels.y);
    return true;
}

ImVec2 OverlayPen::textSize(const std::string& text, int pixels) const
{
    ImFont* font = fonts.size(pixels);
    return font->CalcTextSizeA(font->FontSize, 1e6F, 0.0F, text.c_str());
}

void OverlayPen::text(ImVec2 at, const std::string& text, int pixels, const Color& color) const
{
    ImFont* font = fonts.size(pixels);
    at = ImVec2(std::round(at.x), std::round(at.y));
    const ImU32 shade = packed({0.03F, 0.03F, 0.04F, 0.55F * color[3]});
    const ImVec2 around[] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}, {1, 1}};
    for (const ImVec2& step : around)
        list.AddText(font, font->FontSize, ImVec2(at.x + step.x, at.y + step.y), shade, text.c_str());
    list.AddText(font, font->FontSize, at, packed(color), text.c_str());
}

} // namespace workbench
