#pragma once

#include <cstddef>

/// Longest label: the sign, 309 digits of the largest double, the point and six decimals, and the final zero.
constexpr std::size_t kLabelCapacity = 320;

/// Writes the text of a weight label to `text` (at least kLabelCapacity bytes) and returns its length; a zero
/// ends it. The text is the exact decimal value rounded to six decimals, half to even, as fixed notation
/// gives it in the C locale, and then cut (not rounded) after the point plus `precision` characters: 0.999999
/// at precision 2 is "0.99", and precision 0 leaves the point at the end. Values that are no numbers have no
/// point and are not cut. A precision above six adds nothing; a negative one counts as zero. The process's
/// locale plays no part.
std::size_t writeLabel(double value, int precision, char* text);
