#include "graph/slots.h"

#include "graph/node.h"

#include <array>

namespace host {

namespace {

/// The attributes from the root down to the plug's own.
struct Chain {
    explicit Chain(const Attribute& last)
    {
        for (const Attribute* step = &last; step && length < kMost; step = step->parent)
            steps[kMost - ++length] = step;
    }
    const Attribute& at(unsigned position) const { return *steps[kMost - length + position]; }

    static constexpr unsigned kMost = 16;
    std::array<const Attribute*, kMost> steps;
    unsigned length = 0;
};

/// Nothing below this slot has slots of its own.
bool endsHere(const Slot& slot)
{
    return std::holds_alternative<std::unique_ptr<NumericArray>>(slot.value) ||
           std::holds_alternative<std::unique_ptr<WeightRows>>(slot.value);
}

Slot* elementOf(Slot& array, std::uint32_t logical, bool make)
{
    if (make && array.empty())
        array.value = std::make_unique<SparseSlots>();
    auto* sparse = array.as<SparseSlots>();
    if (!sparse || logical >= Plug::kAnyIndex)
        return nullptr;
    if (make)
        return &sparse->elements[logical];
    const auto found = sparse->elements.find(logical);
    return found == sparse->elements.end() ? nullptr : &found->second;
}

Slot* childOf(Slot& slot, const Attribute& child, bool make)
{
    if (make && slot.empty())
        slot.value = std::make_unique<CompoundSlots>();
    auto* compound = slot.as<CompoundSlots>();
    if (!compound)
        return nullptr;
    if (child.childIndex >= compound->children.size()) {
        if (!make)
            return nullptr;
        compound->children.resize(child.childIndex + 1);
    }
    return &compound->children[child.childIndex];
}

void startArray(Slot& slot, const Attribute& attribute)
{
    if (attribute.flags.weightRows)
        slot.value = std::make_unique<WeightRows>();
    else if (isNumericArray(attribute))
        slot.value =
            std::make_unique<NumericArray>(attribute.defaultNumber, attribute.type == AttributeType::kFloat);
    else
        slot.value = std::make_unique<SparseSlots>();
}

Slot* walk(Slot* slot, const Chain& chain, const Plug& plug, bool make)
{
    for (unsigned position = 0; slot; ++position) {
        const Attribute& attribute = chain.at(position);
        const bool last = position + 1 == chain.length;
        if (attribute.flags.array) {
            const std::uint32_t logical = plug.index(attribute.ownIndexSlot());
            if (make && slot->empty())
                startArray(*slot, attribute);
            if (endsHere(*slot) || (last && logical == Plug::kNoIndex))
                return slot;
            slot = elementOf(*slot, logical, make);
        }
        if (last)
            return slot;
        if (slot)
            slot = childOf(*slot, chain.at(position + 1), make);
    }
    return nullptr;
}

template <class T>
std::unique_ptr<T> cloned(const std::unique_ptr<T>& from)
{
    return std::make_unique<T>(*from);
}

} // namespace

bool isNumericArray(const Attribute& attribute)
{
    return attribute.flags.array && attribute.isNumber();
}

Slot Slot::copy() const
{
    Slot result;
    if (const auto* compound = as<CompoundSlots>()) {
        auto made = std::make_unique<CompoundSlots>();
        for (const Slot& child : compound->children)
            made->children.push_back(child.copy());
        result.value = std::move(made);
    } else if (const auto* sparse = as<SparseSlots>()) {
        auto made = std::make_unique<SparseSlots>();
        for (const auto& element : sparse->elements)
            made->elements.emplace_hint(made->elements.end(), element.first, element.second.copy());
        result.value = std::move(made);
    } else if (const auto* number = std::get_if<double>(&value)) {
        result.value = *number;
    } else if (const auto* data = std::get_if<DataRef>(&value)) {
        result.value = *data;
    } else if (const auto* text = std::get_if<std::unique_ptr<std::string>>(&value)) {
        result.value = cloned(*text);
    } else if (const auto* matrix = std::get_if<std::unique_ptr<Imath::M44d>>(&value)) {
        result.value = cloned(*matrix);
    } else if (const auto* numbers = std::get_if<std::unique_ptr<NumericArray>>(&value)) {
        result.value = cloned(*numbers);
    } else if (const auto* rows = std::get_if<std::unique_ptr<WeightRows>>(&value)) {
        result.value = cloned(*rows);
    }
    return result;
}

bool Slot::holdsValue() const
{
    if (const auto* compound = as<CompoundSlots>()) {
        for (const Slot& child : compound->children)
            if (child.holdsValue())
                return true;
        return false;
    }
    if (const auto* sparse = as<SparseSlots>())
        return !sparse->elements.empty();
    if (const auto* numbers = as<NumericArray>())
        return numbers->size() > 0;
    if (const auto* rows = as<WeightRows>())
        return rows->rowCount() > 0;
    return !empty();
}

Slot* SlotTree::look(const Plug& plug, bool make)
{
    const Chain chain(*plug.attribute());
    const unsigned root = chain.at(0).childIndex;
    if (root >= roots.size()) {
        if (!make)
            return nullptr;
        roots.resize(root + 1);
    }
    return walk(&roots[root], chain, plug, make);
}

Slot* SlotTree::find(const Plug& plug)
{
    last = {};
    return look(plug, false);
}

const Slot* SlotTree::find(const Plug& plug) const
{
    return const_cast<SlotTree*>(this)->look(plug, false);
}

Slot& SlotTree::make(const Plug& plug)
{
    last = {};
    return *look(plug, true);
}

bool SlotTree::remembers(const Plug& element) const
{
    if (last.attribute != element.attribute())
        return false;
    for (unsigned slot = 0; slot < last.attribute->ownIndexSlot(); ++slot)
        if (last.above[slot] != element.index(slot))
            return false;
    return element.isElement();
}

NumericArray* SlotTree::remember(const Plug& element, NumericArray* numbers) const
{
    if (!numbers)
        return nullptr;
    last = {element.attribute(), {}, numbers};
    for (unsigned slot = 0; slot < last.attribute->ownIndexSlot(); ++slot)
        last.above[slot] = element.index(slot);
    return numbers;
}

const NumericArray* SlotTree::findNumbers(const Plug& element) const
{
    if (remembers(element))
        return last.numbers;
    if (!element.isElement() || !isNumericArray(*element.attribute()))
        return nullptr;
    Slot* slot = const_cast<SlotTree*>(this)->look(element, false);
    return slot ? remember(element, slot->as<NumericArray>()) : nullptr;
}

NumericArray* SlotTree::makeNumbers(const Plug& element)
{
    if (remembers(element))
        return last.numbers;
    if (!element.isElement() || !isNumericArray(*element.attribute()))
        return nullptr;
    return remember(element, look(element, true)->as<NumericArray>());
}

void SlotTree::erase(const Plug& plug)
{
    Slot* slot = find(plug);
    if (!slot)
        return;
    const Attribute& attribute = *plug.attribute();
    if (auto* numbers = slot->as<NumericArray>(); numbers && plug.isElement()) {
        numbers->erase(plug.logicalIndex());
        return;
    }
    if (auto* rows = slot->as<WeightRows>(); rows && plug.isElement()) {
        if (attribute.flags.weightRows)
            rows->eraseRow(plug.logicalIndex());
        else
            rows->erase(plug.index(attribute.ownIndexSlot() - 1), plug.logicalIndex());
        return;
    }
    if (auto* rows = slot->as<WeightRows>(); rows && !attribute.flags.weightRows) {
        const std::uint32_t row = plug.index(attribute.parent->ownIndexSlot());
        rows->eraseRow(row);
        rows->touchRow(row);
        return;
    }
    if (!plug.isElement()) {
        slot->value = std::monostate{};
        return;
    }
    if (Slot* array = find(plug.array()))
        if (auto* sparse = array->as<SparseSlots>())
            sparse->elements.erase(plug.logicalIndex());
}

} // namespace host
