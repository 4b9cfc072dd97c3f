#pragma once

#include "graph/node.h"
#include "graph/storedValue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace host {

/// A plug as a key of its own node's tables; it does not keep the node alive.
struct PlugKey {
    explicit PlugKey(const Plug& plug) : attribute(plug.attribute())
    {
        for (unsigned slot = 0; slot < Plug::kMaxDepth; ++slot)
            indices[slot] = plug.index(slot);
    }
    bool operator==(const PlugKey& other) const;

    const Attribute* attribute;
    std::uint32_t indices[Plug::kMaxDepth];
};

struct PlugKeyHash {
    std::size_t operator()(const PlugKey& key) const;
};

/// One connection. Owned by the graph; the nodes at both ends point to it.
struct Link {
    Plug source, destination;
    std::uint64_t order; ///< grows with each connection made; a connection that comes back keeps it
    std::shared_ptr<const StoredValue> before; ///< the destination's own value, hidden while connected
};

/// What a file or a command may override for one plug.
struct PlugOverride {
    bool locked = false;
    std::int8_t keyable = -1; ///< -1 = as the attribute says
    std::int8_t channelBox = -1;
};

/// What the graph notes about one root attribute of a node.
struct RootState {
    /// kFailed is dirty, too, but what depends on it may be clean: changes must pass through.
    enum class Freshness : std::uint8_t { kDirty, kClean, kComputing, kStale, kFailed };
    Freshness freshness = Freshness::kDirty; ///< of outputs
    bool cycleReported = false;
    std::uint16_t reading = 0;     ///< reads through connections under way
    std::uint32_t feeding = 0;     ///< connections into the root or anything below it
    std::uint64_t feedingBits = 0; ///< Attribute::ownBit of all that these connections lead to
    std::uint32_t fed = 0;         ///< connections out of it
    std::uint64_t visited = 0;     ///< the last propagation that came through
    std::uint64_t markedAt = 0;    ///< Graph::computations when what the root affects was last marked
};

/// Whether a connection may lead to an attribute or to one above it; false is certain.
inline bool mayBeFed(const RootState* root, const Attribute& attribute)
{
    return root && (root->feedingBits & attribute.pathBits) != 0;
}

/// Everything about a node that is neither its type nor its values. Belongs to Graph, Node and Plug.
struct NodeState {
    std::uint64_t sequence = 0; ///< grows with each node made: the order of Graph::nodes()
    std::vector<RootState> roots;
    std::vector<Link*> inputs, outputs; ///< by ascending order
    std::unordered_map<PlugKey, Link*, PlugKeyHash> byDestination;
    std::unordered_map<PlugKey, PlugOverride, PlugKeyHash> overrides;
    std::size_t lockedPlugs = 0;
    unsigned nextRoot = 0;               ///< childIndex of the next dynamic attribute
    std::vector<Ref<Attribute>> retired; ///< removed attributes; their values wait for an undo
    /// What the node's functions have worked out of the scene, and Graph::changeCount() as long as it holds.
    std::shared_ptr<const void> derived;
    std::uint64_t derivedAt = 0;

    RootState& root(const Attribute& attribute)
    {
        if (attribute.childIndex >= roots.size())
            roots.resize(attribute.childIndex + 1);
        return roots[attribute.childIndex];
    }
    const RootState* findRoot(const Attribute& attribute) const
    {
        return attribute.childIndex < roots.size() ? &roots[attribute.childIndex] : nullptr;
    }
};

} // namespace host
