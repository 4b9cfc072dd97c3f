#include "graph/storedRange.h"

#include "graph/node.h"
#include "graph/slots.h"
#include "types/error.h"

namespace host {

StoredRange::StoredRange(const Plug& array, std::vector<std::uint32_t> indices)
    : where(array), logical(std::move(indices))
{
    const Slot* slot = array.node()->slots().find(array);
    if (!slot || slot->empty()) {
        whole.emplace(array);
        return;
    }
    const auto* rows = array.attribute()->flags.weightRows ? slot->as<WeightRows>() : nullptr;
    if (const auto* held = slot->as<NumericArray>())
        storeNumbers(*held);
    else if (rows)
        storeRows(*rows);
    else
        for (const std::uint32_t index : logical)
            elements.emplace_back(array.element(index));
}

void StoredRange::storeNumbers(const NumericArray& array)
{
    for (const std::uint32_t index : logical) {
        counts.push_back(array.has(index) ? 1 : kMissing);
        if (array.has(index))
            numbers.push_back(array.get(index));
    }
}

void StoredRange::storeRows(const WeightRows& rows)
{
    for (const std::uint32_t index : logical) {
        const WeightRows::Span row = rows.row(index);
        counts.push_back(rows.hasRow(index) ? static_cast<std::uint32_t>(row.count) : kMissing);
        numbers.insert(numbers.end(), row.weights, row.weights + row.count);
        columns.insert(columns.end(), row.columns, row.columns + row.count);
    }
}

void StoredRange::putNumbers(NumericArray& array) const
{
    std::size_t next = 0;
    for (std::size_t i = 0; i < logical.size(); ++i) {
        if (counts[i] == kMissing)
            array.erase(logical[i]);
        else
            array.set(logical[i], numbers[next++]);
    }
}

void StoredRange::putRows(WeightRows& rows) const
{
    std::size_t next = 0;
    for (std::size_t i = 0; i < logical.size(); ++i) {
        if (counts[i] == kMissing) {
            rows.eraseRow(logical[i]);
            continue;
        }
        rows.assign(logical[i], {numbers.data() + next, columns.data() + next, counts[i]});
        next += counts[i];
    }
}

void StoredRange::putBack() const
{
    if (whole)
        return whole->putBack();
    if (!where.node()->alive())
        throw Error("The node '" + where.node()->name() + "' has been deleted.");
    Slot& slot = where.node()->slots().make(where);
    if (auto* array = slot.as<NumericArray>())
        putNumbers(*array);
    else if (auto* rows = slot.as<WeightRows>(); rows && where.attribute()->flags.weightRows)
        putRows(*rows);
    for (const StoredValue& element : elements)
        element.putBackQuietly();
    where.changed();
}

} // namespace host
