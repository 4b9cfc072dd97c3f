#pragma once

#include "graph/data.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace host {

class Attribute;
class Plug;
struct Slot;

/// The children of a compound, by Attribute::childIndex; shorter than the attribute's children when the last
/// ones have no value.
struct CompoundSlots {
    std::vector<Slot> children;
};

/// The existing elements of an array that is neither of numbers nor of weight rows, by logical index.
struct SparseSlots {
    std::map<std::uint32_t, Slot> elements;
};

/// Where one value lives. Empty (monostate) means that nothing is stored: the attribute's default holds.
/// An element of SparseSlots that is empty exists all the same.
struct Slot {
    using Value =
        std::variant<std::monostate, double, std::unique_ptr<std::string>, std::unique_ptr<Imath::M44d>,
                     DataRef, std::unique_ptr<CompoundSlots>, std::unique_ptr<SparseSlots>,
                     std::unique_ptr<NumericArray>, std::unique_ptr<WeightRows>>;
    Value value;

    /// A deep copy; Data is immutable and stays shared.
    Slot copy() const;
    bool empty() const { return std::holds_alternative<std::monostate>(value); }
    /// Whether a value is stored here or below; elements that only exist do not count.
    bool holdsValue() const;

    template <class T>
    const T* as() const
    {
        const auto* owner = std::get_if<std::unique_ptr<T>>(&value);
        return owner ? owner->get() : nullptr;
    }
    template <class T>
    T* as()
    {
        auto* owner = std::get_if<std::unique_ptr<T>>(&value);
        return owner ? owner->get() : nullptr;
    }
};

/// All stored values of one node, by the childIndex of the root attributes.
///
/// A plug leads to a slot. Two kinds of array have no slot per element: arrays of numbers (NumericArray) and
/// weight rows (WeightRows); there the slot of the array is the answer, and the caller looks inside with the
/// indices of the plug.
class SlotTree {
public:
    /// The slot of the plug, or of the array of numbers or weight rows that it lies in. Null when nothing is
    /// stored there or an index on the way is not chosen.
    const Slot* find(const Plug& plug) const;
    Slot* find(const Plug& plug);
    /// The same, made on demand. All indices on the way must be chosen.
    Slot& make(const Plug& plug);
    /// Drops the element from its array, or empties the slot.
    void erase(const Plug& plug);

private:
    std::vector<Slot> roots;
};

/// The array attribute keeps its elements in a NumericArray.
bool isNumericArray(const Attribute& attribute);

} // namespace host
