#pragma once

#include <string>
#include <string_view>

namespace host {

/// How numbers and texts stand in a Maya ASCII file.

/// The shortest text that reads back as exactly this number; plain digits where that is reasonable.
std::string maNumber(double value);
/// The same for a value of single precision.
std::string maNumber(float value);
/// The shortest number in a unit of the given size that reads back as exactly `value` (or, where no number
/// does, as the nearest value that one reads back as).
std::string maNumberInUnit(double value, double unitSize);
/// A quoted text with its escapes. Long ones are split into parts, ( "a" + "b" ), as scripts limit the
/// length of one text.
std::string maQuoted(std::string_view text);

/// The last part of a path "|a|b", without the colon of the root namespace.
std::string maLeaf(std::string_view path);

/// The whole word as a number: decimal, hexadecimal, nan, inf and their Windows spellings. False if it is
/// none.
bool maParseNumber(std::string_view word, double& value);
/// yes, no, on, off, true, false or a number. False if it is none of these.
bool maParseBoolean(std::string_view word, bool& value);

} // namespace host
