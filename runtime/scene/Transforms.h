// Transforms: the matrices of DAG nodes from their translate, rotate (degrees, X then Y then
// Z), scale and, for joints, jointOrient values. Local = T * JO * R * S; a node's world matrix
// is its ancestors' local matrices times its own. Shapes and non-DAG nodes add no transform
// of their own.
#pragma once

#include "HPoint.h"
#include "HStatus.h"
#include "scene/Matrix.h"

namespace runtime {

class Node;
class Scene;

Matrix localMatrix(const Node& node);
Matrix worldMatrix(const Node& node);
HPoint worldPosition(const Node& node);
// Sets translate so that the node's origin lies at position in world space.
HStatus setWorldPosition(Scene& scene, Node& node, const HPoint& position);

// The translate, rotate (degrees) and scale values that give a transform the local matrix
// `local`, its jointOrient (for a joint) staying as it is. False for a matrix without that
// form: a zero scale. Shear is not represented and is lost.
struct TransformValues {
    HPoint translate, rotate, scale;
};
bool transformValuesFor(const Node& node, const Matrix& local, TransformValues& values);

} // namespace runtime
