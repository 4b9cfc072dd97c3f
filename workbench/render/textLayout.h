#pragma once

#include "render/colors.h"

#include <string>
#include <vector>

namespace workbench {

/// An upright rectangle in picture pixels, counted from the upper left corner.
struct Box {
    float left = 0, top = 0, width = 0, height = 0;

    bool overlaps(const Box& other) const
    {
        return left < other.left + other.width && other.left < left + width &&
               top < other.top + other.height && other.top < top + height;
    }
};

/// A text and where it stands.
struct PlacedText {
    enum class Kind { kStatus, kToolName, kHeadsUp, kLegend, kLabel };
    Kind kind;
    std::string text;
    Box box;
    int pixels; ///< size at a scale of 1
    Color color;
};

/// Gives out room on the picture: whoever comes first has it.
class TextLayout {
public:
    /// Nothing is placed there any more.
    void take(const Box& box) { taken.push_back(box); }
    bool isFree(const Box& box) const;
    /// Adds a text when its room, `gap` pixels around it included, is free.
    bool place(const PlacedText& text, float gap);

    std::vector<PlacedText> texts;

private:
    std::vector<Box> taken;
};

} // namespace workbench
