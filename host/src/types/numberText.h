#pragma once

#include <string>

namespace host {

/// The shortest text that reads back as the same number: no exponent from 1e-5 to 1e15, no ".0" behind whole
/// numbers, a point whatever the locale.
std::string numberText(double value);
std::string numberText(float value);

/// As printf's %.*g and %.*f write numbers where the decimal point is a point, whatever the locale.
std::string generalText(double value, int digits);
std::string fixedText(double value, int decimals);

/// The number that a text begins with after blanks, 0 when there is none. `whole` tells whether the text is a
/// number and nothing else (blanks at both ends are allowed).
double leadingNumber(const std::string& text, bool* whole = nullptr);

} // namespace host
