#include "render/overlayPen.h"

#include <algorithm>
#include <cmath>

namespace workbench {

namespace {

/// The length of the text without its last character, which may be several bytes.
std::size_t oneShorter(const std::string& text)
{
    std::size_t length = text.size() - 1;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        --length;
    return length;
}

} // namespace

ImU32 packed(const Color& color)
{
    return ImGui::ColorConvertFloat4ToU32(ImVec4(color[0], color[1], color[2], color[3]));
}

bool OverlayFrame::onScreen(const Imath::V3d& world, ImVec2& at) const
{
    Imath::V3d pixels;
    if (!projection.project(world, pixels))
        return false;
    at = fromPort(pixels.x, pixels.y);
    return true;
}

ImVec2 OverlayFrame::textSize(const std::string& text, int pixels) const
{
    ImFont* font = fonts.size(pixels);
    return font->CalcTextSizeA(font->FontSize, 1e6F, 0.0F, text.c_str());
}

std::string OverlayFrame::fitted(const std::string& text, int pixels, float width) const
{
    if (textSize(text, pixels).x <= width)
        return text;
    for (std::string shorter = text; !shorter.empty();) {
        shorter.resize(oneShorter(shorter));
        std::string marked = shorter + "...";
        if (textSize(marked, pixels).x <= width)
            return marked;
    }
    return {};
}

void OverlayPen::text(ImVec2 at, const std::string& text, int pixels, const Color& color) const
{
    ImFont* font = fonts.size(pixels);
    at = ImVec2(std::round(at.x), std::round(at.y));
    const ImU32 shade = packed({0.03F, 0.03F, 0.04F, 0.55F * color[3]});
    const float step = std::max(1.0F, std::round(unit()));
    const ImVec2 around[] = {{-step, 0}, {step, 0}, {0, -step}, {0, step}, {step, step}};
    for (const ImVec2& aside : around)
        list.AddText(font, font->FontSize, ImVec2(at.x + aside.x, at.y + aside.y), shade, text.c_str());
    list.AddText(font, font->FontSize, at, packed(color), text.c_str());
}

void OverlayPen::plainText(ImVec2 at, const std::string& text, int pixels, const Color& color) const
{
    ImFont* font = fonts.size(pixels);
    list.AddText(font, font->FontSize, ImVec2(std::round(at.x), std::round(at.y)), packed(color),
                 text.c_str());
}

} // namespace workbench
