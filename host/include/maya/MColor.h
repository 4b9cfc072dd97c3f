#pragma once

#include <maya/MTypes.h>

MAYA_HOST_NAMESPACE_OPEN

/// Red, green, blue and alpha, each 0 to 1. Opaque black by default.
class MAYA_HOST_EXPORT MColor {
public:
    MColor() = default;
    MColor(float rr, float gg, float bb = 0.0F, float aa = 1.0F) : r(rr), g(gg), b(bb), a(aa) {}
    MColor(const float* d) : r(d[0]), g(d[1]), b(d[2]), a(d[3]) {}

    float& operator[](unsigned int i) { return (&r)[i]; }
    float operator[](unsigned int i) const { return (&r)[i]; }
    bool operator==(const MColor& other) const
    {
        return r == other.r && g == other.g && b == other.b && a == other.a;
    }
    bool operator!=(const MColor& other) const { return !(*this == other); }
    MColor operator*(float scalar) const { return {r * scalar, g * scalar, b * scalar, a}; }
    MColor operator+(const MColor& other) const { return {r + other.r, g + other.g, b + other.b, a}; }

    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 1.0F;
};

MAYA_HOST_NAMESPACE_CLOSE
