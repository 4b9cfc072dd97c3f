#include "mel/functions.h"
#include "types/error.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <regex>

namespace host::mel {

namespace {

constexpr const char* kBlanks = " \t\n\r\f\v";

std::regex expressionFrom(const std::string& pattern, const std::string& subject)
{
    // The matcher of the standard library recurses once per character.
    constexpr std::size_t kLongest = 10000, kLongestPattern = 500;
    if (pattern.size() > kLongestPattern)
        throw Error("A regular expression of " + std::to_string(pattern.size()) + " characters is too long.");
    if (subject.size() > kLongest)
        throw Error("A text of " + std::to_string(subject.size()) + " characters is too long to be matched.");
    // These have no meaning in expressions of the language.
    std::string translated;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '\\' && i + 1 < pattern.size())
            translated += pattern[i++];
        else if (std::string("{}|?").find(pattern[i]) != std::string::npos)
            translated += '\\';
        translated += pattern[i];
    }
    try {
#ifdef __GLIBCXX__
        // Expressions of the language have no back references, so the matcher need not go through all ways of
        // matching one by one.
        return std::regex(translated, std::regex::ECMAScript | std::regex_constants::__polynomial);
#else
        return std::regex(translated);
#endif
    } catch (const std::regex_error&) {
        throw Error("\"" + pattern + "\" is no valid regular expression.");
    }
}

/// match(expression, text): the first part of the text that fits, "" when there is none.
Value match(FunctionCall& call)
{
    const std::string text = call.text(1);
    std::smatch found;
    return std::regex_search(text, found, expressionFrom(call.text(0), text)) ? found.str() : std::string();
}

/// substitute(expression, text, replacement): the first part that fits is replaced.
Value substitute(FunctionCall& call)
{
    const std::string text = call.text(1);
    std::smatch found;
    if (!std::regex_search(text, found, expressionFrom(call.text(0), text)))
        return text;
    return found.prefix().str() + call.text(2) + found.suffix().str();
}

/// The place behind what stands for one character of the pattern: a set in brackets, or a character.
const char* behindOne(const char* pattern)
{
    const char* const close = *pattern == '[' ? std::strchr(pattern, ']') : nullptr;
    return close ? close + 1 : pattern + 1;
}

bool fitsOne(char letter, const char* pattern)
{
    const char* const end = behindOne(pattern);
    if (end == pattern + 1)
        return *pattern == '?' || *pattern == letter;
    for (const char* member = pattern + 1; member < end - 1; ++member) {
        const bool isRange = member + 2 < end - 1 && member[1] == '-';
        if (*member == letter || (isRange && *member <= letter && letter <= member[2]))
            return true;
        member += isRange ? 2 : 0;
    }
    return false;
}

/// Wild cards * and ?, and sets in brackets. Only the last star ever has to take more: a star before it that
/// took more would leave less for the rest.
bool fitsWildCard(const char* text, const char* pattern)
{
    const char* star = nullptr; ///< the pattern behind the last star, and where the text behind it begins
    const char* taken = nullptr;
    while (*text != '\0') {
        if (*pattern == '*') {
            star = ++pattern;
            taken = text;
        } else if (*pattern != '\0' && fitsOne(*text, pattern)) {
            pattern = behindOne(pattern);
            ++text;
        } else if (star) {
            pattern = star;
            text = ++taken;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        ++pattern;
    return *pattern == '\0';
}

Value wildCardMatch(FunctionCall& call)
{
    return fitsWildCard(call.text(0).c_str(), call.text(1).c_str());
}

/// substring(text, first, last): characters are counted from 1, both ends belong to it; what lies beyond the
/// end of the text is left out.
Value substring(FunctionCall& call)
{
    const std::string text = call.text(0);
    const int first = std::max(call.integer(1), 1);
    const int last = std::min(call.integer(2), static_cast<int>(text.size()));
    if (last < first)
        return "";
    return text.substr(static_cast<std::size_t>(first - 1), static_cast<std::size_t>(last - first + 1));
}

Value startString(FunctionCall& call)
{
    return call.text(0).substr(0, static_cast<std::size_t>(std::max(call.integer(1), 0)));
}

Value endString(FunctionCall& call)
{
    const std::string text = call.text(0);
    const std::size_t length = static_cast<std::size_t>(std::max(call.integer(1), 0));
    return length >= text.size() ? text : text.substr(text.size() - length);
}

Value startsWith(FunctionCall& call)
{
    const std::string beginning = call.text(1);
    return call.text(0).compare(0, beginning.size(), beginning) == 0;
}

Value endsWith(FunctionCall& call)
{
    const std::string text = call.text(0);
    const std::string ending = call.text(1);
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

template <int (*change)(int)>
Value changedLetters(FunctionCall& call)
{
    std::string text = call.text(0);
    for (char& letter : text)
        letter = static_cast<char>(change(static_cast<unsigned char>(letter)));
    return text;
}

Value capitalized(FunctionCall& call)
{
    std::string text = call.text(0);
    if (!text.empty())
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

Value stripped(FunctionCall& call)
{
    const std::string text = call.text(0);
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string::npos)
        return "";
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

StringArray split(const std::string& text, const std::string& separators)
{
    StringArray parts;
    std::size_t begin = text.find_first_not_of(separators);
    while (begin != std::string::npos) {
        const std::size_t end = text.find_first_of(separators, begin);
        parts.push_back(text.substr(begin, end - begin));
        begin = end == std::string::npos ? end : text.find_first_not_of(separators, end);
    }
    return parts;
}

/// tokenize(text, array), tokenize(text, separators, array): fills the array, returns its length.
Value tokenize(FunctionCall& call)
{
    const int last = call.count() - 1;
    StringArray parts = split(call.text(0), last == 2 ? call.text(1) : kBlanks);
    StringArray& target = call.textArray(last);
    target = std::move(parts);
    return static_cast<int>(target.size());
}

Value splitText(FunctionCall& call)
{
    return split(call.text(0), call.text(1));
}

Value joined(FunctionCall& call)
{
    std::string text;
    const StringArray parts = call.texts(0);
    for (std::size_t i = 0; i < parts.size(); ++i)
        text.append(i == 0 ? "" : call.text(1)).append(parts[i]);
    return text;
}

Value compared(FunctionCall& call)
{
    const int order = call.text(0).compare(call.text(1));
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

} // namespace

void addStringFunctions(FunctionTable& table)
{
    table.insert({
        {"match", {2, 2, match}},
        {"substitute", {3, 3, substitute}},
        {"gmatch", {2, 2, wildCardMatch}},
        {"substring", {3, 3, substring}},
        {"startString", {2, 2, startString}},
        {"endString", {2, 2, endString}},
        {"startsWith", {2, 2, startsWith}},
        {"endsWith", {2, 2, endsWith}},
        {"toupper", {1, 1, changedLetters<std::toupper>}},
        {"tolower", {1, 1, changedLetters<std::tolower>}},
        {"capitalizeString", {1, 1, capitalized}},
        {"strip", {1, 1, stripped}},
        {"tokenize", {2, 3, tokenize}},
        {"stringToStringArray", {2, 2, splitText}},
        {"stringArrayToString", {2, 2, joined}},
        {"strcmp", {2, 2, compared}},
    });
}

} // namespace host::mel
