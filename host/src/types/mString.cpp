#include "types/numberText.h"

#include <maya/MString.h>

#include <limits>
#include <ostream>

namespace {

void appendUtf8(std::string& text, char32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    // Lead byte with as many marks as bytes follow, then six bits per byte.
    const int following = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    const char32_t leads[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(leads[following] | (code >> (6 * following)));
    for (int i = following - 1; i >= 0; --i)
        text += static_cast<char>(0x80 | ((code >> (6 * i)) & 0x3F));
}

std::string fromWide(const wchar_t* wide, int length)
{
    std::string text;
    for (int i = 0; wide && (length < 0 || i < length) && wide[i] != L'\0'; ++i)
        appendUtf8(text, static_cast<char32_t>(wide[i]));
    return text;
}

std::string fromBytes(const char* bytes, int length)
{
    return bytes && length > 0 ? std::string(bytes, static_cast<std::size_t>(length)) : std::string();
}

} // namespace

MString::MString() = default;
MString::MString(const char* charString) : text(charString ? charString : "") {}
MString::MString(const wchar_t* charString) : text(fromWide(charString, -1)) {}
MString::MString(const char* charString, int charLength) : text(fromBytes(charString, charLength)) {}
MString::MString(const wchar_t* charString, int wcharLength)
    : text(fromWide(charString, wcharLength < 0 ? 0 : wcharLength))
{}
MString::MString(const MString& other) = default;
MString::MString(MString&& other) noexcept = default;
MString::~MString() = default;
MString& MString::operator=(const MString& other) = default;
MString& MString::operator=(MString&& other) noexcept = default;

MString& MString::operator=(const char* other)
{
    text = other ? std::string(other) : std::string();
    return *this;
}

MString& MString::operator=(double value)
{
    text = host::numberText(value);
    return *this;
}

MString& MString::operator+=(const MString& other)
{
    text += other.text;
    return *this;
}

MString& MString::operator+=(const char* other)
{
    if (other)
        text += std::string(other); // a copy: the argument may be this text's own
    return *this;
}

MString& MString::operator+=(double other)
{
    text += host::numberText(other);
    return *this;
}

MString& MString::operator+=(int other)
{
    text += std::to_string(other);
    return *this;
}

MString& MString::operator+=(unsigned int other)
{
    text += std::to_string(other);
    return *this;
}

MString& MString::operator+=(float other)
{
    text += host::numberText(other);
    return *this;
}

MString MString::operator+(const MString& other) const
{
    MString sum(*this);
    return sum += other;
}

MString MString::operator+(const char* other) const
{
    MString sum(*this);
    return sum += other;
}

MString MString::operator+(double value) const
{
    MString sum(*this);
    return sum += value;
}

bool MString::operator==(const MString& other) const
{
    return text == other.text;
}
bool MString::operator==(const char* other) const
{
    return text == (other ? other : "");
}
bool MString::operator!=(const MString& other) const
{
    return !(*this == other);
}
bool MString::operator!=(const char* other) const
{
    return !(*this == other);
}

MStatus MString::set(double value, int precision)
{
    if (precision < 0 || precision > 100)
        return MStatus::kInvalidParameter;
    text = host::fixedText(value, precision);
    return MStatus::kSuccess;
}

MStatus MString::set(const char* charString)
{
    *this = charString;
    return MStatus::kSuccess;
}

MStatus MString::set(const char* charString, int charLength)
{
    text = fromBytes(charString, charLength);
    return MStatus::kSuccess;
}

MStatus MString::set(double value)
{
    *this = value;
    return MStatus::kSuccess;
}

MStatus MString::setUTF8(const char* utf8String)
{
    return set(utf8String);
}

const char* MString::asChar() const
{
    return text.c_str();
}

const char* MString::asChar(int& charLength) const
{
    charLength = static_cast<int>(text.size());
    return text.c_str();
}

const char* MString::asUTF8() const
{
    return asChar();
}
const char* MString::asUTF8(int& utf8Length) const
{
    return asChar(utf8Length);
}

unsigned int MString::length() const
{
    return static_cast<unsigned int>(text.size());
}

unsigned int MString::numChars() const
{
    unsigned int count = 0;
    for (const char byte : text)
        count += (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U ? 1U : 0U;
    return count;
}

void MString::clear()
{
    text.clear();
}

MAYA_HOST_NAMESPACE_OPEN

std::ostream& operator<<(std::ostream& out, const MString& text)
{
    return out << text.asChar();
}

MString operator+(const char* left, const MString& right)
{
    return MString(left) + right;
}

MAYA_HOST_NAMESPACE_CLOSE
