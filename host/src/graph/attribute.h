#pragma once

#include "types/object.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// How an attribute keeps its value. Numbers are held as double whatever their type; kFloat values are
/// rounded to float when set, kBool to 0 or 1, the integer types to integers.
enum class AttributeType {
    kBool,
    kByte,
    kChar,
    kShort,
    kLong,
    kEnum,
    kFloat,
    kDouble,
    kAngle,    ///< degrees in the slot, radians through MPlug::asDouble
    kDistance, ///< centimetres
    kTime,     ///< frames in the slot
    kString,
    kMatrix,
    kCompound, ///< has children; double3, float2, short3 ... are compounds with Attribute::dataType set
    kMessage,  ///< no value, only connections
    kData,     ///< a shared, immutable host::Data (mesh, component list, point array, ...)
    kOpaque    ///< met in a file, not known to the host: its text is kept and written back
};

/// One attribute of a node type, or a dynamic attribute of one node. Immutable once it is in use.
/// Children are owned by their parent; `parent` is a plain back pointer. The node type or the node owns the
/// roots; a Ref keeps a whole tree's root alive only if it is the root's, so handles retain the root too
/// (see Plug).
class Attribute final : public Object {
public:
    struct Flags {
        bool array = false;
        bool indexMatters = true;
        bool readable = true;
        bool writable = true;
        bool connectable = true;
        bool storable = true; ///< written to files
        bool keyable = false;
        bool hidden = false;
        bool cached = true;
        bool channelBox = false;
        bool usedAsColor = false;
        bool usedAsFilename = false;
        bool proxy = false;
        bool dynamic = false; ///< made by addAttr
        bool output = false;  ///< computed by the node; never read from its slot while dirty
        /// A compound array whose only child is a sparse array of doubles, stored as weight rows
        /// (skinCluster.weightList).
        bool weightRows = false;
    };

    Attribute() = default;

    std::string longName;
    std::string shortName;
    std::string niceName;                ///< empty unless given
    std::vector<std::string> categories; ///< addAttr -category; kept for files
    AttributeType type = AttributeType::kDouble;
    std::string dataType; ///< "double3", "mesh", "componentList", "pointArray", ...; empty for plain numbers
    Flags flags;
    double defaultNumber = 0.0;
    std::string defaultText;
    bool hasMin = false, hasMax = false, hasSoftMin = false, hasSoftMax = false;
    double minimum = 0.0, maximum = 0.0, softMinimum = 0.0, softMaximum = 0.0;
    std::vector<std::pair<std::string, int>> enumFields; ///< name and value, in order
    Attribute* parent = nullptr;
    std::vector<Ref<Attribute>> children; ///< in child order (MPlug::child)
    unsigned childIndex = 0;              ///< position in parent->children, or among the node's roots

    /// Number of array attributes from the root down to and including this one: how many logical indices a
    /// full plug of this attribute carries. At most Plug::kMaxDepth.
    unsigned arrayDepth = 0;
    /// One bit for this attribute, by its place in the tree of its root, and one for each attribute above:
    /// two attributes of which neither is above the other rarely share their own bit.
    std::uint64_t ownBit = 1, pathBits = 1;
    /// Position of this attribute's own logical index in a plug's index list; meaningful when flags.array.
    unsigned ownIndexSlot() const { return arrayDepth - 1; }

    bool isNumber() const { return type <= AttributeType::kTime; }
    const Attribute& root() const;
    /// Appends a child and gives it its parent, index and depth.
    Attribute& addChild(Ref<Attribute> child);

    MFn::Type apiType() const override;
    bool hasFn(MFn::Type fnType) const override;

    /// Makes depth and child indices right in the whole tree below; called once when a root is registered.
    /// Throws host::Error when the tree is deeper than a plug can address.
    void settle();

protected:
    /// Children that a handle keeps alive become roots of their own.
    ~Attribute() override;
};

/// A value as an attribute of that type holds it: floats rounded to float, booleans 0 or 1, integers rounded
/// to the nearest and kept within their range.
double narrowed(AttributeType type, double value);

/// The usual way to build attributes in node types: spec("input", "ip").compound().array().add(spec(...)).
/// Each call returns the builder; take() hands out the finished tree.
class AttributeSpec {
public:
    AttributeSpec(std::string longName, std::string shortName, AttributeType type = AttributeType::kDouble);

    AttributeSpec& array(bool indexMatters = true);
    AttributeSpec& number(double defaultValue);
    AttributeSpec& range(double minimum, double maximum);
    AttributeSpec& enumeration(std::vector<std::pair<std::string, int>> fields, int defaultValue = 0);
    AttributeSpec& data(std::string dataType);
    AttributeSpec& output(); ///< computed, readable, not writable, not stored
    AttributeSpec& notStorable();
    AttributeSpec& keyable();
    AttributeSpec& hidden();
    AttributeSpec& weightRows();
    AttributeSpec& add(AttributeSpec child); ///< turns this into a compound
    /// Three children long0/short0 ... of one number type, with the given suffixes (X Y Z by default):
    /// translate -> translateX. dataType becomes "double3" and the like.
    AttributeSpec& triple(AttributeType childType, double defaultValue = 0.0, const char* suffixes = "XYZ");

    Ref<Attribute> take();

private:
    Ref<Attribute> attribute;
};

} // namespace host
