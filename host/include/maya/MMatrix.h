#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

MAYA_HOST_NAMESPACE_OPEN

/// A 4x4 matrix for row vectors: translation is row 3, and the product a * b applies a first. Identity by
/// default.
class MAYA_HOST_EXPORT MMatrix {
public:
    MMatrix() { setToIdentity(); }
    MMatrix(const double m[4][4]);
    MMatrix(const float m[4][4]);

    double& operator()(unsigned int row, unsigned int col) { return matrix[row][col]; }
    double operator()(unsigned int row, unsigned int col) const { return matrix[row][col]; }
    double* operator[](unsigned int row) { return matrix[row]; }
    const double* operator[](unsigned int row) const { return matrix[row]; }

    MMatrix operator*(const MMatrix& right) const;
    MMatrix& operator*=(const MMatrix& right);
    MMatrix operator*(double scalar) const;
    MMatrix operator+(const MMatrix& right) const;
    MMatrix operator-(const MMatrix& right) const;
    bool operator==(const MMatrix& other) const;
    bool operator!=(const MMatrix& other) const { return !(*this == other); }

    /// The identity for a matrix that has no inverse.
    MMatrix inverse() const;
    MMatrix transpose() const;
    MMatrix& setToIdentity();
    double det4x4() const;
    bool isSingular() const;
    bool isEquivalent(const MMatrix& other, double tolerance = 1e-10) const;
    MStatus get(double dest[4][4]) const;
    static const char* className() { return "MMatrix"; }

    static const MMatrix identity;

    double matrix[4][4];
};

MAYA_HOST_NAMESPACE_CLOSE
