#pragma once

#include "selection/selectionState.h"

#include <string>

namespace host {

/// The falloff curve of soft selection: points by position; between two points the interpolation of the left
/// one holds. Before the first and after the last point their values go on.
///
///   none    the value of the left point
///   linear  a straight line
///   smooth  ease in and out, 3t^2 - 2t^3 of the way
///   spline  Catmull-Rom through the neighbouring points (the ends count twice), kept within 0 and 1
class FalloffCurve {
public:
    /// The points may come in any order. An empty list is the constant 1.
    explicit FalloffCurve(std::vector<SoftSelectOptions::CurvePoint> points);

    /// Weight at a position, 0 at the selection and 1 at the radius.
    double at(double position) const;

private:
    double spline(std::size_t left, double t) const;
    std::vector<SoftSelectOptions::CurvePoint> points;
};

/// "1,0,2,0,1,2": value, position, interpolation of each point. Throws host::Error naming the text when it is
/// no list of triples or a number is out of range (value and position 0 to 1, interpolation 0 to 3).
std::vector<SoftSelectOptions::CurvePoint> parseFalloffCurve(const std::string& text);
std::string falloffCurveText(const std::vector<SoftSelectOptions::CurvePoint>& points);

} // namespace host
