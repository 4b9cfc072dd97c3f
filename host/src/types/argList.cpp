#include "types/argList.h"

#include "types/numberText.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

namespace host {

namespace {

bool isWord(const std::string& text)
{
    const auto plain = [](unsigned char c) {
        return std::isalnum(c) || c >= 0x80 ||
               std::string("_-.:|[]/").find(static_cast<char>(c)) != std::string::npos;
    };
    return !text.empty() && std::all_of(text.begin(), text.end(), plain);
}

std::string quoted(const std::string& text)
{
    std::string line = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            line += '\\';
        if (c == '\n')
            line += "\\n";
        else
            line += c;
    }
    return line + '"';
}

std::vector<mel::Value> elementAt(const mel::Value& array, std::size_t index)
{
    switch (array.type()) {
    case mel::Type::kIntArray:
        return {array.get<mel::IntArray>()[index]};
    case mel::Type::kFloatArray:
        return {array.get<mel::FloatArray>()[index]};
    case mel::Type::kStringArray:
        return {array.get<mel::StringArray>()[index]};
    default: {
        const mel::Vector& vector = array.get<mel::VectorArray>()[index];
        return {vector.x, vector.y, vector.z};
    }
    }
}

void appendSingle(std::string& line, const mel::Value& argument)
{
    const std::string text = argumentText(argument).value_or(std::string());
    line += line.empty() ? "" : " ";
    line += !argument.isString() || isWord(text) ? text : quoted(text);
}

/// An array is cut off behind `longest` elements: each takes a character at least.
void appendArgument(std::string& line, const mel::Value& argument,
                    std::size_t longest = std::numeric_limits<std::size_t>::max())
{
    if (!mel::isArray(argument.type())) {
        appendSingle(line, argument);
        return;
    }
    const auto size = std::min(static_cast<std::size_t>(argument.size()), longest);
    for (std::size_t i = 0; i < size; ++i)
        for (const mel::Value& part : elementAt(argument, i))
            appendSingle(line, part);
}

} // namespace

std::optional<double> argumentDouble(const mel::Value& argument)
{
    switch (argument.type()) {
    case mel::Type::kInt:
        return argument.get<int>();
    case mel::Type::kFloat:
        return argument.get<double>();
    case mel::Type::kString: {
        bool whole = false;
        const double value = leadingNumber(argument.get<std::string>(), &whole);
        return whole ? std::optional<double>(value) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::optional<int> argumentInt(const mel::Value& argument)
{
    const std::optional<double> number = argumentDouble(argument);
    if (!number || std::isnan(*number))
        return std::nullopt;
    return static_cast<int>(std::clamp(*number, static_cast<double>(std::numeric_limits<int>::min()),
                                       static_cast<double>(std::numeric_limits<int>::max())));
}

std::optional<bool> argumentBool(const mel::Value& argument)
{
    if (argument.isString()) {
        const std::string& word = argument.get<std::string>();
        if (word == "on" || word == "yes" || word == "true")
            return true;
        if (word == "off" || word == "no" || word == "false")
            return false;
    }
    const std::optional<double> number = argumentDouble(argument);
    return number ? std::optional<bool>(*number != 0.0) : std::nullopt;
}

std::optional<std::string> argumentText(const mel::Value& argument)
{
    switch (argument.type()) {
    case mel::Type::kInt:
        return std::to_string(argument.get<int>());
    case mel::Type::kFloat:
        return numberText(argument.get<double>());
    case mel::Type::kString:
        return argument.get<std::string>();
    default:
        return std::nullopt;
    }
}

std::vector<mel::Value> elementsOf(const mel::Value& argument)
{
    if (!mel::isArray(argument.type()))
        return {argument};
    std::vector<mel::Value> elements;
    for (std::size_t i = 0; i < static_cast<std::size_t>(argument.size()); ++i)
        for (mel::Value& part : elementAt(argument, i))
            elements.push_back(std::move(part));
    return elements;
}

std::string argumentLine(const std::vector<mel::Value>& arguments)
{
    std::string line;
    for (const mel::Value& argument : arguments)
        appendArgument(line, argument);
    return line;
}

std::string callLine(const std::string& command, const std::vector<mel::Value>& arguments,
                     std::size_t longest)
{
    std::string line = command;
    for (const mel::Value& argument : arguments) {
        const bool tooLong = argument.isString() && argument.get<std::string>().size() > longest;
        appendArgument(line, tooLong ? argument.get<std::string>().substr(0, longest + 1) : argument,
                       longest);
        if (line.size() > longest)
            return line.substr(0, longest) + "...";
    }
    return line;
}

} // namespace host
