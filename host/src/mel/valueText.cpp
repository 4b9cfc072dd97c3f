#include "mel/value.h"
#include "types/characters.h"
#include "types/error.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace host::mel {

namespace {

std::string vectorText(const Vector& vector)
{
    return formatFloat(vector.x) + ' ' + formatFloat(vector.y) + ' ' + formatFloat(vector.z);
}

std::string elementText(int number)
{
    return std::to_string(number);
}
std::string elementText(double number)
{
    return formatFloat(number);
}
const std::string& elementText(const std::string& text)
{
    return text;
}
std::string elementText(const Vector& vector)
{
    return vectorText(vector);
}

template <class Array>
std::string lines(const Array& array)
{
    std::string text;
    for (const auto& element : array)
        text.append(elementText(element)).append("\n");
    return text;
}

std::string matrixLines(const Matrix& matrix)
{
    std::string text;
    for (int row = 0; row < matrix.rows; ++row) {
        for (int column = 0; column < matrix.columns; ++column)
            text.append(column == 0 ? "" : " ").append(formatFloat(matrix.at(row, column)));
        text += '\n';
    }
    return text;
}

} // namespace

std::string Value::toString() const
{
    switch (type()) {
    case Type::kVoid:
        return {};
    case Type::kInt:
        return std::to_string(get<int>());
    case Type::kFloat:
        return formatFloat(get<double>());
    case Type::kString:
        return get<std::string>();
    case Type::kVector:
        return vectorText(get<Vector>());
    default:
        throw Error(std::string("Cannot convert data of type ") + typeName(type()) + " to type string.");
    }
}

std::string Value::printed() const
{
    switch (type()) {
    case Type::kMatrix:
        return matrixLines(get<Matrix>());
    case Type::kIntArray:
        return lines(get<IntArray>());
    case Type::kFloatArray:
        return lines(get<FloatArray>());
    case Type::kStringArray:
        return lines(get<StringArray>());
    case Type::kVectorArray:
        return lines(get<VectorArray>());
    default:
        return toString();
    }
}

std::string formatFloat(double number)
{
    // The shape of "%.10g", whatever the locale.
    std::array<char, 40> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, 10);
    return {buffer.data(), end.ptr};
}

double parseNumber(const std::string& text, bool* wholeText)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end && isBlank(*at))
        ++at;
    double sign = 1.0;
    if (at != end && (*at == '-' || *at == '+'))
        sign = *at++ == '-' ? -1.0 : 1.0;
    double number = 0.0;
    std::from_chars_result result{at, std::errc::invalid_argument};
    if (end - at > 2 && at[0] == '0' && (at[1] == 'x' || at[1] == 'X')) {
        unsigned long long digits = 0;
        result = std::from_chars(at + 2, end, digits, 16);
        number = static_cast<double>(digits);
    } else if (at != end && (*at == '.' || (*at >= '0' && *at <= '9'))) { // "inf" and "nan" are words
        result = std::from_chars(at, end, number);
        if (result.ec == std::errc::result_out_of_range)
            number = std::numeric_limits<double>::infinity();
    }
    if (wholeText) {
        const char* rest = result.ptr;
        while (rest != end && isBlank(*rest))
            ++rest;
        *wholeText = result.ec != std::errc::invalid_argument && rest == end;
    }
    return result.ec == std::errc::invalid_argument ? 0.0 : sign * number;
}

int truncatedToInt(double number)
{
    if (std::isnan(number))
        return 0;
    if (number >= static_cast<double>(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (number <= static_cast<double>(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return static_cast<int>(number);
}

} // namespace host::mel
