#pragma once

#include <maya/MMatrix.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

MAYA_HOST_NAMESPACE_OPEN

/// A direction with a length; zero by default. Matrices apply from the right and do not translate it.
class MAYA_HOST_EXPORT MVector {
public:
    MVector() = default;
    MVector(const MPoint& point);
    MVector(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) {}
    MVector(const double* d) : x(d[0]), y(d[1]), z(d[2]) {}

    double& operator[](unsigned int i) { return i == 0 ? x : i == 1 ? y : z; }
    double operator[](unsigned int i) const { return i == 0 ? x : i == 1 ? y : z; }

    MVector operator+(const MVector& other) const { return {x + other.x, y + other.y, z + other.z}; }
    MVector operator-(const MVector& other) const { return {x - other.x, y - other.y, z - other.z}; }
    MVector operator-() const { return {-x, -y, -z}; }
    MVector& operator+=(const MVector& other) { return *this = *this + other; }
    MVector& operator-=(const MVector& other) { return *this = *this - other; }

    /// Dot product.
    double operator*(const MVector& right) const { return x * right.x + y * right.y + z * right.z; }
    /// Cross product.
    MVector operator^(const MVector& right) const
    {
        return {y * right.z - z * right.y, z * right.x - x * right.z, x * right.y - y * right.x};
    }

    MVector operator*(double scalar) const { return {x * scalar, y * scalar, z * scalar}; }
    MVector operator*(float scalar) const { return *this * static_cast<double>(scalar); }
    MVector operator*(int scalar) const { return *this * static_cast<double>(scalar); }
    MVector operator*(unsigned int scalar) const { return *this * static_cast<double>(scalar); }
    MVector operator*(short scalar) const { return *this * static_cast<double>(scalar); }
    MVector operator*(unsigned short scalar) const { return *this * static_cast<double>(scalar); }
    MVector operator/(double scalar) const { return {x / scalar, y / scalar, z / scalar}; }
    MVector& operator*=(double scalar) { return *this = *this * scalar; }
    MVector& operator*=(float scalar) { return *this = *this * scalar; }
    MVector& operator*=(int scalar) { return *this = *this * scalar; }
    MVector& operator*=(unsigned int scalar) { return *this = *this * scalar; }
    MVector& operator*=(short scalar) { return *this = *this * scalar; }
    MVector& operator*=(unsigned short scalar) { return *this = *this * scalar; }
    MVector& operator/=(double scalar) { return *this = *this / scalar; }
    MVector operator*(const MMatrix& matrix) const;
    MVector& operator*=(const MMatrix& matrix);

    bool operator==(const MVector& other) const { return x == other.x && y == other.y && z == other.z; }
    bool operator!=(const MVector& other) const { return !(*this == other); }

    double length() const;
    /// Unit length. A vector of no length stays as it is.
    MVector normal() const;
    MStatus normalize();
    /// Between two vectors, in radians.
    double angle(const MVector& other) const;
    bool isEquivalent(const MVector& other, double tolerance = 1e-10) const;
    bool isParallel(const MVector& other, double tolerance = 1e-10) const;
    MStatus get(double* values) const;

    static const MVector zero, one;
    static const MVector xAxis, yAxis, zAxis;
    static const MVector xNegAxis, yNegAxis, zNegAxis;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline MVector operator*(double scalar, const MVector& vector)
{
    return vector * scalar;
}

MAYA_HOST_NAMESPACE_CLOSE
