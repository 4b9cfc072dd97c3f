#include "graph/node.h"

#include <cctype>

namespace host {

namespace {

std::string indexText(std::uint32_t index)
{
    return index >= Plug::kAnyIndex ? "[-1]" : "[" + std::to_string(index) + "]";
}

} // namespace

std::string Plug::name(bool longNames) const
{
    if (!owner || !definition)
        return {};
    return (owner->alive() ? owner->uniqueName() : owner->name()) + attributePath(longNames);
}

std::string Plug::attributePath(bool longNames) const
{
    std::string path;
    // Compounds above need naming only when an index hangs on them.
    for (const Attribute* step = definition; step && (step == definition || step->arrayDepth > 0);
         step = step->parent) {
        std::string part = "." + (longNames ? step->longName : step->shortName);
        if (step->flags.array) {
            const std::uint32_t index = indices[step->ownIndexSlot()];
            if (step != definition || index != kNoIndex)
                part += indexText(index);
        }
        path.insert(0, part);
    }
    return path;
}

} // namespace host
