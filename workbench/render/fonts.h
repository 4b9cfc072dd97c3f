#pragma once

#include <map>

struct ImFont;

namespace host {
class Session;
}

namespace workbench {

/// The fonts of one picture, each size rasterised as itself so that text stays crisp: DejaVu Sans where the
/// machine has it, else the font that Dear ImGui carries. Made after the interface context and before its
/// first frame; the context owns the fonts.
class Fonts {
public:
    static constexpr int kSmall = 13, kMedium = 16, kLarge = 22; ///< sizes at a scale of 1

    /// With the sizes that the tool's labels use. `unit` is what every size is multiplied by.
    Fonts(host::Session& session, double unit);
    /// The font that stands for a size.
    ImFont* size(int pixels) const;

private:
    void add(int pixels, double unit);
    std::map<int, ImFont*> fonts;
};

} // namespace workbench
