#include "graph/storedValue.h"

#include "graph/graph.h"
#include "types/error.h"

namespace host {

namespace {

Plug owning(const Plug& plug)
{
    if (plug.isElement())
        return plug.array();
    return plug.isChild() ? plug.parent() : Plug();
}

/// The row of a plug on or inside a row of weights.
std::uint32_t rowOf(const Plug& plug)
{
    const Attribute* attribute = plug.attribute();
    while (!attribute->flags.weightRows)
        attribute = attribute->parent;
    return plug.index(attribute->ownIndexSlot());
}

/// A row kept apart is row 0 of its own, so that its number costs nothing.
constexpr std::uint32_t kApart = 0;

void copyRow(const WeightRows& from, std::uint32_t row, WeightRows& to, std::uint32_t place)
{
    if (from.hasRow(row))
        to.assign(place, from.row(row));
    else
        to.eraseRow(place);
}

/// Whether anything is stored in an element, which lies in the slot.
bool holdsMore(const Slot& slot, const Plug& element)
{
    const auto* rows = slot.as<WeightRows>();
    return rows ? rows->row(rowOf(element)).count > 0 : slot.holdsValue();
}

bool isWholeRows(const Plug& plug)
{
    return plug.isArray() && plug.attribute()->flags.weightRows;
}

} // namespace

StoredValue::StoredValue(const Plug& stored) : plug(stored), where(stored)
{
    const SlotTree& slots = plug.node()->slots();
    for (Plug step = plug; !step.isNull(); step = owning(step))
        if (step.isElement() && !slots.find(step))
            where = step;
    const Slot* slot = slots.find(where);
    if (!slot)
        return;
    if (const auto* numbers = slot->as<NumericArray>(); numbers && where.isElement()) {
        existed = numbers->has(where.logicalIndex());
        content.value = numbers->get(where.logicalIndex());
        return;
    }
    if (const auto* rows = slot->as<WeightRows>(); rows && !isWholeRows(where)) {
        auto one = std::make_unique<WeightRows>();
        copyRow(*rows, rowOf(where), *one, kApart);
        existed = true;
        content.value = std::move(one);
        return;
    }
    existed = true;
    content = slot->copy();
}

void StoredValue::putBackQuietly() const
{
    SlotTree& slots = where.node()->slots();
    if (!existed) {
        remove();
        return;
    }
    Slot& slot = slots.make(where);
    if (auto* numbers = slot.as<NumericArray>(); numbers && where.isElement())
        numbers->set(where.logicalIndex(), std::get<double>(content.value));
    else if (auto* rows = slot.as<WeightRows>(); rows && !isWholeRows(where))
        copyRow(*content.as<WeightRows>(), kApart, *rows, rowOf(where));
    else
        slot = content.copy();
}

/// What others have stored around the plug meanwhile stays, and the elements that it lies in with it.
void StoredValue::remove() const
{
    SlotTree& slots = where.node()->slots();
    slots.erase(plug);
    for (Plug step = plug; step != where;) {
        step = owning(step);
        const Slot* slot = step.isElement() ? slots.find(step) : nullptr;
        if (slot && holdsMore(*slot, step))
            return;
        if (slot)
            slots.erase(step);
    }
}

void StoredValue::putBack() const
{
    if (!where.node()->alive())
        throw Error("The node '" + where.node()->name() + "' has been deleted.");
    putBackQuietly();
    where.changed();
}

} // namespace host
