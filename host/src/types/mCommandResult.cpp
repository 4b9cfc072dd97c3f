#include "types/api.h"
#include "types/commandResult.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

using host::mel::Value;
using ValueType = host::mel::Type;

namespace {

/// The values of one type, read as they are: a result of another type is refused and nothing is written.
template <class Stored>
const Stored* stored(const Value& value, ValueType type)
{
    return value.type() == type ? &value.get<Stored>() : nullptr;
}

template <class Array, class Stored>
MStatus copyArray(const std::vector<Stored>* from, Array& to)
{
    if (!from)
        return MStatus::kFailure;
    to = from->empty() ? Array() : Array(from->data(), static_cast<unsigned int>(from->size()));
    return MStatus::kSuccess;
}

} // namespace

MCommandResult::MCommandResult(MStatus* status) : result(std::make_unique<host::CommandResult>())
{
    host::report(status, MStatus::kSuccess);
}

MCommandResult::~MCommandResult() = default;

MCommandResult::Type MCommandResult::resultType(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    switch (result->value.type()) {
    case ValueType::kVoid:
        return kInvalid;
    case ValueType::kInt:
        return kInt;
    case ValueType::kFloat:
        return kDouble;
    case ValueType::kString:
        return kString;
    case ValueType::kVector:
        return kVector;
    case ValueType::kMatrix:
        return kMatrix;
    case ValueType::kIntArray:
        return kIntArray;
    case ValueType::kFloatArray:
        return kDoubleArray;
    case ValueType::kStringArray:
        return kStringArray;
    case ValueType::kVectorArray:
        return kVectorArray;
    }
    return kInvalid;
}

MStatus MCommandResult::getResult(int& target) const
{
    const int* value = stored<int>(result->value, ValueType::kInt);
    if (!value)
        return MStatus::kFailure;
    target = *value;
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(double& target) const
{
    const double* value = stored<double>(result->value, ValueType::kFloat);
    if (!value)
        return MStatus::kFailure;
    target = *value;
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MString& target) const
{
    const std::string* value = stored<std::string>(result->value, ValueType::kString);
    if (!value)
        return MStatus::kFailure;
    target = host::Api::wrap(*value);
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MIntArray& target) const
{
    return copyArray(stored<host::mel::IntArray>(result->value, ValueType::kIntArray), target);
}

MStatus MCommandResult::getResult(MDoubleArray& target) const
{
    return copyArray(stored<host::mel::FloatArray>(result->value, ValueType::kFloatArray), target);
}

MStatus MCommandResult::getResult(MStringArray& target) const
{
    const auto* value = stored<host::mel::StringArray>(result->value, ValueType::kStringArray);
    if (!value)
        return MStatus::kFailure;
    target = host::Api::wrap(*value);
    return MStatus::kSuccess;
}

MStatus MCommandResult::getResult(MVector& target) const
{
    const auto* value = stored<host::mel::Vector>(result->value, ValueType::kVector);
    if (!value)
        return MStatus::kFailure;
    target = MVector(value->x, value->y, value->z);
    return MStatus::kSuccess;
}

MString MCommandResult::stringResult(MStatus* status) const
{
    MString text;
    host::report(status, getResult(text));
    return text;
}
