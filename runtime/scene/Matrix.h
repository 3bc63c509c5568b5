// Matrix: a 4x4 transformation matrix of doubles. Points are column vectors (p' = M p), so
// the translation sits in the last column and A * B applies B first. Element (row, column) is
// at m[row][column]; file formats that store columns first convert on the way in and out.
#pragma once

#include "HPoint.h"

#include <array>

namespace runtime {

struct Matrix {
    std::array<std::array<double, 4>, 4> m{};

    static Matrix identity();
    static Matrix translation(const HPoint& offset);
    static Matrix scaling(const HPoint& factors);
    // Rotation by Euler angles in degrees, X applied first, then Y, then Z.
    static Matrix rotationXYZ(const HPoint& degrees);
    // From 16 values stored column after column (the layout of glTF).
    static Matrix fromColumnMajor(const double* values);
    void toColumnMajor(double* values) const;

    Matrix operator*(const Matrix& other) const;
    HPoint transformPoint(const HPoint& point) const;
    HPoint translationPart() const { return HPoint(m[0][3], m[1][3], m[2][3]); }
    // The inverse; false (and the identity) when the matrix is singular.
    bool inverse(Matrix& result) const;
    bool operator==(const Matrix& other) const { return m == other.m; }
    bool operator!=(const Matrix& other) const { return m != other.m; }
};

} // namespace runtime
