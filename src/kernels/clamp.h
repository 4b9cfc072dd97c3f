#pragma once

#include <cstddef>

/// The user's bounds on edited weights; each applies only while its flag is set. The lower bound may exceed
/// the upper.
struct ClampSettings {
    bool clampedMin;
    bool clampedMax;
    double weightMin;
    double weightMax;
};

/// The bounds 0 and 1, both applied.
ClampSettings unitClamp();

// Two ways to offset weights, which differ on purpose when both clamps are on and the lower bound exceeds the
// upper: the live stroke ends at the upper bound, its redo at the lower one. All arrays hold `count` values
// in one order; new = old + offset * soft, in double precision. `result` may be `old`.

/// The live stroke: the lower clamp first, then the upper one, in double precision; a float result is
/// narrowed last.
void offsetLive(const float* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, float* result);
void offsetLive(const double* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, double* result);
/// The same before it is narrowed, as labels show it.
void offsetLive(const float* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, double* result);

/// The redo of a stroke: the upper clamp first, then the lower one. A float result is what narrowing after
/// the offset and after each clamp gives.
void offsetRedo(const float* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, float* result);
void offsetRedo(const double* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, double* result);

/// One value of the layer modes, live and redo alike: held to 0..1 whatever the settings.
double offsetUnit(double old, double soft, double offset);
