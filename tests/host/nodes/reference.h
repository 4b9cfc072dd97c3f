#pragma once

#include <ImathMatrix.h>
#include <ImathVec.h>

#include <array>
#include <cmath>

namespace reference {

// The same mathematics once more, written out plainly and in long double, to compare with.

using Real = long double;
using Vector = std::array<Real, 3>;

struct Matrix {
    Real m[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

inline Matrix operator*(const Matrix& a, const Matrix& b)
{
    Matrix c;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) {
            c.m[i][j] = 0;
            for (int k = 0; k < 4; ++k)
                c.m[i][j] += a.m[i][k] * b.m[k][j];
        }
    return c;
}

inline Vector operator*(const Vector& p, const Matrix& m)
{
    Vector r{};
    for (std::size_t j = 0; j < 3; ++j)
        r[j] = p[0] * m.m[0][j] + p[1] * m.m[1][j] + p[2] * m.m[2][j] + m.m[3][j];
    return r;
}

inline Matrix translation(const Vector& t)
{
    Matrix r;
    for (std::size_t i = 0; i < 3; ++i)
        r.m[3][i] = t[i];
    return r;
}

inline Matrix scaling(const Vector& s)
{
    Matrix r;
    for (std::size_t i = 0; i < 3; ++i)
        r.m[i][i] = s[i];
    return r;
}

/// Row vectors: x goes to y for +90 degrees about z.
inline Matrix rotation(char axis, Real degrees)
{
    const Real radians = degrees * std::acos(Real(-1)) / 180;
    const Real c = std::cos(radians);
    const Real s = std::sin(radians);
    Matrix r;
    if (axis == 'x') {
        r.m[1][1] = c, r.m[1][2] = s, r.m[2][1] = -s, r.m[2][2] = c;
    } else if (axis == 'y') {
        r.m[0][0] = c, r.m[0][2] = -s, r.m[2][0] = s, r.m[2][2] = c;
    } else {
        r.m[0][0] = c, r.m[0][1] = s, r.m[1][0] = -s, r.m[1][1] = c;
    }
    return r;
}

inline Matrix euler(const Vector& degrees, const char* order)
{
    Matrix r;
    for (const char* axis = order; *axis; ++axis)
        r = r * rotation(*axis, degrees[static_cast<std::size_t>(*axis - 'x')]);
    return r;
}

inline Matrix inverse(const Matrix& matrix)
{
    Real a[4][8];
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 8; ++j)
            a[i][j] = j < 4 ? matrix.m[i][j] : (j - 4 == i ? 1 : 0);
    for (int column = 0; column < 4; ++column) {
        int pivot = column;
        for (int row = column; row < 4; ++row)
            if (std::fabs(a[row][column]) > std::fabs(a[pivot][column]))
                pivot = row;
        for (int j = 0; j < 8; ++j)
            std::swap(a[column][j], a[pivot][j]);
        const Real head = a[column][column];
        for (int j = 0; j < 8; ++j)
            a[column][j] /= head;
        for (int row = 0; row < 4; ++row) {
            const Real factor = row == column ? 0 : a[row][column];
            for (int j = 0; j < 8; ++j)
                a[row][j] -= factor * a[column][j];
        }
    }
    Matrix r;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            r.m[i][j] = a[i][j + 4];
    return r;
}

inline double distance(const Imath::V3d& a, const Vector& b)
{
    const Real x = Real(a.x) - b[0], y = Real(a.y) - b[1], z = Real(a.z) - b[2];
    return static_cast<double>(std::sqrt(x * x + y * y + z * z));
}

inline double largestDifference(const Imath::M44d& a, const Matrix& b)
{
    double worst = 0;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            worst = std::fmax(worst, static_cast<double>(std::fabs(Real(a[i][j]) - b.m[i][j])));
    return worst;
}

} // namespace reference
