#include "types/numberText.h"

#include <charconv>
#include <cmath>

namespace host {

namespace {

template <class Number>
std::string shortest(Number value)
{
    // Wide enough for the largest number written without exponent and for all digits of any other.
    char buffer[64];
    const double size = std::fabs(static_cast<double>(value));
    const bool plain = value == Number(0) || (size >= 1e-5 && size < 1e15);
    const auto format = plain ? std::chars_format::fixed : std::chars_format::scientific;
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format).ptr;
    return {buffer, end};
}

/// Enough for the largest double and any sensible count of decimals.
constexpr std::size_t kMostDigits = 512;

std::string inFormat(double value, std::chars_format format, int precision)
{
    char buffer[kMostDigits];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format, precision).ptr;
    return {buffer, end};
}

const char* const kBlanks = " \t\r\n";

} // namespace

std::string numberText(double value)
{
    return shortest(value);
}

std::string numberText(float value)
{
    return shortest(value);
}

std::string generalText(double value, int digits)
{
    return inFormat(value, std::chars_format::general, digits);
}

std::string fixedText(double value, int decimals)
{
    return inFormat(value, std::chars_format::fixed, decimals);
}

double leadingNumber(const std::string& text, bool* whole)
{
    if (whole)
        *whole = false;
    std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string::npos)
        return 0.0;
    if (text[start] == '+')
        ++start;
    // "inf" and "nan" are words.
    const std::size_t digit = start < text.size() && text[start] == '-' ? start + 1 : start;
    if (digit >= text.size() || (text[digit] != '.' && (text[digit] < '0' || text[digit] > '9')))
        return 0.0;
    double value = 0.0;
    const char* const last = text.data() + text.size();
    const auto read = std::from_chars(text.data() + start, last, value);
    if (read.ec != std::errc())
        return 0.0;
    if (whole)
        *whole = text.find_first_not_of(kBlanks, static_cast<std::size_t>(read.ptr - text.data())) ==
                 std::string::npos;
    return value;
}

} // namespace host
