#include "document/TransformConversion.h"

#include "scene/Node.h"
#include "scene/NodeValues.h"

#include <algorithm>
#include <cmath>

namespace runtime {

namespace {

// Relative to the largest element of the two matrices (or 1, for matrices of small numbers).
constexpr double kRoundingTolerance = 1e-9;

// The unit quaternion (x, y, z, w) of a rotation matrix's upper 3x3 block.
std::array<double, 4> quaternionOf(const Matrix& r) {
    const auto& m = r.m;
    std::array<double, 4> q;
    double trace = m[0][0] + m[1][1] + m[2][2];
    if (trace > 0.0) {
        double s = 2.0 * std::sqrt(trace + 1.0);
        q = {(m[2][1] - m[1][2]) / s, (m[0][2] - m[2][0]) / s, (m[1][0] - m[0][1]) / s, s / 4.0};
    } else if (m[0][0] > m[1][1] && m[0][0] > m[2][2]) {
        double s = 2.0 * std::sqrt(1.0 + m[0][0] - m[1][1] - m[2][2]);
        q = {s / 4.0, (m[0][1] + m[1][0]) / s, (m[0][2] + m[2][0]) / s, (m[2][1] - m[1][2]) / s};
    } else if (m[1][1] > m[2][2]) {
        double s = 2.0 * std::sqrt(1.0 + m[1][1] - m[0][0] - m[2][2]);
        q = {(m[0][1] + m[1][0]) / s, s / 4.0, (m[1][2] + m[2][1]) / s, (m[0][2] - m[2][0]) / s};
    } else {
        double s = 2.0 * std::sqrt(1.0 + m[2][2] - m[0][0] - m[1][1]);
        q = {(m[0][2] + m[2][0]) / s, (m[1][2] + m[2][1]) / s, s / 4.0, (m[1][0] - m[0][1]) / s};
    }
    double length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    for (double& c : q)
        c /= length;
    // The same rotation either way; a positive w reads more naturally.
    if (q[3] < 0.0)
        for (double& c : q)
            c = -c;
    return q;
}

Matrix rotationOf(std::array<double, 4> q) {
    double length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    if (length == 0.0)
        return Matrix::identity();
    for (double& c : q)
        c /= length;
    const double x = q[0], y = q[1], z = q[2], w = q[3];
    Matrix r = Matrix::identity();
    r.m[0][0] = 1.0 - 2.0 * (y * y + z * z);
    r.m[0][1] = 2.0 * (x * y - z * w);
    r.m[0][2] = 2.0 * (x * z + y * w);
    r.m[1][0] = 2.0 * (x * y + z * w);
    r.m[1][1] = 1.0 - 2.0 * (x * x + z * z);
    r.m[1][2] = 2.0 * (y * z - x * w);
    r.m[2][0] = 2.0 * (x * z - y * w);
    r.m[2][1] = 2.0 * (y * z + x * w);
    r.m[2][2] = 1.0 - 2.0 * (x * x + y * y);
    return r;
}

HPoint point(const std::array<double, 3>& values) {
    return HPoint(values[0], values[1], values[2]);
}

} // namespace

Matrix toMatrix(const Matrix4& columnMajor) {
    return Matrix::fromColumnMajor(columnMajor.data());
}

Matrix4 toMatrix4(const Matrix& matrix) {
    Matrix4 values;
    matrix.toColumnMajor(values.data());
    return values;
}

Matrix matrixOf(const NodeTransform& transform) {
    if (transform.form == NodeTransform::Form::kMatrix)
        return toMatrix(transform.matrix);
    return Matrix::translation(point(transform.translation)) * rotationOf(transform.rotation) *
           Matrix::scaling(point(transform.scale));
}

NodeTransform componentsOf(const Node& node) {
    NodeTransform transform;
    const HPoint translate = tripleValue(node, "translate");
    const HPoint scale = tripleValue(node, "scale");
    Matrix rotation = Matrix::rotationXYZ(tripleValue(node, "rotate"));
    if (node.hasFn(HFn::kJoint))
        rotation = Matrix::rotationXYZ(tripleValue(node, "jointOrient")) * rotation;
    transform.translation = {translate.x, translate.y, translate.z};
    transform.rotation = quaternionOf(rotation);
    transform.scale = {scale.x, scale.y, scale.z};
    return transform;
}

bool nearlyEqual(const Matrix& a, const Matrix& b) {
    double size = 1.0;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            size = std::max({size, std::fabs(a.m[row][column]), std::fabs(b.m[row][column])});
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            if (std::fabs(a.m[row][column] - b.m[row][column]) > kRoundingTolerance * size)
                return false;
    return true;
}

} // namespace runtime
