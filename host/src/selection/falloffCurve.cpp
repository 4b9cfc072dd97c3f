#include "selection/falloffCurve.h"

#include "types/error.h"
#include "types/numberText.h"

#include <algorithm>
#include <cmath>

namespace host {

FalloffCurve::FalloffCurve(std::vector<SoftSelectOptions::CurvePoint> curvePoints)
    : points(std::move(curvePoints))
{
    std::stable_sort(points.begin(), points.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
}

double FalloffCurve::spline(std::size_t left, double t) const
{
    const auto value = [&](std::size_t at) { return static_cast<double>(points[at].value); };
    const std::size_t last = points.size() - 1;
    const double p0 = value(left == 0 ? 0 : left - 1), p1 = value(left), p2 = value(left + 1),
                 p3 = value(std::min(left + 2, last));
    const double sum = 2.0 * p1 + (p2 - p0) * t + (2.0 * p0 - 5.0 * p1 + 4.0 * p2 - p3) * t * t +
                       (3.0 * p1 - p0 - 3.0 * p2 + p3) * t * t * t;
    return std::clamp(0.5 * sum, 0.0, 1.0);
}

double FalloffCurve::at(double position) const
{
    if (points.empty())
        return 1.0;
    const auto next =
        std::upper_bound(points.begin(), points.end(), position, [](double at, const auto& point) {
            return at < static_cast<double>(point.position);
        });
    if (next == points.begin())
        return static_cast<double>(points.front().value);
    const std::size_t left = static_cast<std::size_t>(next - points.begin()) - 1;
    if (next == points.end())
        return static_cast<double>(points.back().value);
    const double start = static_cast<double>(points[left].position);
    const double t = (position - start) / (static_cast<double>(next->position) - start);
    const double from = static_cast<double>(points[left].value), to = static_cast<double>(next->value);
    switch (points[left].interpolation) {
    case 0:
        return from;
    case 1:
        return from + (to - from) * t;
    case 2:
        return from + (to - from) * t * t * (3.0 - 2.0 * t);
    default:
        return spline(left, t);
    }
}

namespace {

std::vector<double> numbersOf(const std::string& text)
{
    std::vector<double> numbers;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(',', at), text.size());
        bool whole = false;
        numbers.push_back(leadingNumber(text.substr(at, end - at), &whole));
        if (!whole || !std::isfinite(numbers.back()))
            return {};
        at = end + 1;
    }
    return numbers;
}

bool inUnit(double number)
{
    return number >= 0.0 && number <= 1.0;
}

} // namespace

std::vector<SoftSelectOptions::CurvePoint> parseFalloffCurve(const std::string& text)
{
    const std::vector<double> numbers = numbersOf(text);
    if (numbers.empty() || numbers.size() % 3 != 0)
        throw Error("softSelect: the curve \"" + text + "\" is no list of value,position,interpolation");
    std::vector<SoftSelectOptions::CurvePoint> points;
    for (std::size_t at = 0; at < numbers.size(); at += 3) {
        const double kind = numbers[at + 2];
        const bool known = kind == 0.0 || kind == 1.0 || kind == 2.0 || kind == 3.0;
        if (!inUnit(numbers[at]) || !inUnit(numbers[at + 1]) || !known)
            throw Error("softSelect: the curve \"" + text +
                        "\" needs values and positions from 0 to 1 and interpolations from 0 to 3");
        points.push_back(
            {static_cast<float>(numbers[at]), static_cast<float>(numbers[at + 1]), static_cast<int>(kind)});
    }
    return points;
}

std::string falloffCurveText(const std::vector<SoftSelectOptions::CurvePoint>& points)
{
    std::string text;
    for (const SoftSelectOptions::CurvePoint& point : points) {
        text += text.empty() ? "" : ",";
        text += generalText(static_cast<double>(point.value), 7) + ",";
        text += generalText(static_cast<double>(point.position), 7) + ",";
        text += std::to_string(point.interpolation);
    }
    return text;
}

} // namespace host
