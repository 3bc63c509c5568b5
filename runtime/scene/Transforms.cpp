#include "scene/Transforms.h"

#include "scene/Node.h"
#include "scene/NodeValues.h"

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

} // namespace runtime
