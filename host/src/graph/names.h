#pragma once

#include <string>
#include <vector>

namespace host {

/// Whether the text matches a pattern with * (any run of characters) and ? (any one character).
bool matchesWildcard(const std::string& pattern, const std::string& text);
bool hasWildcard(const std::string& text);

std::vector<std::string> split(const std::string& text, char separator);

/// A name as a node may have it: every character outside letters, digits, '_' and the colon of a namespace
/// becomes '_', a digit in front gets a '_' before it, and a colon in front is dropped.
std::string cleanName(const std::string& wish);

/// The name without the digits at its end, and what they say (0 when there are none or too many).
struct NumberedName {
    std::string stem;
    unsigned long number = 0;
};
NumberedName numbered(const std::string& name);

/// Matches part by part between colons. With `anyNamespace` the pattern may match the last parts only.
bool matchesName(const std::string& pattern, const std::string& name, bool anyNamespace);

} // namespace host
