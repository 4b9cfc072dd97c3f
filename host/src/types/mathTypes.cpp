// MPoint, MVector and MMatrix, with Imath behind what is more than a line of arithmetic.

#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <ImathMatrix.h>

#include <algorithm>
#include <cmath>

namespace {

Imath::M44d imath(const MMatrix& matrix)
{
    return Imath::M44d(matrix.matrix);
}

MMatrix fromImath(const Imath::M44d& matrix)
{
    return MMatrix(matrix.x);
}

constexpr unsigned int kSize = 4;

} // namespace

const MPoint MPoint::origin;
const MVector MVector::zero;
const MVector MVector::one(1.0, 1.0, 1.0);
const MVector MVector::xAxis(1.0, 0.0, 0.0);
const MVector MVector::yAxis(0.0, 1.0, 0.0);
const MVector MVector::zAxis(0.0, 0.0, 1.0);
const MVector MVector::xNegAxis(-1.0, 0.0, 0.0);
const MVector MVector::yNegAxis(0.0, -1.0, 0.0);
const MVector MVector::zNegAxis(0.0, 0.0, -1.0);
const MMatrix MMatrix::identity;

MVector::MVector(const MPoint& point) : x(point.x), y(point.y), z(point.z) {}

MVector MVector::operator*(const MMatrix& matrix) const
{
    const auto& m = matrix.matrix;
    return {x * m[0][0] + y * m[1][0] + z * m[2][0], x * m[0][1] + y * m[1][1] + z * m[2][1],
            x * m[0][2] + y * m[1][2] + z * m[2][2]};
}

MVector& MVector::operator*=(const MMatrix& matrix)
{
    return *this = *this * matrix;
}

double MVector::length() const
{
    return std::sqrt(*this * *this);
}

MVector MVector::normal() const
{
    MVector unit(*this);
    unit.normalize();
    return unit;
}

MStatus MVector::normalize()
{
    const double size = length();
    if (size == 0.0)
        return MStatus::kFailure;
    *this /= size;
    return MStatus::kSuccess;
}

double MVector::angle(const MVector& other) const
{
    // The arc tangent stays exact where the arc cosine of the dot product does not: near 0 and 180 degrees.
    return std::atan2((*this ^ other).length(), *this * other);
}

bool MVector::isEquivalent(const MVector& other, double tolerance) const
{
    return (*this - other).length() <= tolerance;
}

bool MVector::isParallel(const MVector& other, double tolerance) const
{
    return std::fabs(std::fabs(normal() * other.normal()) - 1.0) <= tolerance;
}

MStatus MVector::get(double* values) const
{
    values[0] = x;
    values[1] = y;
    values[2] = z;
    return MStatus::kSuccess;
}

MPoint MPoint::operator*(const MMatrix& matrix) const
{
    const auto& m = matrix.matrix;
    MPoint moved;
    for (unsigned int column = 0; column < kSize; ++column)
        moved[column] = x * m[0][column] + y * m[1][column] + z * m[2][column] + w * m[3][column];
    return moved;
}

MPoint& MPoint::operator*=(const MMatrix& matrix)
{
    return *this = *this * matrix;
}

MPoint& MPoint::cartesianize()
{
    if (w != 0.0 && w != 1.0)
        *this = MPoint(x / w, y / w, z / w);
    return *this;
}

double MPoint::distanceTo(const MPoint& other) const
{
    return (*this - other).length();
}

bool MPoint::isEquivalent(const MPoint& other, double tolerance) const
{
    return distanceTo(other) <= tolerance;
}

MStatus MPoint::get(double* values) const
{
    for (unsigned int i = 0; i < kSize; ++i)
        values[i] = (*this)[i];
    return MStatus::kSuccess;
}

MMatrix::MMatrix(const double m[4][4])
{
    std::copy_n(&m[0][0], kSize * kSize, &matrix[0][0]);
}

MMatrix::MMatrix(const float m[4][4])
{
    for (unsigned int row = 0; row < kSize; ++row)
        std::copy_n(m[row], kSize, matrix[row]);
}

MMatrix MMatrix::operator*(const MMatrix& right) const
{
    return fromImath(imath(*this) * imath(right));
}

MMatrix& MMatrix::operator*=(const MMatrix& right)
{
    return *this = *this * right;
}

MMatrix MMatrix::operator*(double scalar) const
{
    return fromImath(imath(*this) * scalar);
}

MMatrix MMatrix::operator+(const MMatrix& right) const
{
    return fromImath(imath(*this) + imath(right));
}

MMatrix MMatrix::operator-(const MMatrix& right) const
{
    return fromImath(imath(*this) - imath(right));
}

bool MMatrix::operator==(const MMatrix& other) const
{
    return imath(*this) == imath(other);
}

MMatrix MMatrix::inverse() const
{
    // Gauss-Jordan keeps more digits than cofactors for scenes far from the origin.
    return isSingular() ? MMatrix() : fromImath(imath(*this).gjInverse());
}

MMatrix MMatrix::transpose() const
{
    return fromImath(imath(*this).transposed());
}

MMatrix& MMatrix::setToIdentity()
{
    for (unsigned int row = 0; row < kSize; ++row) {
        for (unsigned int column = 0; column < kSize; ++column)
            matrix[row][column] = row == column ? 1.0 : 0.0;
    }
    return *this;
}

double MMatrix::det4x4() const
{
    return imath(*this).determinant();
}

bool MMatrix::isSingular() const
{
    return det4x4() == 0.0;
}

bool MMatrix::isEquivalent(const MMatrix& other, double tolerance) const
{
    return imath(*this).equalWithAbsError(imath(other), tolerance);
}

MStatus MMatrix::get(double dest[4][4]) const
{
    std::copy_n(&matrix[0][0], kSize * kSize, &dest[0][0]);
    return MStatus::kSuccess;
}
