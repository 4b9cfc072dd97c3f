#pragma once

#include "graph/attribute.h"
#include "graph/data.h"

#include <cstdint>
#include <string>
#include <vector>

namespace host {

class Node;
class NumericArray;
class WeightRows;

/// One attribute of one node, with a logical index for every array on the way: `node.input[2].weights[7]`.
/// A small value: copying, indexing, reading and writing numbers allocate nothing. MPlug holds one.
/// All operations here are raw: they change the scene at once, mark what depends on it dirty and record
/// nothing for undo (see undo/edits.h for recorded ones). They throw host::Error naming the plug.
class Plug {
public:
    static constexpr unsigned kMaxDepth = 6;
    static constexpr std::uint32_t kNoIndex = 0xFFFFFFFFu;
    /// Some element, not known which: the compound that owns a child whose array above has no index yet.
    static constexpr std::uint32_t kAnyIndex = 0xFFFFFFFEu;

    Plug() = default;
    /// The plug of an attribute with no index chosen. The attribute must belong to the node.
    Plug(Node* node, const Attribute* attribute);

    bool isNull() const { return !owner; }
    Node* node() const { return owner.get(); }
    const Attribute* attribute() const { return definition; }

    /// Index list position k belongs to the k-th array attribute from the root. kNoIndex = not chosen.
    std::uint32_t index(unsigned slot) const { return indices[slot]; }
    Plug& setIndex(unsigned slot, std::uint32_t logical)
    {
        indices[slot] = logical;
        return *this;
    }

    /// The attribute is an array and this plug has not chosen the element yet.
    bool isArray() const
    {
        return definition && definition->flags.array && indices[definition->ownIndexSlot()] == kNoIndex;
    }
    /// The attribute is an array and the element is chosen.
    bool isElement() const
    {
        return definition && definition->flags.array && indices[definition->ownIndexSlot()] != kNoIndex;
    }
    bool isCompound() const; ///< an element of a compound array, or a plain compound
    bool isChild() const;    ///< the attribute is the child of a compound
    /// Of an element.
    std::uint32_t logicalIndex() const
    {
        return isElement() ? indices[definition->ownIndexSlot()] : kNoIndex;
    }
    /// Whether every array on the way down to (excluding own) has an index, so that a value can be reached.
    bool isResolved() const;

    Plug element(std::uint32_t logical) const; ///< of an array; the element need not exist
    Plug child(unsigned position) const;
    Plug child(const std::string& longOrShortName) const;
    Plug parent() const; ///< the compound that owns this child (an element keeps its indices)
    Plug array() const;  ///< the array plug that owns this element

    /// Existing (set or connected) logical indices of an array, ascending, and their number.
    std::vector<std::uint32_t> existingIndices() const;
    std::size_t numElements() const;
    bool exists() const; ///< this element (or plain plug) has a value or connection of its own

    // Reading evaluates: follows the input connection or asks the node to compute when dirty.
    double number() const;
    std::string text() const;
    Imath::M44d matrix() const;
    DataRef data() const; ///< null when nothing is set

    // Writing fails when the plug is locked, fed by a connection, or of another type.
    void setNumber(double value) const;
    void setText(const std::string& value) const;
    void setMatrix(const Imath::M44d& value) const;
    void setData(DataRef value) const;
    /// Makes an array element or row exist without giving it a value (reading through the API does this).
    void touch() const;
    /// Removes the element or resets the plug to its default; children too.
    void unset() const;

    /// The storage behind an array of numbers / behind weight rows. Reading through them skips evaluation
    /// of element connections (weights are not connected element by element). Null when nothing is stored
    /// yet; `make` creates it. After writing through them the caller calls changed().
    const NumericArray* numbers() const;
    NumericArray& makeNumbers() const;
    const WeightRows* rows() const;
    WeightRows& makeRows() const;
    /// Marks everything that depends on this plug dirty.
    void changed() const;

    // What is stored, whatever is connected and without evaluation: what files are written from.
    /// A value is stored for the plug or below it, or (arrays) an element exists.
    bool hasStored() const;
    double storedNumber() const; ///< the default when nothing is stored
    std::string storedText() const;
    Imath::M44d storedMatrix() const;
    DataRef storedData() const;
    std::vector<std::uint32_t> storedIndices() const; ///< without elements that are only connected

    /// Itself or an ancestor. A locked node's plugs may still be set.
    bool isLocked() const;
    bool isLockedItself() const;
    void setLocked(bool locked) const;
    /// Plug flags that a file or setAttr may override per plug.
    bool isKeyable() const;
    bool isInChannelBox() const;
    void setKeyable(bool keyable) const;
    void setChannelBox(bool shown) const;

    /// Whether this plug is the ancestor itself, or a child or element at any depth below it.
    bool isBelow(const Plug& ancestor) const;
    /// What feeds this plug; null plug when none. Exactly this plug, not an ancestor or child.
    Plug source() const;
    std::vector<Plug> destinations() const;
    bool isDestination() const;
    /// Whether this plug or one of its ancestors is fed by a connection.
    bool isFed() const;

    /// `node.attr[3].child` with long names (or short ones); the node's shortest unique name.
    std::string name(bool longNames = true) const;
    /// `.attr[3].child` without the node, as files write it: aliases are not used.
    std::string attributePath(bool longNames) const;

    friend bool operator==(const Plug& a, const Plug& b);
    friend bool operator!=(const Plug& a, const Plug& b) { return !(a == b); }

private:
    friend class Graph;
    friend class Node;
    [[noreturn]] void fail(const std::string& why) const;
    Node& alive() const; ///< throws for a null plug or a deleted node
    void requireNumber() const;
    void requireType(AttributeType type, const char* word) const;
    void requireWritable() const;
    void storeNumber(double value) const;
    void store(const std::string& value) const;
    void store(const Imath::M44d& value) const;
    void store(DataRef value) const;
    class Route;
    Plug ancestor() const;            ///< the array or compound that owns this plug; null for a root
    bool feeding(Plug& source) const; ///< what is connected to this plug, directly or through an ancestor
    bool comesFrom(Plug& source) const;

    Ref<Node> owner;
    Ref<const Attribute> rootOwner; ///< keeps the attribute's tree alive
    const Attribute* definition = nullptr;
    std::uint32_t indices[kMaxDepth] = {kNoIndex, kNoIndex, kNoIndex, kNoIndex, kNoIndex, kNoIndex};
};

} // namespace host
