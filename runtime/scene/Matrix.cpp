#include "scene/Matrix.h"

#include <cmath>
#include <utility>

namespace runtime {

Matrix Matrix::identity() {
    Matrix result;
    for (int i = 0; i < 4; ++i)
        result.m[i][i] = 1.0;
    return result;
}

Matrix Matrix::translation(const HPoint& offset) {
    Matrix result = identity();
    result.m[0][3] = offset.x;
    result.m[1][3] = offset.y;
    result.m[2][3] = offset.z;
    return result;
}

Matrix Matrix::scaling(const HPoint& factors) {
    Matrix result = identity();
    result.m[0][0] = factors.x;
    result.m[1][1] = factors.y;
    result.m[2][2] = factors.z;
    return result;
}

Matrix Matrix::rotationXYZ(const HPoint& degrees) {
    const double toRadians = 3.14159265358979323846 / 180.0;
    double cx = std::cos(degrees.x * toRadians), sx = std::sin(degrees.x * toRadians);
    double cy = std::cos(degrees.y * toRadians), sy = std::sin(degrees.y * toRadians);
    double cz = std::cos(degrees.z * toRadians), sz = std::sin(degrees.z * toRadians);
    Matrix rx = identity(), ry = identity(), rz = identity();
    rx.m[1][1] = cx;
    rx.m[1][2] = -sx;
    rx.m[2][1] = sx;
    rx.m[2][2] = cx;
    ry.m[0][0] = cy;
    ry.m[0][2] = sy;
    ry.m[2][0] = -sy;
    ry.m[2][2] = cy;
    rz.m[0][0] = cz;
    rz.m[0][1] = -sz;
    rz.m[1][0] = sz;
    rz.m[1][1] = cz;
    return rz * ry * rx;
}

Matrix Matrix::fromColumnMajor(const double* values) {
    Matrix result;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            result.m[row][column] = values[column * 4 + row];
    return result;
}

void Matrix::toColumnMajor(double* values) const {
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row)
            values[column * 4 + row] = m[row][column];
}

Matrix Matrix::operator*(const Matrix& other) const {
    Matrix result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += m[row][k] * other.m[k][column];
            result.m[row][column] = sum;
        }
    return result;
}

HPoint Matrix::transformPoint(const HPoint& p) const {
    double x = m[0][0] * p.x + m[0][1] * p.y + m[0][2] * p.z + m[0][3];
    double y = m[1][0] * p.x + m[1][1] * p.y + m[1][2] * p.z + m[1][3];
    double z = m[2][0] * p.x + m[2][1] * p.y + m[2][2] * p.z + m[2][3];
    double w = m[3][0] * p.x + m[3][1] * p.y + m[3][2] * p.z + m[3][3];
    if (w != 0.0 && w != 1.0) {
        x /= w;
        y /= w;
        z /= w;
    }
    return HPoint(x, y, z);
}

bool Matrix::inverse(Matrix& result) const {
    // Gauss-Jordan elimination with partial pivoting on [this | identity].
    std::array<std::array<double, 8>, 4> a{};
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            a[row][column] = m[row][column];
        a[row][4 + row] = 1.0;
    }
    for (int column = 0; column < 4; ++column) {
        int pivot = column;
        for (int row = column + 1; row < 4; ++row)
            if (std::fabs(a[row][column]) > std::fabs(a[pivot][column]))
                pivot = row;
        if (std::fabs(a[pivot][column]) < 1e-300) {
            result = identity();
            return false;
        }
        std::swap(a[pivot], a[column]);
        double scale = 1.0 / a[column][column];
        for (double& value : a[column])
            value *= scale;
        for (int row = 0; row < 4; ++row) {
            if (row == column || a[row][column] == 0.0)
                continue;
            double factor = a[row][column];
            for (int k = 0; k < 8; ++k)
                a[row][k] -= factor * a[column][k];
        }
    }
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result.m[row][column] = a[row][4 + column];
    return true;
}

} // namespace runtime
