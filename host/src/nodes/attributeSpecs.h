#pragma once

#include "graph/nodeType.h"

#include <string>
#include <utility>

namespace host {

// Short forms for the attributes that node types are made of; long name, short name, default.

inline AttributeSpec flagAttribute(const char* longName, const char* shortName, bool on = false)
{
    return AttributeSpec(longName, shortName, AttributeType::kBool).number(on ? 1.0 : 0.0);
}
inline AttributeSpec shortAttribute(const char* longName, const char* shortName, double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kShort).number(value);
}
inline AttributeSpec longAttribute(const char* longName, const char* shortName, double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kLong).number(value);
}
inline AttributeSpec floatAttribute(const char* longName, const char* shortName, double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kFloat).number(value);
}
inline AttributeSpec doubleAttribute(const char* longName, const char* shortName, double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kDouble).number(value);
}
inline AttributeSpec distanceAttribute(const char* longName, const char* shortName, double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kDistance).number(value);
}
inline AttributeSpec angleAttribute(const char* longName, const char* shortName, double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kAngle).number(value);
}
inline AttributeSpec textAttribute(const char* longName, const char* shortName)
{
    return {longName, shortName, AttributeType::kString};
}
inline AttributeSpec matrixAttribute(const char* longName, const char* shortName)
{
    return {longName, shortName, AttributeType::kMatrix};
}
inline AttributeSpec messageAttribute(const char* longName, const char* shortName)
{
    return {longName, shortName, AttributeType::kMessage};
}
inline AttributeSpec dataAttribute(const char* longName, const char* shortName, const char* dataType)
{
    return AttributeSpec(longName, shortName, AttributeType::kData).data(dataType);
}
inline AttributeSpec compoundAttribute(const char* longName, const char* shortName)
{
    return {longName, shortName, AttributeType::kCompound};
}
/// longX longY longZ.
inline AttributeSpec tripleAttribute(const char* longName, const char* shortName, AttributeType type,
                                     double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kCompound).triple(type, value);
}
/// longR longG longB.
inline AttributeSpec colorAttribute(const char* longName, const char* shortName, double value = 0.0)
{
    return AttributeSpec(longName, shortName, AttributeType::kCompound)
        .triple(AttributeType::kFloat, value, "RGB");
}

} // namespace host
