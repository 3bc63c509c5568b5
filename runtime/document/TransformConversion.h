// TransformConversion: node transforms between the form files give (translation, quaternion
// rotation and scale, or a column-major matrix: NodeTransform) and the host's matrices and
// transform values (translate, rotate in degrees, scale, and a joint's jointOrient).
//
// Conversions through rotations are exact only up to rounding; nearlyEqual() tells whether two
// matrices differ by no more than that, so that a transform read from a file and not changed
// since can be written back as the file had it.
#pragma once

#include "files/SceneDescription.h"
#include "scene/Matrix.h"

namespace runtime {

class Node;

Matrix toMatrix(const Matrix4& columnMajor);
Matrix4 toMatrix4(const Matrix& matrix);
// The local matrix of a file's transform (a rotation that is not a unit quaternion is
// normalised; a zero quaternion is no rotation).
Matrix matrixOf(const NodeTransform& transform);
// A transform node's local transform as translation, rotation and scale.
NodeTransform componentsOf(const Node& node);

// Whether every element differs by at most a few units of rounding of the matrices' size.
bool nearlyEqual(const Matrix& a, const Matrix& b);

} // namespace runtime
