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
MStatus MPlug::setBool(bool value)
{
    return setNumber(*this, value ? 1.0 : 0.0);
}

MStatus MPlug::setString(const MString& value)
{
    return host::statusOf([&] { Api::plug(*this).setText(Api::text(value)); });
}
