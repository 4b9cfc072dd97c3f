#include "render/textLayout.h"

#include <algorithm>

namespace workbench {

bool TextLayout::isFree(const Box& box) const
{
    return std::none_of(taken.begin(), taken.end(), [&](const Box& other) { return box.overlaps(other); });
}

bool TextLayout::place(const PlacedText& text, float gap)
{
    const Box& box = text.box;
    if (!isFree({box.left - gap, box.top - gap, box.width + 2 * gap, box.height + 2 * gap}))
        return false;
    take(box);
    texts.push_back(text);
    return true;
}

} // namespace workbench
