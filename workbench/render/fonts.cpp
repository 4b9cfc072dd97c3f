#include "render/fonts.h"

#include "session.h"
#include "view/drawRecord.h"

#include <imgui.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace workbench {

namespace {

constexpr const char* kFontFile = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr int kLeast = 6, kMost = 96;

} // namespace

Fonts::Fonts(host::Session& session, double unit)
{
    for (const int pixels : {kSmall, kMedium, kLarge})
        add(pixels, unit);
    for (const host::DrawRecord::Text& text : session.drawing().texts)
        add(std::clamp(static_cast<int>(text.fontSize), kLeast, kMost), unit);
}

void Fonts::add(int pixels, double unit)
{
    if (fonts.count(pixels) != 0)
        return;
    ImFontAtlas& atlas = *ImGui::GetIO().Fonts;
    ImFontConfig config;
    config.SizePixels = static_cast<float>(std::round(pixels * unit));
    config.OversampleH = 2;
    config.PixelSnapH = true;
    const bool found = std::filesystem::exists(kFontFile);
    fonts[pixels] = found ? atlas.AddFontFromFileTTF(kFontFile, config.SizePixels, &config)
                          : atlas.AddFontDefault(&config);
}

ImFont* Fonts::size(int pixels) const
{
    const auto nearer = [&](const auto& a, const auto& b) {
        return std::abs(a.first - pixels) < std::abs(b.first - pixels);
    };
    return std::min_element(fonts.begin(), fonts.end(), nearer)->second;
}

} // namespace workbench
