#include "scene/Transforms.h"

#include "scene/Node.h"
#include "scene/NodeValues.h"

#include <algorithm>
#include <cmath>

namespace runtime {

Matrix localMatrix(const Node& node) {
    if (!node.hasFn(HFn::kTransform))
        return Matrix::identity();
    Matrix local = Matrix::translation(tripleValue(node, "translate"));
    if (node.hasFn(HFn::kJoint))
        local = local * Matrix::rotationXYZ(tripleValue(node, "jointOrient"));
    return local * Matrix::rotationXYZ(tripleValue(node, "rotate")) *
           Matrix::scaling(tripleValue(node, "scale"));
}

Matrix worldMatrix(const Node& node) {
    Matrix world = localMatrix(node);
    for (const Node* parent = node.parent(); parent; parent = parent->parent())
        world = localMatrix(*parent) * world;
    return world;
}

HPoint worldPosition(const Node& node) {
    return worldMatrix(node).translationPart();
}

HStatus setWorldPosition(Scene& scene, Node& node, const HPoint& position) {
    if (!node.hasFn(HFn::kTransform))
        return HStatus(HS::kInvalidParameter, node.name() + " is not a transform.");
    Matrix parentInverse = Matrix::identity();
    if (node.parent())
        worldMatrix(*node.parent()).inverse(parentInverse);
    return setTripleValue(scene, node, "translate", parentInverse.transformPoint(position));
}

namespace {

double length(const Matrix& matrix, int column) {
    return std::sqrt(matrix.m[0][column] * matrix.m[0][column] +
                     matrix.m[1][column] * matrix.m[1][column] +
                     matrix.m[2][column] * matrix.m[2][column]);
}

double determinant3(const Matrix& a) {
    return a.m[0][0] * (a.m[1][1] * a.m[2][2] - a.m[1][2] * a.m[2][1]) -
           a.m[0][1] * (a.m[1][0] * a.m[2][2] - a.m[1][2] * a.m[2][0]) +
           a.m[0][2] * (a.m[1][0] * a.m[2][1] - a.m[1][1] * a.m[2][0]);
}

} // namespace

bool transformValuesFor(const Node& node, const Matrix& local, TransformValues& values) {
    const double toDegrees = 180.0 / 3.14159265358979323846;
    values.translate = local.translationPart();
    Matrix linear = local;
    for (int row = 0; row < 3; ++row)
        linear.m[row][3] = 0.0;
    if (node.hasFn(HFn::kJoint)) {
        Matrix orientInverse;
        Matrix::rotationXYZ(tripleValue(node, "jointOrient")).inverse(orientInverse);
        linear = orientInverse * linear;
    }
    double scale[3] = {length(linear, 0), length(linear, 1), length(linear, 2)};
    if (std::min({scale[0], scale[1], scale[2]}) < 1e-12)
        return false;
    if (determinant3(linear) < 0.0)
        scale[0] = -scale[0];
    Matrix rotation = linear;
    for (int column = 0; column < 3; ++column)
        for (int row = 0; row < 3; ++row)
            rotation.m[row][column] /= scale[column];
    // rotation = Rz * Ry * Rx.
    double y = std::asin(std::clamp(-rotation.m[2][0], -1.0, 1.0));
    double x = 0.0, z = 0.0;
    if (std::cos(y) > 1e-9) {
        x = std::atan2(rotation.m[2][1], rotation.m[2][2]);
        z = std::atan2(rotation.m[1][0], rotation.m[0][0]);
    } else {
        x = std::atan2(-rotation.m[1][2], rotation.m[1][1]);
    }
    values.rotate = HPoint(x * toDegrees, y * toDegrees, z * toDegrees);
    values.scale = HPoint(scale[0], scale[1], scale[2]);
    return true;
}

} // namespace runtime
