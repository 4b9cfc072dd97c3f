#include "helperFunctions/valuesText.h"

#include <cmath>
#include <maya/MString.h>

namespace {

/// What a number mostly takes with its comma: room for all digits of a weight.
constexpr std::size_t kRoomPerValue = 20;

/// Appends numbers, each with a comma behind it, without making a new string for each.
class NumberAppender {
public:
    explicit NumberAppender(std::string& target) : text(target) {}
    void append(double value)
    {
        number.clear();
        number += value;
        text.append(number.asChar(), number.length());
        text += ',';
    }

private:
    std::string& text;
    MString number;
};

void dropLastComma(std::string& text, std::size_t count)
{
    if (count != 0)
        text.pop_back();
}

/// Whether two numbers have one text: zeros of different sign have not.
bool isSame(double a, double b)
{
    return a == b && std::signbit(a) == std::signbit(b);
}

} // namespace

std::string valuesText(const std::vector<double>& values)
{
    std::string text;
    text.reserve(values.size() * kRoomPerValue);
    NumberAppender numbers(text);
    for (double value : values)
        numbers.append(value);
    dropLastComma(text, values.size());
    return text;
}

ValuesText::ValuesText(std::vector<double> values) : known(std::move(values))
{
    knownText.reserve(known.size() * kRoomPerValue);
    ends.reserve(known.size());
    NumberAppender numbers(knownText);
    for (double value : known) {
        numbers.append(value);
        ends.push_back(knownText.size());
    }
}

void ValuesText::append(const std::vector<double>& values, std::string& text) const
{
    text.reserve(text.size() + values.size() * kRoomPerValue);
    NumberAppender numbers(text);
    for (std::size_t vertex = 0; vertex < values.size();) {
        const std::size_t from = vertex == 0 ? 0 : ends[vertex - 1];
        const std::size_t first = vertex;
        while (vertex < values.size() && isSame(values[vertex], known[vertex]))
            ++vertex;
        if (vertex != first)
            text.append(knownText, from, ends[vertex - 1] - from);
        for (; vertex < values.size() && !isSame(values[vertex], known[vertex]); ++vertex)
            numbers.append(values[vertex]);
    }
    dropLastComma(text, values.size());
}
