#pragma once

#include <maya/MMatrix.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

MAYA_HOST_NAMESPACE_OPEN

/// A position; the origin by default. w is 1 for ordinary points; sums and differences look at x, y and z
/// only.
class MAYA_HOST_EXPORT MPoint {
public:
    MPoint() = default;
    MPoint(const MVector& vector) : x(vector.x), y(vector.y), z(vector.z) {}
    MPoint(double xx, double yy, double zz = 0.0, double ww = 1.0) : x(xx), y(yy), z(zz), w(ww) {}
    MPoint(const double* d) : x(d[0]), y(d[1]), z(d[2]), w(d[3]) {}

    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : i == 2 ? z : w; }

    MVector operator-(const MPoint& other) const { return {x - other.x, y - other.y, z - other.z}; }
    MPoint operator+(const MVector& other) const { return {x + other.x, y + other.y, z + other.z, w}; }
    MPoint operator-(const MVector& other) const { return {x - other.x, y - other.y, z - other.z, w}; }
    MPoint& operator+=(const MVector& vector) { return *this = *this + vector; }
    MPoint& operator-=(const MVector& vector) { return *this = *this - vector; }

    MPoint operator*(const double scale) const { return {x * scale, y * scale, z * scale, w}; }
    MPoint operator*(const float scale) const { return *this * static_cast<double>(scale); }
    MPoint operator*(const int scale) const { return *this * static_cast<double>(scale); }
    MPoint operator*(const unsigned int scale) const { return *this * static_cast<double>(scale); }
    MPoint operator*(const short scale) const { return *this * static_cast<double>(scale); }
    MPoint operator*(const unsigned short scale) const { return *this * static_cast<double>(scale); }
    MPoint operator/(const double scale) const { return {x / scale, y / scale, z / scale, w}; }
    /// Row vector times matrix, all four numbers.
    MPoint operator*(const MMatrix& matrix) const;
    MPoint& operator*=(const MMatrix& matrix);

    bool operator==(const MPoint& other) const
    {
        return x == other.x && y == other.y && z == other.z && w == other.w;
    }
    bool operator!=(const MPoint& other) const { return !(*this == other); }

    /// Divides by w, so that it becomes 1; a w of 0 leaves the point as it is.
    MPoint& cartesianize();
    double distanceTo(const MPoint& other) const;
    bool isEquivalent(const MPoint& other, double tolerance = 1e-10) const;
    MStatus get(double* values) const;
    static const char* className() { return "MPoint"; }

    static const MPoint origin;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;
};

MAYA_HOST_NAMESPACE_CLOSE
