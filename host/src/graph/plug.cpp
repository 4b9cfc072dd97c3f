#include "graph/plug.h"

#include "graph/node.h"
#include "graph/nodeState.h"
#include "graph/slots.h"
#include "types/error.h"

#include <algorithm>

namespace host {

Plug::Plug(Node* node, const Attribute* attribute)
    : owner(node), rootOwner(attribute ? &attribute->root() : nullptr), definition(attribute)
{}

void Plug::fail(const std::string& why) const
{
    throw Error("'" + name() + "' " + why);
}

Node& Plug::alive() const
{
    if (!owner || !definition)
        throw Error("A plug of no node cannot be used.");
    if (!owner->alive())
        throw Error("The node '" + owner->name() + "' has been deleted.");
    return *owner;
}

bool Plug::isCompound() const
{
    return definition && definition->type == AttributeType::kCompound;
}

bool Plug::isChild() const
{
    return definition && definition->parent;
}

bool Plug::isResolved() const
{
    if (!definition)
        return false;
    const unsigned above = definition->arrayDepth - (definition->flags.array ? 1u : 0u);
    return std::all_of(indices, indices + above, [](std::uint32_t index) { return index < kAnyIndex; });
}

Plug Plug::element(std::uint32_t logical) const
{
    if (!isArray())
        fail("is not an array.");
    Plug result = *this;
    result.indices[definition->ownIndexSlot()] = logical;
    return result;
}

Plug Plug::child(unsigned position) const
{
    if (!definition || position >= definition->children.size())
        fail("has no child " + std::to_string(position) + ".");
    Plug result = *this;
    result.definition = definition->children[position].get();
    return result;
}

Plug Plug::child(const std::string& longOrShortName) const
{
    if (definition)
        for (const Ref<Attribute>& candidate : definition->children)
            if (candidate->longName == longOrShortName || candidate->shortName == longOrShortName)
                return child(candidate->childIndex);
    fail("has no child '" + longOrShortName + "'.");
}

Plug Plug::parent() const
{
    if (!isChild())
        fail("is no child of a compound.");
    Plug result = *this;
    result.definition = definition->parent;
    for (unsigned slot = result.definition->arrayDepth; slot < kMaxDepth; ++slot)
        result.indices[slot] = kNoIndex;
    // The owner of a child is an element even while nobody has said which.
    if (result.isArray())
        result.indices[result.definition->ownIndexSlot()] = kAnyIndex;
    return result;
}

Plug Plug::array() const
{
    if (!isElement())
        fail("is no element of an array.");
    Plug result = *this;
    result.indices[definition->ownIndexSlot()] = kNoIndex;
    return result;
}

bool Plug::isBelow(const Plug& ancestor) const
{
    if (owner != ancestor.owner || !definition || !ancestor.definition)
        return false;
    const Attribute* step = definition;
    while (step && step != ancestor.definition)
        step = step->parent;
    if (!step)
        return false;
    for (unsigned slot = 0; slot < step->arrayDepth; ++slot)
        if (ancestor.indices[slot] != kNoIndex && ancestor.indices[slot] != indices[slot])
            return false;
    return true;
}

namespace {

/// The element indices that connections at or below the array give it.
void addConnected(const Plug& array, std::vector<std::uint32_t>& indices)
{
    const unsigned slot = array.attribute()->ownIndexSlot();
    const NodeState& state = array.node()->state();
    const auto add = [&](const Plug& end) {
        if (end.isBelow(array) && end.index(slot) < Plug::kAnyIndex)
            indices.push_back(end.index(slot));
    };
    for (const Link* link : state.inputs)
        add(link->destination);
    for (const Link* link : state.outputs)
        add(link->source);
}

bool hasLinks(const Plug& plug)
{
    const RootState* root = plug.node()->state().findRoot(plug.attribute()->root());
    return root && root->feeding + root->fed > 0;
}

} // namespace

std::vector<std::uint32_t> Plug::existingIndices() const
{
    std::vector<std::uint32_t> result = storedIndices();
    if (!hasLinks(*this))
        return result;
    addConnected(*this, result);
    std::sort(result.begin(), result.end());
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

std::size_t Plug::numElements() const
{
    alive();
    if (!isArray())
        fail("is not an array.");
    if (hasLinks(*this))
        return existingIndices().size();
    const Slot* slot = owner->slots().find(*this);
    if (!slot)
        return 0;
    if (const auto* numeric = slot->as<NumericArray>())
        return numeric->size();
    if (const auto* sparse = slot->as<SparseSlots>())
        return sparse->elements.size();
    return storedIndices().size();
}

bool Plug::exists() const
{
    alive();
    if (!isResolved())
        return false;
    if (isElement()) {
        const Plug whole = array();
        const Slot* slot = owner->slots().find(whole);
        if (const auto* numeric = slot ? slot->as<NumericArray>() : nullptr)
            if (numeric->has(logicalIndex()) || !hasLinks(*this))
                return numeric->has(logicalIndex());
    }
    const std::uint32_t own = logicalIndex();
    if (isElement()) {
        const std::vector<std::uint32_t> all = array().existingIndices();
        return std::binary_search(all.begin(), all.end(), own);
    }
    if (hasStored())
        return true;
    const NodeState& state = owner->state();
    const auto into = [this](const Link* link) { return link->destination.isBelow(*this); };
    const auto from = [this](const Link* link) { return link->source.isBelow(*this); };
    return std::any_of(state.inputs.begin(), state.inputs.end(), into) ||
           std::any_of(state.outputs.begin(), state.outputs.end(), from);
}

bool operator==(const Plug& a, const Plug& b)
{
    return a.owner == b.owner && a.definition == b.definition &&
           std::equal(a.indices, a.indices + Plug::kMaxDepth, b.indices);
}

bool PlugKey::operator==(const PlugKey& other) const
{
    return attribute == other.attribute && std::equal(indices, indices + Plug::kMaxDepth, other.indices);
}

std::size_t PlugKeyHash::operator()(const PlugKey& key) const
{
    std::size_t hash = std::hash<const void*>()(key.attribute);
    for (const std::uint32_t index : key.indices)
        hash = hash * 1099511628211u + index;
    return hash;
}

} // namespace host
