#pragma once

namespace host {

/// Slots hold degrees, the interface speaks radians.
constexpr double kRadiansPerDegree = 0.017453292519943295;

} // namespace host
