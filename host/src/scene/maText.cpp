#include "scene/maText.h"

#include "types/numberText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace host {

namespace {

constexpr std::size_t kLongestPart = 1500;

template <class Number>
std::string shortest(Number value)
{
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    char digits[400];
    const double size = std::fabs(static_cast<double>(value));
    // Scientific notation is shorter for round thousands, but nobody writes a thousand like that.
    const auto format =
        size == 0.0 || (size >= 1e-4 && size < 1e16) ? std::chars_format::fixed : std::chars_format::general;
    const auto end = std::to_chars(digits, digits + sizeof digits, value, format).ptr;
    return {digits, end};
}

void appendEscaped(std::string& out, std::string_view text)
{
    for (const char c : text) {
        switch (c) {
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        default:
            out += c;
        }
    }
}

} // namespace

std::string maNumber(double value)
{
    return shortest(value);
}

std::string maNumber(float value)
{
    return shortest(value);
}

std::string maNumberInUnit(double value, double unitSize)
{
    if (unitSize == 1.0)
        return maNumber(value);
    // Not every value is some number of units: the second time goes to the nearest one that is.
    for (int attempt = 0; attempt < 2; ++attempt, value = value / unitSize * unitSize) {
        const double guess = value / unitSize;
        constexpr double kFar = std::numeric_limits<double>::infinity();
        for (const double inUnit : {guess, std::nextafter(guess, -kFar), std::nextafter(guess, kFar)}) {
            for (int digits = 6; inUnit * unitSize == value && digits <= 17; ++digits) {
                double read = 0.0;
                if (maParseNumber(generalText(inUnit, digits), read) && read * unitSize == value)
                    return maNumber(read);
            }
        }
    }
    return maNumber(value / unitSize);
}

std::string maQuoted(std::string_view text)
{
    std::string out;
    out.reserve(text.size() + 2);
    if (text.size() <= kLongestPart) {
        out += '"';
        appendEscaped(out, text);
        out += '"';
        return out;
    }
    out += "(\n\t\t";
    for (std::size_t at = 0; at < text.size(); at += kLongestPart) {
        out += at == 0 ? "\"" : "\n\t\t+ \"";
        appendEscaped(out, text.substr(at, kLongestPart));
        out += '"';
    }
    out += ')';
    return out;
}

std::string maLeaf(std::string_view path)
{
    const std::size_t bar = path.rfind('|');
    std::string_view leaf = bar == path.npos ? path : path.substr(bar + 1);
    if (!leaf.empty() && leaf.front() == ':')
        leaf.remove_prefix(1);
    return std::string(leaf);
}

bool maParseNumber(std::string_view word, double& value)
{
    std::string_view digits = word;
    if (!digits.empty() && digits.front() == '+')
        digits.remove_prefix(1);
    const bool negative = !digits.empty() && digits.front() == '-';
    std::string_view size = negative ? digits.substr(1) : digits;
    if (size.empty())
        return false;
    if (size.size() > 2 && size[0] == '0' && (size[1] == 'x' || size[1] == 'X')) {
        std::uint64_t bits = 0;
        const auto hexadecimal = std::from_chars(size.data() + 2, size.data() + size.size(), bits, 16);
        value = negative ? -static_cast<double>(bits) : static_cast<double>(bits);
        return hexadecimal.ec == std::errc() && hexadecimal.ptr == size.data() + size.size();
    }
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const char* const end = digits.data() + digits.size();
    if (result.ec == std::errc() && result.ptr == end)
        return true;
    if (result.ec == std::errc::result_out_of_range && result.ptr == end) {
        // Too small for a double reads as zero, too large as infinite, as strtod has it.
        const bool tiny = size.find("e-") != size.npos || size.find("E-") != size.npos;
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
        if (negative)
            value = -value;
        return true;
    }
    // How Windows runtimes print what is no number: 1.#INF, 1.#QNAN, -1.#IND, 1.#SNAN0 ...
    if (size.size() > 4 && size.substr(0, 3) == "1.#") {
        value = size.substr(3, 3) == "INF" ? std::numeric_limits<double>::infinity()
                                           : std::numeric_limits<double>::quiet_NaN();
        if (negative)
            value = -value;
        return true;
    }
    return false;
}

bool maParseBoolean(std::string_view word, bool& value)
{
    if (word == "yes" || word == "on" || word == "true") {
        value = true;
        return true;
    }
    if (word == "no" || word == "off" || word == "false") {
        value = false;
        return true;
    }
    double number = 0.0;
    if (!maParseNumber(word, number))
        return false;
    value = number != 0.0;
    return true;
}

} // namespace host
