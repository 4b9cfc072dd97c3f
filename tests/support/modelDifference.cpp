#include "support/modelDifference.h"

#include <algorithm>
#include <cmath>

namespace testing_support {

namespace {

/// Where two arrays differ by more than rounding; -1: nowhere.
int difference(const Values& a, const Values& b, double tolerance)
{
    for (std::size_t index = 0; index < a.size(); ++index)
        if (!near(a[index], b[index], tolerance))
            return static_cast<int>(index);
    return a.size() == b.size() ? -1 : static_cast<int>(a.size());
}

} // namespace

bool near(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance * std::max(1.0, std::abs(a));
}

std::string difference(const Weights& a, const Weights& b, const std::vector<ModelShape>& shapes,
                       const Tolerance& tolerance)
{
    const auto text = [](const std::string& what, const Values& x, const Values& y, int index) {
        const auto k = static_cast<std::size_t>(index);
        return what + " " + std::to_string(index) + ": " +
               (k < x.size() && k < y.size() ? std::to_string(x[k]) + " not " + std::to_string(y[k])
                                             : "size");
    };
    for (const auto& [key, values] : a.numbers) {
        const int index = difference(values, b.numbers.at(key), tolerance.number);
        if (index >= 0)
            return text(std::get<0>(key) + " " + std::get<1>(key) + " of geometry " +
                            std::to_string(std::get<2>(key)),
                        values, b.numbers.at(key), index);
    }
    for (std::size_t shape = 0; shape < shapes.size(); ++shape) {
        for (std::size_t point = 0; point < a.skin[shape].size(); ++point) {
            const int column = difference(a.skin[shape][point], b.skin[shape][point], tolerance.skin);
            if (column >= 0)
                return text("skin of " + shapes[shape].name + " " + std::to_string(point),
                            a.skin[shape][point], b.skin[shape][point], column);
        }
        for (const auto& [key, values] : a.painted[shape]) {
            const int index = difference(values, b.painted[shape].at(key), tolerance.layer);
            if (index >= 0)
                return text("layer " + key + " of " + shapes[shape].name, values, b.painted[shape].at(key),
                            index);
        }
    }
    return {};
}

std::string textOf(const Pieces& pieces)
{
    std::string text;
    for (const Piece& piece : pieces) {
        text += "[" + std::to_string(piece.shape) + ":";
        for (const int point : piece.points)
            text += " " + std::to_string(point);
        text += "]";
    }
    return text;
}

std::string difference(const Pieces& a, const Pieces& b)
{
    if (textOf(a) != textOf(b))
        return textOf(a) + " not " + textOf(b);
    for (std::size_t piece = 0; piece < a.size(); ++piece)
        if (difference({a[piece].falloff.begin(), a[piece].falloff.end()},
                       {b[piece].falloff.begin(), b[piece].falloff.end()}, 1e-6) >= 0)
            return "falloffs in " + textOf({a[piece]});
    return {};
}

} // namespace testing_support
