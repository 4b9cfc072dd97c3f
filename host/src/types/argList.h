#pragma once

#include "mel/value.h"

#include <optional>
#include <string>
#include <vector>

namespace host {

/// What an MArgList holds: values as the command was given them, an array being one. There is no bool among
/// the values; a bool is the int 1 or 0.
struct ArgList {
    std::vector<mel::Value> values;
};

// One argument read as a type; nothing when it cannot be read so. Numbers are truncated to whole ones, texts
// that are numbers throughout count as numbers, and on, off, yes, no, true and false as bools.
std::optional<bool> argumentBool(const mel::Value& argument);
std::optional<int> argumentInt(const mel::Value& argument);
std::optional<double> argumentDouble(const mel::Value& argument);
std::optional<std::string> argumentText(const mel::Value& argument);

/// The elements of an array, each a value; a vector gives three. Of other values themselves.
std::vector<mel::Value> elementsOf(const mel::Value& argument);

/// The arguments as somebody would type them, separated by blanks; texts that need them get quotes,
/// arrays are written as their elements.
std::string argumentLine(const std::vector<mel::Value>& arguments);
/// A whole call in the same form, cut off with "..." behind `longest` characters. What is cut off costs
/// nothing.
std::string callLine(const std::string& command, const std::vector<mel::Value>& arguments,
                     std::size_t longest);

} // namespace host
