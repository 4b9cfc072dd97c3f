#include "scene/plugRange.h"

#include "graph/node.h"
#include "types/error.h"

#include <algorithm>
#include <charconv>

namespace host {

namespace {

constexpr const char* kPerInstance[] = {"worldMatrix",         "worldInverseMatrix", "parentMatrix",
                                        "parentInverseMatrix", "instObjGroups",      "worldMesh",
                                        "worldSpace",          "worldLattice"};

const Attribute* below(const Attribute& attribute, std::string_view name)
{
    for (const Ref<Attribute>& child : attribute.children) {
        if (child->longName == name || child->shortName == name)
            return child.get();
    }
    for (const Ref<Attribute>& child : attribute.children) {
        if (const Attribute* found = below(*child, name))
            return found;
    }
    return nullptr;
}

/// One part of a path, "w[0:5]".
struct Part {
    std::string_view name;
    bool indexed = false;
    std::uint32_t first = 0, last = 0;
};

class PathReader {
public:
    enum class Aliases { kFollow, kIgnore };
    PathReader(Node& owner, std::string_view path, Aliases wanted = Aliases::kFollow)
        : node(owner), whole(path), rest(path), aliases(wanted)
    {}

    std::optional<PlugRange> read()
    {
        PlugRange range;
        const Attribute* attribute = nullptr;
        while (!rest.empty()) {
            const Part part = nextPart();
            if (!attribute) {
                if (!begin(part, range, attribute))
                    return std::nullopt;
            } else {
                attribute = below(*attribute, part.name);
                if (!attribute)
                    return std::nullopt;
                range.plug = withAttribute(range.plug, *attribute);
            }
            if (part.indexed)
                choose(range, *attribute, part);
        }
        if (!attribute)
            fail("is empty");
        fillIndices(range.plug);
        return range;
    }

private:
    [[noreturn]] void fail(const std::string& what) const
    {
        throw Error("the attribute path \"" + std::string(whole) + "\" of " + node.name() + " " + what);
    }

    /// The first part: an attribute of any depth, or an alias.
    bool begin(const Part& part, PlugRange& range, const Attribute*& attribute)
    {
        const std::string name(part.name);
        attribute = node.findAttribute(name);
        if (attribute) {
            range.plug = Plug(&node, attribute);
            return true;
        }
        const auto alias = std::find_if(node.aliases.begin(), node.aliases.end(),
                                        [&](const auto& entry) { return entry.first == name; });
        if (alias == node.aliases.end() || aliases == Aliases::kIgnore)
            return false;
        // What an alias stands for is no alias: two of them could stand for each other.
        const std::optional<PlugRange> meant = PathReader(node, alias->second, Aliases::kIgnore).read();
        if (!meant)
            return false;
        range = *meant;
        attribute = range.plug.attribute();
        return true;
    }

    Plug withAttribute(const Plug& from, const Attribute& attribute) const
    {
        Plug plug(&node, &attribute);
        for (unsigned slot = 0; slot < Plug::kMaxDepth; ++slot)
            plug.setIndex(slot, from.index(slot));
        return plug;
    }

    void choose(PlugRange& range, const Attribute& attribute, const Part& part)
    {
        if (!attribute.flags.array)
            fail("indexes " + attribute.longName + ", which is no array");
        const unsigned slot = attribute.ownIndexSlot();
        range.plug.setIndex(slot, part.first);
        if (part.last == part.first)
            return;
        if (range.ranged)
            fail("has more than one range");
        range.ranged = true;
        range.slot = slot;
        range.first = part.first;
        range.last = part.last;
    }

    static void fillIndices(Plug& plug)
    {
        const Attribute* attribute = plug.attribute();
        const unsigned above = attribute->arrayDepth - (attribute->flags.array ? 1 : 0);
        for (unsigned slot = 0; slot < above; ++slot) {
            if (plug.index(slot) == Plug::kNoIndex)
                plug.setIndex(slot, 0);
        }
    }

    std::uint32_t number()
    {
        std::uint32_t value = 0;
        const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
        if (result.ec != std::errc() || value == Plug::kNoIndex)
            fail("has a bad index");
        rest.remove_prefix(static_cast<std::size_t>(result.ptr - rest.data()));
        return value;
    }

    bool take(char c)
    {
        if (rest.empty() || rest.front() != c)
            return false;
        rest.remove_prefix(1);
        return true;
    }

    Part nextPart()
    {
        Part part;
        part.name = rest.substr(0, std::min(rest.find_first_of(".["), rest.size()));
        if (part.name.empty())
            fail("lacks a name");
        rest.remove_prefix(part.name.size());
        if (take('[')) {
            part.indexed = true;
            part.first = part.last = number();
            if (take(':'))
                part.last = number();
            if (!take(']') || part.last < part.first)
                fail("has a bad index");
        }
        if (!rest.empty() && !take('.'))
            fail("is malformed");
        return part;
    }

    Node& node;
    std::string_view whole, rest;
    Aliases aliases;
};

} // namespace

std::optional<PlugRange> resolvePlugs(Node& node, std::string_view path)
{
    return PathReader(node, path).read();
}

std::optional<Plug> resolvePlug(Node& node, std::string_view path)
{
    const std::optional<PlugRange> range = resolvePlugs(node, path);
    if (!range)
        return std::nullopt;
    if (range->ranged)
        throw Error("the attribute path \"" + std::string(path) + "\" of " + node.name() +
                    " names a range where one plug is expected");
    Plug plug = range->plug;
    const Attribute& attribute = *plug.attribute();
    if (plug.isArray() && node.asDag() && isPerInstance(attribute))
        plug.setIndex(attribute.ownIndexSlot(), 0);
    return plug;
}

bool isPerInstance(const Attribute& attribute)
{
    return attribute.flags.array && !attribute.parent &&
           std::find(std::begin(kPerInstance), std::end(kPerInstance), attribute.longName) !=
               std::end(kPerInstance);
}

std::string maPath(const Plug& plug, bool inConnection)
{
    const Attribute* const last = plug.attribute();
    const bool leaveOut = inConnection && plug.node()->asDag();
    std::string path;
    for (const Attribute* attribute = last; attribute; attribute = attribute->parent) {
        if (attribute != last && !attribute->flags.array)
            continue;
        std::string part = attribute->shortName;
        if (attribute->flags.array && !(leaveOut && isPerInstance(*attribute))) {
            const std::uint32_t index = plug.index(attribute->ownIndexSlot());
            if (index != Plug::kNoIndex)
                part += "[" + std::to_string(index) + "]";
        }
        if (!path.empty())
            part.append(1, '.').append(path);
        path = std::move(part);
    }
    return path;
}

} // namespace host
