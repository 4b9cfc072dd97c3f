#include "mel/value.h"

#include "mel/limits.h"
#include "types/error.h"

#include <array>
#include <cmath>

namespace host::mel {

namespace {

constexpr std::array<const char*, 10> kTypeNames = {"void",   "int",   "float",   "string",   "vector",
                                                    "matrix", "int[]", "float[]", "string[]", "vector[]"};

[[noreturn]] void refuse(const Value& value, Type target)
{
    throw Error(std::string("Cannot convert data of type ") + typeName(value.type()) + " to type " +
                typeName(target) + ".");
}

} // namespace

const char* typeName(Type type)
{
    return kTypeNames[static_cast<std::size_t>(type)];
}

bool isArray(Type type)
{
    return type >= Type::kIntArray;
}

Type arrayOf(Type element)
{
    switch (element) {
    case Type::kInt:
        return Type::kIntArray;
    case Type::kFloat:
        return Type::kFloatArray;
    case Type::kString:
        return Type::kStringArray;
    case Type::kVector:
        return Type::kVectorArray;
    default:
        return Type::kVoid;
    }
}

std::size_t bytesPerElement(Type array)
{
    switch (array) {
    case Type::kIntArray:
        return sizeof(int);
    case Type::kStringArray:
        return sizeof(std::string);
    case Type::kVectorArray:
        return sizeof(Vector);
    default:
        return sizeof(double);
    }
}

Type elementOf(Type array)
{
    switch (array) {
    case Type::kIntArray:
        return Type::kInt;
    case Type::kFloatArray:
        return Type::kFloat;
    case Type::kStringArray:
        return Type::kString;
    case Type::kVectorArray:
        return Type::kVector;
    default:
        return Type::kVoid;
    }
}

Value Value::zero(Type type)
{
    switch (type) {
    case Type::kInt:
        return 0;
    case Type::kFloat:
        return 0.0;
    case Type::kString:
        return std::string();
    case Type::kVector:
        return Vector(0.0);
    case Type::kMatrix:
        return Matrix();
    case Type::kIntArray:
        return IntArray();
    case Type::kFloatArray:
        return FloatArray();
    case Type::kStringArray:
        return StringArray();
    case Type::kVectorArray:
        return VectorArray();
    case Type::kVoid:
        break;
    }
    return {};
}

int Value::toInt() const
{
    if (type() == Type::kInt)
        return get<int>();
    if (type() == Type::kFloat || type() == Type::kString || type() == Type::kVector)
        return truncatedToInt(toFloat());
    refuse(*this, Type::kInt);
}

double Value::toFloat() const
{
    switch (type()) {
    case Type::kInt:
        return get<int>();
    case Type::kFloat:
        return get<double>();
    case Type::kString:
        return parseNumber(get<std::string>());
    case Type::kVector:
        return get<Vector>().length();
    default:
        refuse(*this, Type::kFloat);
    }
}

Vector Value::toVector() const
{
    switch (type()) {
    case Type::kVector:
        return get<Vector>();
    case Type::kInt:
    case Type::kFloat:
        return Vector(toFloat());
    case Type::kIntArray:
    case Type::kFloatArray:
        break;
    default:
        refuse(*this, Type::kVector);
    }
    const FloatArray numbers = toFloatArray();
    if (numbers.size() != 3)
        refuse(*this, Type::kVector);
    return {numbers[0], numbers[1], numbers[2]};
}

Matrix Value::toMatrix() const
{
    if (type() != Type::kMatrix)
        refuse(*this, Type::kMatrix);
    return get<Matrix>();
}

IntArray Value::toIntArray() const
{
    if (type() == Type::kIntArray)
        return get<IntArray>();
    if (type() != Type::kFloatArray)
        refuse(*this, Type::kIntArray);
    IntArray numbers;
    for (const double number : get<FloatArray>())
        numbers.push_back(truncatedToInt(number));
    return numbers;
}

FloatArray Value::toFloatArray() const
{
    switch (type()) {
    case Type::kFloatArray:
        return get<FloatArray>();
    case Type::kIntArray:
        return FloatArray(get<IntArray>().begin(), get<IntArray>().end());
    case Type::kVector:
        return {get<Vector>().x, get<Vector>().y, get<Vector>().z};
    default:
        refuse(*this, Type::kFloatArray);
    }
}

StringArray Value::toStringArray() const
{
    if (type() != Type::kStringArray)
        refuse(*this, Type::kStringArray);
    return get<StringArray>();
}

VectorArray Value::toVectorArray() const
{
    if (type() != Type::kVectorArray)
        refuse(*this, Type::kVectorArray);
    return get<VectorArray>();
}

bool Value::toBool() const
{
    if (type() == Type::kString) {
        const std::string& text = get<std::string>();
        if (text == "true" || text == "on" || text == "yes")
            return true;
    }
    return type() == Type::kInt ? get<int>() != 0 : toFloat() != 0.0;
}

Value Value::convertedTo(Type target) const
{
    if (target == type())
        return *this;
    if (isArray(type()) && isArray(target) && size() == 0)
        return zero(target);
    switch (target) {
    case Type::kInt:
        return toInt();
    case Type::kFloat:
        return toFloat();
    case Type::kString:
        return toString();
    case Type::kVector:
        return toVector();
    case Type::kMatrix:
        return toMatrix();
    case Type::kIntArray:
        return toIntArray();
    case Type::kFloatArray:
        return toFloatArray();
    case Type::kStringArray:
        return toStringArray();
    case Type::kVectorArray:
        return toVectorArray();
    case Type::kVoid:
        break;
    }
    return {};
}

int Value::size() const
{
    switch (type()) {
    case Type::kVoid:
        return 0;
    case Type::kString:
        return static_cast<int>(get<std::string>().size());
    case Type::kIntArray:
        return static_cast<int>(get<IntArray>().size());
    case Type::kFloatArray:
        return static_cast<int>(get<FloatArray>().size());
    case Type::kStringArray:
        return static_cast<int>(get<StringArray>().size());
    case Type::kVectorArray:
        return static_cast<int>(get<VectorArray>().size());
    case Type::kMatrix:
        return get<Matrix>().rows;
    default:
        return 1;
    }
}

std::uint64_t stepsOf(const Value& value)
{
    const bool isMatrix = value.type() == Type::kMatrix;
    const std::size_t size =
        isMatrix ? value.get<Matrix>().cells.size() : static_cast<std::size_t>(value.size());
    return size / 256;
}

} // namespace host::mel
