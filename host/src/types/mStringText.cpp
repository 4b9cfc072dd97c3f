// The part of MString that searches, cuts and reads texts.

#include "types/numberText.h"

#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <limits>

namespace {

int position(std::size_t found)
{
    return found == std::string::npos ? -1 : static_cast<int>(found);
}

bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}
bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}

/// Whole numbers are written with digits alone: 1e3 and 2.0 are none.
bool isWhole(const std::string& text, double low, double high)
{
    bool number = false;
    const double value = host::leadingNumber(text, &number);
    return number && text.find_first_of(".eEnN") == std::string::npos && value >= low && value <= high;
}

/// Values out of range stick to the nearest limit.
template <class Integer>
Integer readWhole(const std::string& text)
{
    const double value = host::leadingNumber(text);
    const auto low = static_cast<double>(std::numeric_limits<Integer>::min());
    const auto high = static_cast<double>(std::numeric_limits<Integer>::max());
    return value == value ? static_cast<Integer>(std::clamp(value, low, high)) : Integer(0);
}

template <class Integer>
bool fits(const std::string& text)
{
    return isWhole(text, static_cast<double>(std::numeric_limits<Integer>::min()),
                   static_cast<double>(std::numeric_limits<Integer>::max()));
}

} // namespace

int MString::index(char sought) const
{
    return position(text.find(sought));
}

int MString::rindex(char sought) const
{
    return position(text.rfind(sought));
}

MStatus MString::split(char separator, MStringArray& pieces) const
{
    MStringArray found;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        if (end > start)
            found.append(MString(text.data() + start, static_cast<int>(end - start)));
        start = end + 1;
    }
    pieces = found;
    return MStatus::kSuccess;
}

MString MString::substring(int start, int end) const
{
    const int last = static_cast<int>(text.size()) - 1;
    const int from = std::max(start, 0);
    const int to = end == -1 ? last : std::min(end, last);
    return from <= to ? MString(text.data() + from, to - from + 1) : MString();
}

MString& MString::toUpperCase()
{
    for (char& c : text)
        c = isLower(c) ? static_cast<char>(c - 'a' + 'A') : c;
    return *this;
}

MString& MString::toLowerCase()
{
    for (char& c : text)
        c = isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
    return *this;
}

bool MString::isShort() const
{
    return fits<short>(text);
}
short MString::asShort() const
{
    return readWhole<short>(text);
}
bool MString::isInt() const
{
    return fits<int>(text);
}
int MString::asInt() const
{
    return readWhole<int>(text);
}
bool MString::isUnsigned() const
{
    return fits<unsigned int>(text);
}
unsigned int MString::asUnsigned() const
{
    return readWhole<unsigned int>(text);
}
bool MString::isFloat() const
{
    return isDouble();
}
float MString::asFloat() const
{
    return static_cast<float>(asDouble());
}

bool MString::isDouble() const
{
    bool number = false;
    host::leadingNumber(text, &number);
    return number;
}

double MString::asDouble() const
{
    return host::leadingNumber(text);
}

MStatus MString::substitute(const MString& src, const MString& target)
{
    if (src.text.empty())
        return MStatus::kInvalidParameter;
    const std::string sought = src.text;
    const std::string put = target.text;
    for (std::size_t at = text.find(sought); at != std::string::npos; at = text.find(sought, at + put.size()))
        text.replace(at, sought.size(), put);
    return MStatus::kSuccess;
}

MStatus MString::substituteFirst(const MString& src, const MString& target)
{
    if (src.text.empty())
        return MStatus::kInvalidParameter;
    const std::size_t at = text.find(src.text);
    if (at != std::string::npos)
        text.replace(at, src.text.size(), std::string(target.text));
    return MStatus::kSuccess;
}

MStatus MString::format(const MString& fmt, const MStringArray& args)
{
    const std::string pattern = fmt.text;
    std::string result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const bool placed = pattern[i] == '^' && i + 2 < pattern.size() && pattern[i + 1] >= '1' &&
                            pattern[i + 1] <= '9' && pattern[i + 2] == 's';
        if (!placed) {
            result += pattern[i];
            continue;
        }
        const auto which = static_cast<unsigned int>(pattern[i + 1] - '1');
        if (which >= args.length())
            return MStatus::kInvalidParameter;
        result += args[which].text;
        i += 2;
    }
    text = result;
    return MStatus::kSuccess;
}
