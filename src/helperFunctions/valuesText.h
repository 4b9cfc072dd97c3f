#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The values list of a layer write: each number as the platform writes it, with commas between them. Linear
/// in their count.
std::string valuesText(const std::vector<double>& values);

/// The values lists of writes that come one after another and mostly hold the same values: only what differs
/// from the values that it was made of is formatted again.
class ValuesText {
public:
    explicit ValuesText(std::vector<double> values);

    /// Appends the list of as many values as it was made of.
    void append(const std::vector<double>& values, std::string& text) const;

private:
    std::vector<double> known;
    std::string knownText;         ///< of the known values, a comma behind each
    std::vector<std::size_t> ends; ///< of each value with its comma in the text
};
