#pragma once

#include "graph/plug.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

class Node;

/// What the path of a setAttr names: one plug, or the elements first ... last of one array on the way
/// (".wl[0:5].w", ".vt[0:7]").
struct PlugRange {
    Plug plug; ///< of the first element when there is a range
    bool ranged = false;
    unsigned slot = 0; ///< whose index runs from first to last
    std::uint32_t first = 0, last = 0;

    std::size_t count() const { return ranged ? last - first + 1 : 1; }
    /// The plug of the element `first + step`.
    Plug at(std::size_t step) const
    {
        Plug element = plug;
        if (ranged)
            element.setIndex(slot, first + static_cast<std::uint32_t>(step));
        return element;
    }
};

/// The plugs of a path without node and leading dot: long or short names or an alias, parents may be left
/// out. An array above the last attribute whose index is left out is taken at 0: that is how files name the
/// per-instance arrays of DAG nodes (".iog.og[2].gid").
/// Nothing when the node has no such attribute; host::Error when the path is malformed or indexes an
/// attribute that is no array.
std::optional<PlugRange> resolvePlugs(Node& node, std::string_view path);

/// The same for one plug; a range is an error. An unindexed per-instance array gives its first element.
std::optional<Plug> resolvePlug(Node& node, std::string_view path);

/// Whether the attribute is an array with one element per instance of a DAG node (worldMatrix,
/// instObjGroups ...), which files write without an index.
bool isPerInstance(const Attribute& attribute);

/// The path of a plug as files write it: short names, compounds that are no arrays left out. In connections
/// per-instance arrays stand without index.
std::string maPath(const Plug& plug, bool inConnection);

} // namespace host
