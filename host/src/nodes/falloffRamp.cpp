#include "nodes/falloffRamp.h"

#include "graph/node.h"
#include "types/error.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

std::vector<FalloffRamp::Stop> readStops(const Plug& ramp)
{
    using Way = FalloffRamp::Way;
    std::vector<FalloffRamp::Stop> stops;
    for (const std::uint32_t index : ramp.existingIndices()) {
        const Plug stop = ramp.element(index);
        const int way = static_cast<int>(stop.child(2).number());
        if (way < 0 || way > static_cast<int>(Way::kSmooth))
            throw Error("'" + stop.child(2).name() + "': only none, linear and smooth are computed.");
        stops.push_back({stop.child(0).number(), stop.child(1).number(), static_cast<Way>(way)});
    }
    if (stops.empty())
        stops = {{0.0, 1.0, Way::kSmooth}, {1.0, 0.0, Way::kSmooth}};
    return stops;
}

} // namespace

FalloffRamp::FalloffRamp(const Plug& ramp) : FalloffRamp(readStops(ramp)) {}

FalloffRamp::FalloffRamp(std::vector<Stop> points) : stops(std::move(points))
{
    std::stable_sort(stops.begin(), stops.end(),
                     [](const Stop& a, const Stop& b) { return a.position < b.position; });
}

double FalloffRamp::at(double position) const
{
    const auto next = std::upper_bound(stops.begin(), stops.end(), position,
                                       [](double at, const Stop& stop) { return at < stop.position; });
    if (next == stops.begin())
        return stops.front().value;
    const Stop& from = *std::prev(next);
    if (next == stops.end() || from.way == Way::kNone)
        return from.value;
    double share = (position - from.position) / (next->position - from.position);
    if (from.way == Way::kSmooth) {
        const double pi = std::acos(-1.0);
        share = 0.5 * (1.0 - std::cos(pi * share));
    }
    return from.value + (next->value - from.value) * share;
}

} // namespace host
