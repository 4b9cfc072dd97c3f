#include "graph/names.h"

#include <cctype>

namespace host {

bool matchesWildcard(const std::string& pattern, const std::string& text)
{
    std::size_t at = 0, in = 0;
    std::size_t star = std::string::npos, resume = 0;
    while (in < text.size()) {
        if (at < pattern.size() && (pattern[at] == '?' || pattern[at] == text[in]) && pattern[at] != '*') {
            ++at;
            ++in;
        } else if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            resume = in;
        } else if (star != std::string::npos) {
            at = star + 1;
            in = ++resume;
        } else {
            return false;
        }
    }
    while (at < pattern.size() && pattern[at] == '*')
        ++at;
    return at == pattern.size();
}

bool hasWildcard(const std::string& text)
{
    return text.find_first_of("*?") != std::string::npos;
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts(1);
    for (const char character : text) {
        if (character == separator)
            parts.emplace_back();
        else
            parts.back() += character;
    }
    return parts;
}

std::string cleanName(const std::string& wish)
{
    std::string name;
    for (const char character : wish) {
        const bool wordStarts = name.empty() || name.back() == ':';
        const auto code = static_cast<unsigned char>(character);
        if (character == ':' && wordStarts)
            continue;
        if (std::isdigit(code) && wordStarts)
            name += '_';
        name += std::isalnum(code) || character == '_' || character == ':' ? character : '_';
    }
    while (!name.empty() && name.back() == ':')
        name.pop_back();
    return name;
}

NumberedName numbered(const std::string& name)
{
    std::size_t end = name.size();
    while (end > 0 && std::isdigit(static_cast<unsigned char>(name[end - 1])))
        --end;
    // More digits than this are part of a name, not a count.
    if (end == name.size() || name.size() - end > 9)
        return {name, 0};
    return {name.substr(0, end), std::stoul(name.substr(end))};
}

bool matchesName(const std::string& pattern, const std::string& name, bool anyNamespace)
{
    const std::vector<std::string> wanted = split(pattern, ':');
    const std::vector<std::string> given = split(name, ':');
    if (wanted.size() > given.size() || (wanted.size() < given.size() && !anyNamespace))
        return false;
    const std::size_t skip = given.size() - wanted.size();
    for (std::size_t part = 0; part < wanted.size(); ++part)
        if (!matchesWildcard(wanted[part], given[skip + part]))
            return false;
    return true;
}

} // namespace host
