#pragma once

namespace host {

// What single characters mean, in MEL and in Maya ASCII alike.

inline bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

/// The character that stands behind a backslash, as it is meant.
inline char unescaped(char c)
{
    switch (c) {
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    default:
        return c;
    }
}

} // namespace host
