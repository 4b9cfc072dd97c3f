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
    static constexpr int kSmall = 13, kMedium = 16, kLarge = 22; ///< pixels

    /// With the sizes that the tool's labels use.
    explicit Fonts(host::Session& session);
    /// The nearest size there is.
    ImFont* size(int pixels) const;

private:
    void add(int pixels);
    std::map<int, ImFont*> fonts;
};

} // namespace workbench
