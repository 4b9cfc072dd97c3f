#include "types/api.h"
#include "types/argList.h"

#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

namespace {

/// Reads one argument by a conversion; kInvalidParameter beyond the end or when it cannot be read so.
template <class Value, class Read>
MStatus readOne(const host::ArgList& list, unsigned int index, Value& target, Read read)
{
    if (index >= list.values.size())
        return MStatus::kInvalidParameter;
    auto value = read(list.values[index]);
    if (!value)
        return MStatus::kInvalidParameter;
    target = *std::move(value);
    return MStatus::kSuccess;
}

/// All elements of an array; kInvalidParameter when one is not of the type.
template <class Array, class Read>
MStatus readArray(const host::mel::Value& argument, Array& target, Read read)
{
    Array found;
    for (const host::mel::Value& element : host::elementsOf(argument)) {
        const auto value = read(element);
        if (!value)
            return MStatus::kInvalidParameter;
        found.append(*value);
    }
    target = found;
    return MStatus::kSuccess;
}

/// Reads the array at the index, or single arguments from there on as long as they are of the type. The index
/// then stands behind what was read.
template <class Array, class Read>
MStatus readMany(const host::ArgList& list, unsigned int& index, Array& target, Read read)
{
    if (index < list.values.size() && host::mel::isArray(list.values[index].type())) {
        const MStatus status = readArray(list.values[index], target, read);
        index += status ? 1 : 0;
        return status;
    }
    Array found;
    for (; index < list.values.size(); ++index) {
        const auto value = read(list.values[index]);
        if (!value)
            break;
        found.append(*value);
    }
    if (found.length() == 0)
        return MStatus::kInvalidParameter;
    target = found;
    return MStatus::kSuccess;
}

/// Reads so many numbers into the first members of a point or vector; nothing changes unless all are there.
template <class Value>
MStatus readNumbers(const host::ArgList& list, unsigned int& index, Value& target, unsigned int count,
                    unsigned int most)
{
    if (count > most || index > list.values.size() || count > list.values.size() - index)
        return MStatus::kInvalidParameter;
    Value found;
    for (unsigned int i = 0; i < count; ++i) {
        const std::optional<double> number = host::argumentDouble(list.values[index + i]);
        if (!number)
            return MStatus::kInvalidParameter;
        found[i] = *number;
    }
    target = found;
    index += count;
    return MStatus::kSuccess;
}

std::optional<MString> readText(const host::mel::Value& argument)
{
    if (argument.isString())
        return host::Api::wrap(argument.get<std::string>()); // no copy on the way: it may be long
    const std::optional<std::string> text = host::argumentText(argument);
    return text ? std::optional<MString>(host::Api::wrap(*text)) : std::nullopt;
}

} // namespace

// Needed as long as plug-ins are C++14, where a class constant that is bound to a reference wants a place.
const unsigned int MArgList::kInvalidArgIndex;

MArgList::MArgList() : arguments(std::make_unique<host::ArgList>()) {}
MArgList::MArgList(const MArgList& other) : arguments(std::make_unique<host::ArgList>(*other.arguments)) {}
MArgList::MArgList(MArgList&& other) noexcept : arguments(std::move(other.arguments))
{
    other.arguments = std::make_unique<host::ArgList>();
}
MArgList::~MArgList() = default;

MArgList& MArgList::operator=(const MArgList& other)
{
    *arguments = host::ArgList(*other.arguments);
    return *this;
}

MArgList& MArgList::operator=(MArgList&& other) noexcept
{
    std::swap(arguments, other.arguments);
    return *this;
}

unsigned int MArgList::length(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return static_cast<unsigned int>(arguments->values.size());
}

bool MArgList::asBool(unsigned int index, MStatus* status) const
{
    bool value = false;
    host::report(status, get(index, value));
    return value;
}

int MArgList::asInt(unsigned int index, MStatus* status) const
{
    int value = 0;
    host::report(status, get(index, value));
    return value;
}

double MArgList::asDouble(unsigned int index, MStatus* status) const
{
    double value = 0.0;
    host::report(status, get(index, value));
    return value;
}

MString MArgList::asString(unsigned int index, MStatus* status) const
{
    MString value;
    host::report(status, get(index, value));
    return value;
}

MIntArray MArgList::asIntArray(unsigned int& index, MStatus* status) const
{
    MIntArray values;
    host::report(status, get(index, values));
    return values;
}

MDoubleArray MArgList::asDoubleArray(unsigned int& index, MStatus* status) const
{
    MDoubleArray values;
    host::report(status, get(index, values));
    return values;
}

const MStringArray MArgList::asStringArray(unsigned int& index, MStatus* status) const
{
    MStringArray values;
    host::report(status, get(index, values));
    return values;
}

MVector MArgList::asVector(unsigned int& index, unsigned int numElements, MStatus* status) const
{
    MVector value;
    host::report(status, get(index, value, numElements));
    return value;
}

MPoint MArgList::asPoint(unsigned int& index, unsigned int numElements, MStatus* status) const
{
    MPoint value;
    host::report(status, get(index, value, numElements));
    return value;
}

MStatus MArgList::get(unsigned int index, bool& ret) const
{
    return readOne(*arguments, index, ret, host::argumentBool);
}

MStatus MArgList::get(unsigned int index, int& ret) const
{
    return readOne(*arguments, index, ret, host::argumentInt);
}

MStatus MArgList::get(unsigned int index, double& ret) const
{
    return readOne(*arguments, index, ret, host::argumentDouble);
}

MStatus MArgList::get(unsigned int index, MString& ret) const
{
    return readOne(*arguments, index, ret, readText);
}

MStatus MArgList::get(unsigned int& index, MIntArray& ret) const
{
    return readMany(*arguments, index, ret, host::argumentInt);
}

MStatus MArgList::get(unsigned int& index, MDoubleArray& ret) const
{
    return readMany(*arguments, index, ret, host::argumentDouble);
}

MStatus MArgList::get(unsigned int& index, MStringArray& ret) const
{
    return readMany(*arguments, index, ret, readText);
}

MStatus MArgList::get(unsigned int& index, MVector& ret, unsigned int numElements) const
{
    return readNumbers(*arguments, index, ret, numElements, 3);
}

MStatus MArgList::get(unsigned int& index, MPoint& ret, unsigned int numElements) const
{
    return readNumbers(*arguments, index, ret, numElements, 4);
}

unsigned int MArgList::flagIndex(const char* shortFlag, const char* longFlag) const
{
    const auto names = [](const char* flag) {
        const std::string name = flag ? flag : "";
        return name.empty() || name[0] == '-' ? name : '-' + name;
    };
    const std::string shortName = names(shortFlag);
    const std::string longName = names(longFlag);
    for (unsigned int i = 0; i < arguments->values.size(); ++i) {
        const host::mel::Value& value = arguments->values[i];
        if (!value.isString() || value.get<std::string>().empty())
            continue;
        const std::string& text = value.get<std::string>();
        if (text == shortName || text == longName)
            return i;
    }
    return kInvalidArgIndex;
}

MStatus MArgList::addArg(bool arg)
{
    arguments->values.emplace_back(arg);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(int arg)
{
    arguments->values.emplace_back(arg);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(double arg)
{
    arguments->values.emplace_back(arg);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(const MString& arg)
{
    arguments->values.emplace_back(host::Api::text(arg));
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(const MVector& arg)
{
    for (const double number : {arg.x, arg.y, arg.z})
        arguments->values.emplace_back(number);
    return MStatus::kSuccess;
}

MStatus MArgList::addArg(const MPoint& arg)
{
    return addArg(MVector(arg));
}
