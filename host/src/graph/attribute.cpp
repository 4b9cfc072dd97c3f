#include "graph/attribute.h"

#include "graph/plug.h"
#include "types/error.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace host {

namespace {

double rounded(double value, double lowest, double highest)
{
    if (std::isnan(value))
        return 0.0;
    return std::clamp(std::round(value), lowest, highest);
}

/// `place` counts the attributes of the tree.
void settleBelow(Attribute& attribute, unsigned depthAbove, unsigned& place)
{
    attribute.ownBit = std::uint64_t{1} << (place++ % 64u);
    attribute.pathBits = attribute.ownBit | (attribute.parent ? attribute.parent->pathBits : 0u);
    attribute.arrayDepth = depthAbove + (attribute.flags.array ? 1u : 0u);
    if (attribute.arrayDepth > Plug::kMaxDepth)
        throw Error("Attribute '" + attribute.longName + "' lies below too many arrays.");
    for (unsigned position = 0; position < attribute.children.size(); ++position) {
        Attribute& child = *attribute.children[position];
        child.parent = &attribute;
        child.childIndex = position;
        settleBelow(child, attribute.arrayDepth, place);
    }
}

} // namespace

Attribute::~Attribute()
{
    for (const Ref<Attribute>& child : children)
        child->parent = nullptr;
}

const Attribute& Attribute::root() const
{
    const Attribute* top = this;
    while (top->parent)
        top = top->parent;
    return *top;
}

Attribute& Attribute::addChild(Ref<Attribute> child)
{
    type = AttributeType::kCompound;
    children.push_back(child);
    unsigned place = 0;
    settleBelow(*this, arrayDepth - (flags.array && arrayDepth > 0 ? 1u : 0u), place);
    return *children.back();
}

void Attribute::settle()
{
    const unsigned above = parent ? parent->arrayDepth : 0u;
    unsigned place = 0;
    settleBelow(*this, above, place);
}

MFn::Type Attribute::apiType() const
{
    switch (type) {
    case AttributeType::kEnum:
        return MFn::kEnumAttribute;
    case AttributeType::kMatrix:
        return MFn::kMatrixAttribute;
    case AttributeType::kCompound:
        return MFn::kCompoundAttribute;
    case AttributeType::kMessage:
        return MFn::kMessageAttribute;
    case AttributeType::kString:
    case AttributeType::kData:
    case AttributeType::kOpaque:
        return MFn::kTypedAttribute;
    default:
        return MFn::kNumericAttribute;
    }
}

bool Attribute::hasFn(MFn::Type fnType) const
{
    return fnType == MFn::kBase || fnType == MFn::kAttribute || fnType == apiType();
}

double narrowed(AttributeType type, double value)
{
    switch (type) {
    case AttributeType::kBool:
        return value != 0.0 ? 1.0 : 0.0;
    case AttributeType::kByte:
        return rounded(value, 0.0, 255.0);
    case AttributeType::kChar:
        return rounded(value, -128.0, 127.0);
    case AttributeType::kShort:
        return rounded(value, -32768.0, 32767.0);
    case AttributeType::kLong:
    case AttributeType::kEnum:
        return rounded(value, -2147483648.0, 2147483647.0);
    case AttributeType::kFloat:
        return static_cast<double>(static_cast<float>(value));
    default:
        return value;
    }
}

AttributeSpec::AttributeSpec(std::string longName, std::string shortName, AttributeType type)
    : attribute(new Attribute)
{
    attribute->longName = std::move(longName);
    attribute->shortName = std::move(shortName);
    attribute->type = type;
    attribute->flags.readable = true;
}

AttributeSpec& AttributeSpec::array(bool indexMatters)
{
    attribute->flags.array = true;
    attribute->flags.indexMatters = indexMatters;
    return *this;
}

AttributeSpec& AttributeSpec::number(double defaultValue)
{
    attribute->defaultNumber = narrowed(attribute->type, defaultValue);
    return *this;
}

AttributeSpec& AttributeSpec::range(double minimum, double maximum)
{
    attribute->hasMin = attribute->hasMax = true;
    attribute->minimum = minimum;
    attribute->maximum = maximum;
    return *this;
}

AttributeSpec& AttributeSpec::enumeration(std::vector<std::pair<std::string, int>> fields, int defaultValue)
{
    attribute->type = AttributeType::kEnum;
    attribute->enumFields = std::move(fields);
    attribute->defaultNumber = defaultValue;
    return *this;
}

AttributeSpec& AttributeSpec::data(std::string dataType)
{
    attribute->type = AttributeType::kData;
    attribute->dataType = std::move(dataType);
    return *this;
}

AttributeSpec& AttributeSpec::output()
{
    attribute->flags.output = true;
    attribute->flags.writable = false;
    attribute->flags.storable = false;
    return *this;
}

AttributeSpec& AttributeSpec::notStorable()
{
    attribute->flags.storable = false;
    return *this;
}

AttributeSpec& AttributeSpec::keyable()
{
    attribute->flags.keyable = true;
    return *this;
}

AttributeSpec& AttributeSpec::hidden()
{
    attribute->flags.hidden = true;
    return *this;
}

AttributeSpec& AttributeSpec::weightRows()
{
    attribute->flags.weightRows = true;
    return *this;
}

AttributeSpec& AttributeSpec::add(AttributeSpec child)
{
    attribute->addChild(child.take());
    return *this;
}

AttributeSpec& AttributeSpec::triple(AttributeType childType, double defaultValue, const char* suffixes)
{
    for (const char* suffix = suffixes; *suffix; ++suffix) {
        const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(*suffix)));
        AttributeSpec child(attribute->longName + *suffix, attribute->shortName + lower, childType);
        child.number(defaultValue);
        child.attribute->flags = attribute->flags;
        child.attribute->flags.array = false;
        add(std::move(child));
    }
    const std::string count = std::to_string(attribute->children.size());
    switch (childType) {
    case AttributeType::kFloat:
        attribute->dataType = "float" + count;
        break;
    case AttributeType::kShort:
        attribute->dataType = "short" + count;
        break;
    case AttributeType::kLong:
        attribute->dataType = "long" + count;
        break;
    default:
        attribute->dataType = "double" + count;
    }
    return *this;
}

Ref<Attribute> AttributeSpec::take()
{
    attribute->settle();
    return std::move(attribute);
}

} // namespace host
