#include "graph/graph.h"
#include "graph/nodeState.h"
#include "graph/slots.h"
#include "types/error.h"

namespace host {

void Plug::requireWritable() const
{
    if (rootOwner->flags.output || !definition->flags.writable)
        fail("is not writable.");
    if (isLocked() || isFed())
        throw Error("The attribute '" + name() + "' is locked or connected and cannot be modified.");
}

void Plug::storeNumber(double value) const
{
    const double kept = narrowed(definition->type, value);
    if (NumericArray* array = owner->slots().makeNumbers(*this)) {
        array->set(logicalIndex(), kept);
        return;
    }
    Slot& slot = owner->slots().make(*this);
    if (auto* skin = slot.as<WeightRows>())
        skin->set(indices[definition->ownIndexSlot() - 1], logicalIndex(), kept);
    else
        slot.value = kept;
}

void Plug::store(const std::string& value) const
{
    owner->slots().make(*this).value = std::make_unique<std::string>(value);
}

void Plug::store(const Imath::M44d& value) const
{
    owner->slots().make(*this).value = std::make_unique<Imath::M44d>(value);
}

void Plug::store(DataRef value) const
{
    owner->slots().make(*this).value = std::move(value);
}

void Plug::setNumber(double value) const
{
    requireNumber();
    requireWritable();
    storeNumber(value);
    changed();
}

void Plug::setText(const std::string& value) const
{
    alive();
    if (definition->type != AttributeType::kOpaque)
        requireType(AttributeType::kString, "text");
    requireWritable();
    store(value);
    changed();
}

void Plug::setMatrix(const Imath::M44d& value) const
{
    requireType(AttributeType::kMatrix, "matrix");
    requireWritable();
    store(value);
    changed();
}

void Plug::setData(DataRef value) const
{
    requireType(AttributeType::kData, "data");
    requireWritable();
    store(std::move(value));
    changed();
}

void Plug::touch() const
{
    alive();
    if (!isResolved())
        fail("has no value: an index is missing.");
    if (!isElement())
        return;
    Slot& slot = owner->slots().make(*this);
    if (auto* array = slot.as<NumericArray>()) {
        if (!array->has(logicalIndex()))
            array->set(logicalIndex(), array->defaultValue());
    } else if (auto* skin = slot.as<WeightRows>()) {
        const std::uint32_t row = indices[definition->ownIndexSlot()];
        const unsigned own = definition->ownIndexSlot();
        if (definition->flags.weightRows)
            skin->touchRow(row);
        else if (!skin->has(indices[own - 1], indices[own]))
            skin->set(indices[own - 1], indices[own], 0.0);
    }
}

void Plug::unset() const
{
    alive();
    if (isLocked())
        throw Error("The attribute '" + name() + "' is locked and cannot be modified.");
    owner->slots().erase(*this);
    changed();
}

NumericArray& Plug::makeNumbers() const
{
    alive();
    if (!isArray() || !isResolved())
        fail("is not an array of numbers.");
    auto* array = owner->slots().make(*this).as<NumericArray>();
    if (!array)
        fail("is not an array of numbers.");
    return *array;
}

WeightRows& Plug::makeRows() const
{
    alive();
    if (!definition->flags.weightRows || !isArray() || !isResolved())
        fail("is not an array of weight rows.");
    return *owner->slots().make(*this).as<WeightRows>();
}

void Plug::changed() const
{
    owner->graph().dirty(*this);
}

bool Plug::isLocked() const
{
    const NodeState& state = alive().state();
    if (state.lockedPlugs == 0)
        return false;
    for (Plug step = *this; !step.isNull(); step = step.ancestor()) {
        const auto found = state.overrides.find(PlugKey(step));
        if (found != state.overrides.end() && found->second.locked)
            return true;
    }
    return false;
}

bool Plug::isLockedItself() const
{
    const auto& overrides = alive().state().overrides;
    const auto found = overrides.find(PlugKey(*this));
    return found != overrides.end() && found->second.locked;
}

void Plug::setLocked(bool locked) const
{
    NodeState& state = alive().state();
    PlugOverride& own = state.overrides[PlugKey(*this)];
    if (own.locked == locked)
        return;
    own.locked = locked;
    state.lockedPlugs += locked ? 1u : 0u;
    state.lockedPlugs -= locked ? 0u : 1u;
    owner->graph().touchChange();
}

bool Plug::isKeyable() const
{
    const auto& overrides = alive().state().overrides;
    const auto found = overrides.find(PlugKey(*this));
    const bool given = found != overrides.end() && found->second.keyable >= 0;
    return given ? found->second.keyable != 0 : definition->flags.keyable;
}

bool Plug::isInChannelBox() const
{
    const auto& overrides = alive().state().overrides;
    const auto found = overrides.find(PlugKey(*this));
    const bool given = found != overrides.end() && found->second.channelBox >= 0;
    return given ? found->second.channelBox != 0 : definition->flags.channelBox;
}

void Plug::setKeyable(bool keyable) const
{
    alive().state().overrides[PlugKey(*this)].keyable = keyable ? 1 : 0;
    owner->graph().touchChange();
}

void Plug::setChannelBox(bool shown) const
{
    alive().state().overrides[PlugKey(*this)].channelBox = shown ? 1 : 0;
    owner->graph().touchChange();
}

Plug Plug::source() const
{
    const auto& links = alive().state().byDestination;
    const auto found = links.find(PlugKey(*this));
    return found == links.end() ? Plug() : found->second->source;
}

std::vector<Plug> Plug::destinations() const
{
    std::vector<Plug> result;
    for (const Link* link : alive().state().outputs)
        if (link->source == *this)
            result.push_back(link->destination);
    return result;
}

bool Plug::isDestination() const
{
    return alive().state().byDestination.count(PlugKey(*this)) != 0;
}

bool Plug::isFed() const
{
    const NodeState& state = alive().state();
    const RootState* root = state.findRoot(*rootOwner);
    if (!mayBeFed(root, *definition))
        return false;
    for (Plug step = *this; !step.isNull(); step = step.ancestor())
        if (state.byDestination.count(PlugKey(step)) != 0)
            return true;
    return false;
}

} // namespace host
