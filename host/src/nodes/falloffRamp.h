#pragma once

#include <vector>

namespace host {

class Plug;

/// A curve of a ramp attribute: an array of a position, a value and how the way to the next point goes.
class FalloffRamp {
public:
    enum class Way { kNone = 0, kLinear = 1, kSmooth = 2 };
    struct Stop {
        double position;
        double value;
        Way way;
    };

    /// Reads an array whose elements' children are position, value and interpolation. No elements: a smooth
    /// fall from 1 to 0. Throws host::Error for an interpolation that is not computed (spline).
    explicit FalloffRamp(const Plug& ramp);
    explicit FalloffRamp(std::vector<Stop> points);

    /// Constant before the first and after the last stop. Smooth: half a cosine wave.
    double at(double position) const;

private:
    std::vector<Stop> stops; ///< by position
};

} // namespace host
