#include "graph/node.h"
#include "graph/numericArray.h"
#include "graph/statusOf.h"
#include "graph/units.h"

#include <maya/MPlug.h>

#include <algorithm>
#include <limits>

using host::Api;
using host::Plug;

namespace {

/// The number of a plug as the interface speaks it. Reading an element makes it exist, as on the platform;
/// rows of skin weights stay sparse.
double numberOf(const MPlug& handle)
{
    const Plug& plug = Api::plug(handle);
    if (plug.node())
        Api::isThere(*plug.node());
    const double value = plug.number();
    const host::Attribute& attribute = *plug.attribute();
    // What differs from the default exists already.
    if (attribute.flags.array && value == attribute.defaultNumber && !attribute.root().flags.weightRows &&
        !attribute.root().flags.output)
        plug.touch();
    return attribute.type == host::AttributeType::kAngle ? value * host::kRadiansPerDegree : value;
}

MStatus setNumber(const MPlug& handle, double value)
{
    return host::statusOf([&] {
        const Plug& plug = Api::plug(handle);
        if (plug.node())
            Api::isThere(*plug.node());
        const bool angle = plug.attribute() && plug.attribute()->type == host::AttributeType::kAngle;
        plug.setNumber(angle ? value / host::kRadiansPerDegree : value);
    });
}

template <class Integer>
Integer truncated(double value)
{
    constexpr double kLowest = std::numeric_limits<Integer>::lowest();
    constexpr double kHighest = std::numeric_limits<Integer>::max();
    return value == value ? static_cast<Integer>(std::clamp(value, kLowest, kHighest)) : Integer{0};
}

/// The ends of the range cannot be written as a double, so truncated() does not do.
MInt64 wholeNumber(double value)
{
    constexpr double kBeyond = 9223372036854775808.0; // 2 to the power of 63
    if (value >= kBeyond)
        return std::numeric_limits<MInt64>::max();
    if (value < -kBeyond)
        return std::numeric_limits<MInt64>::lowest();
    return value == value ? static_cast<MInt64>(value) : 0;
}

/// Reads by one of the as... members.
template <class Value>
MStatus read(const MPlug& plug, Value (MPlug::*as)(MStatus*) const, Value& target)
{
    MStatus status;
    const Value value = (plug.*as)(&status);
    if (status)
        target = value;
    return status;
}

} // namespace

double MPlug::asDouble(MStatus* status) const
{
    return host::answer(status, 0.0, [this] { return numberOf(*this); });
}

float MPlug::asFloat(MStatus* status) const
{
    return host::answer(status, 0.0f, [this] { return static_cast<float>(numberOf(*this)); });
}

int MPlug::asInt(MStatus* status) const
{
    return host::answer(status, 0, [this] { return truncated<int>(numberOf(*this)); });
}

short MPlug::asShort(MStatus* status) const
{
    return host::answer(status, short{0}, [this] { return truncated<short>(numberOf(*this)); });
}

char MPlug::asChar(MStatus* status) const
{
    return host::answer(status, char{0}, [this] { return truncated<char>(numberOf(*this)); });
}

MInt64 MPlug::asInt64(MStatus* status) const
{
    return host::answer(status, MInt64{0}, [this] { return wholeNumber(numberOf(*this)); });
}

bool MPlug::asBool(MStatus* status) const
{
    return host::answer(status, false, [this] { return numberOf(*this) != 0.0; });
}

MString MPlug::asString(MStatus* status) const
{
    return host::answer(status, MString(), [this] { return Api::wrap(Api::plug(*this).text()); });
}

MStatus MPlug::setDouble(double value)
{
    return setNumber(*this, value);
}
MStatus MPlug::setFloat(float value)
{
    return setNumber(*this, static_cast<double>(value));
}
MStatus MPlug::setInt(int value)
{
    return setNumber(*this, value);
}
MStatus MPlug::setShort(short value)
{
    return setNumber(*this, value);
}
MStatus MPlug::setChar(char value)
{
    return setNumber(*this, value);
}
MStatus MPlug::setInt64(MInt64 value)
{
    return setNumber(*this, static_cast<double>(value));
}
MStatus MPlug::setBool(bool value)
{
    return setNumber(*this, value ? 1.0 : 0.0);
}

MStatus MPlug::setString(const MString& value)
{
    return host::statusOf([&] { Api::plug(*this).setText(Api::text(value)); });
}

MStatus MPlug::getValue(double& value) const
{
    return read(*this, &MPlug::asDouble, value);
}
MStatus MPlug::getValue(float& value) const
{
    return read(*this, &MPlug::asFloat, value);
}
MStatus MPlug::getValue(MInt64& value) const
{
    return read(*this, &MPlug::asInt64, value);
}
MStatus MPlug::getValue(int& value) const
{
    return read(*this, &MPlug::asInt, value);
}
MStatus MPlug::getValue(short& value) const
{
    return read(*this, &MPlug::asShort, value);
}
MStatus MPlug::getValue(char& value) const
{
    return read(*this, &MPlug::asChar, value);
}
MStatus MPlug::getValue(bool& value) const
{
    return read(*this, &MPlug::asBool, value);
}
MStatus MPlug::getValue(MString& value) const
{
    return read(*this, &MPlug::asString, value);
}

MStatus MPlug::setValue(double value)
{
    return setDouble(value);
}
MStatus MPlug::setValue(float value)
{
    return setFloat(value);
}
MStatus MPlug::setValue(MInt64 value)
{
    return setInt64(value);
}
MStatus MPlug::setValue(int value)
{
    return setInt(value);
}
MStatus MPlug::setValue(short value)
{
    return setShort(value);
}
MStatus MPlug::setValue(char value)
{
    return setChar(value);
}
MStatus MPlug::setValue(bool value)
{
    return setBool(value);
}
MStatus MPlug::setValue(const MString& value)
{
    return setString(value);
}
MStatus MPlug::setValue(const char* value)
{
    return setString(value ? value : "");
}
