#pragma once

#include "graph/data.h"
#include "graph/numericArray.h"
#include "graph/plug.h"
#include "graph/weightRows.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace host {

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

    /// The array of numbers that an element lies in: null when the plug is no element of one, or when none is
    /// there (find) and the element of weight rows.
    const NumericArray* findNumbers(const Plug& element) const;
    NumericArray* makeNumbers(const Plug& element);

private:
    /// The last array of numbers that was asked for. Whoever writes an array element by element, as plug-ins
    /// do, is led there once. Forgotten when a slot is handed out that may be given another value.
    struct Remembered {
        const Attribute* attribute = nullptr;
        std::array<std::uint32_t, Plug::kMaxDepth> above{}; ///< the logical indices before its own
        NumericArray* numbers = nullptr;
    };
    bool remembers(const Plug& element) const;
    NumericArray* remember(const Plug& element, NumericArray* numbers) const;
    Slot* look(const Plug& plug, bool make);

    std::vector<Slot> roots;
    mutable Remembered last;
};

/// The array attribute keeps its elements in a NumericArray.
bool isNumericArray(const Attribute& attribute);

} // namespace host
