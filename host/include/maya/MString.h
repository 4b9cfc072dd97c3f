#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <string>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A text in UTF-8. Lengths and positions count bytes.
/// A number is appended as the shortest text that reads back as the same number. There is no constructor from
/// numbers, and adding a long or an unsigned long to a text is ambiguous, as on the platform.
class MAYA_HOST_EXPORT MString {
public:
    MString();
    MString(const char* charString);
    MString(const wchar_t* charString);
    MString(const char* charString, int charLength);
    MString(const wchar_t* charString, int wcharLength);
    MString(const MString& other);
    MString(MString&& other) noexcept;
    ~MString();
    MString& operator=(const MString& other);
    MString& operator=(const char* other);
    MString& operator=(double value);
    MString& operator=(MString&& other) noexcept;
    MString& operator+=(const MString& other);
    MString& operator+=(const char* other);
    MString& operator+=(double other);
    MString& operator+=(int other);
    MString& operator+=(unsigned int other);
    MString& operator+=(float other);
    MString operator+(const MString& other) const;
    MString operator+(const char* other) const;
    MString operator+(double value) const;
    bool operator==(const MString& other) const;
    bool operator==(const char* other) const;
    bool operator!=(const MString& other) const;
    bool operator!=(const char* other) const;

    /// Fixed count of decimals.
    MStatus set(double value, int precision);
    MStatus set(const char* charString);
    MStatus set(const char* charString, int charLength);
    MStatus set(double value);
    MStatus setUTF8(const char* utf8String);
    const char* asChar() const;
    /// Also tells the length in bytes.
    const char* asChar(int& charLength) const;
    const char* asUTF8() const;
    const char* asUTF8(int& utf8Length) const;
    unsigned int length() const;
    /// Characters, not bytes.
    unsigned int numChars() const;
    void clear();

    /// Position of the first (last) such byte, or -1.
    int index(char) const;
    int rindex(char) const;
    /// The non-empty pieces between separators.
    MStatus split(char, MStringArray&) const;
    /// Both ends belong to the piece; an end of -1 means the last byte. Empty when the range is.
    MString substring(int start, int end) const;
    MString& toUpperCase();
    MString& toLowerCase();

    /// Whether the whole text is such a number; the as... forms read a leading number, or give 0.
    bool isShort() const;
    short asShort() const;
    bool isInt() const;
    int asInt() const;
    bool isUnsigned() const;
    unsigned int asUnsigned() const;
    bool isFloat() const;
    float asFloat() const;
    bool isDouble() const;
    double asDouble() const;

    /// Replaces every (the first) occurrence.
    MStatus substitute(const MString& src, const MString& target);
    MStatus substituteFirst(const MString& src, const MString& target);
    /// `^1s` ... `^9s` in the pattern are replaced by the arguments.
    MStatus format(const MString& fmt, const MStringArray& args);

private:
    friend struct host::Api;
    std::string text;
};

MAYA_HOST_EXPORT std::ostream& operator<<(std::ostream& out, const MString& text);
MAYA_HOST_EXPORT MString operator+(const char* left, const MString& right);

MAYA_HOST_NAMESPACE_CLOSE
