#include "kernels/labelText.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

constexpr int kDecimals = 6;
constexpr double kMillion = 1e6;
/// From here on every double is a whole number.
constexpr double kWholeFrom = 9007199254740992.0;

/// A fraction of one in millionths, rounded half to even on its exact value; one million when it rounds up to
/// one. Product and error together are the exact product, so a tie is a tie of the real value.
std::uint32_t millionths(double fraction)
{
    const double product = fraction * kMillion;
    const double error = std::fma(fraction, kMillion, -product);
    const double whole = std::floor(product);
    const double rest = product - whole;
    const auto count = static_cast<std::uint32_t>(whole);
    const bool aboveHalf = rest > 0.5 || (rest == 0.5 && error > 0.0);
    const bool tieOfOdd = rest == 0.5 && error == 0.0 && count % 2 == 1;
    return aboveHalf || tieOfOdd ? count + 1 : count;
}

char* writeWhole(std::uint64_t whole, char* out)
{
    char digits[20];
    int count = 0;
    do {
        digits[count++] = static_cast<char>('0' + whole % 10);
        whole /= 10;
    } while (whole != 0);
    while (count > 0)
        *out++ = digits[--count];
    return out;
}

char* writeDecimals(std::uint32_t value, int precision, char* out)
{
    char digits[kDecimals];
    for (int digit = kDecimals - 1; digit >= 0; --digit) {
        digits[digit] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    std::memcpy(out, digits, static_cast<std::size_t>(precision));
    return out + precision;
}

/// Huge whole numbers, infinities and the like, whose text holds no decimal point in any locale.
char* writeUnusual(double value, char* out)
{
    return out + std::snprintf(out, kLabelCapacity, "%.0f", value);
}

} // namespace

std::size_t writeLabel(double value, int precision, char* text)
{
    const int kept = precision < 0 ? 0 : (precision > kDecimals ? kDecimals : precision);
    const double size = std::fabs(value);
    char* out = text;
    if (!std::isfinite(value)) {
        out = writeUnusual(value, out);
    } else if (size >= kWholeFrom) {
        out = writeUnusual(value, out);
        *out++ = '.';
        out = writeDecimals(0, kept, out);
    } else {
        auto whole = static_cast<std::uint64_t>(size);
        std::uint32_t decimals = millionths(size - static_cast<double>(whole));
        if (decimals == 1000000) {
            ++whole;
            decimals = 0;
        }
        if (std::signbit(value))
            *out++ = '-';
        out = writeWhole(whole, out);
        *out++ = '.';
        out = writeDecimals(decimals, kept, out);
    }
    *out = '\0';
    return static_cast<std::size_t>(out - text);
}
