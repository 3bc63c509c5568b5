// SkinClusterData: what a skin cluster node carries besides attribute values: its ordered
// influences (the position in the list is the influence index), each influence's bind-pre
// matrix (the inverse of its world matrix when it was bound), the geometry's world matrix at
// bind time, and the weights (SkinWeights).
//
// The cluster holds its influences alive. An influence that is deleted keeps its place and
// index (its handles read as null) until the deletion is undone. The rules for writing
// weights through the interface live in SkinWeightAccess; this class stores. setInfluences()
// refuses nodes that are not transforms, a node listed twice and lists of more than
// SkinWeights::kMaxInfluences.
#pragma once

#include "HPoint.h"
#include "HStatus.h"
#include "scene/Matrix.h"
#include "scene/NodeType.h"
#include "scene/SkinWeights.h"

#include <memory>
#include <vector>

namespace runtime {

class Node;
using NodePtr = std::shared_ptr<Node>;

class SkinClusterData : public NodePayload {
public:
    const std::vector<NodePtr>& influences() const { return m_influences; }
    unsigned influenceCount() const { return static_cast<unsigned>(m_influences.size()); }
    // The influence index of joint, or -1.
    int indexOf(const Node* joint) const;

    // bindPreMatrices has one matrix per influence; the weights keep their vertex count and
    // lose entries of influences that no longer exist.
    HStatus setInfluences(std::vector<NodePtr> influences, std::vector<Matrix> bindPreMatrices);
    const Matrix& bindPreMatrix(unsigned influence) const { return m_bindPre[influence]; }
    // Where the influence was, in world space, when it was bound.
    const HPoint& bindPosition(unsigned influence) const { return m_bindPositions[influence]; }

    // The geometry's world matrix when it was bound; vertex positions times this matrix are
    // the bind-pose positions the nearest-influence rule measures from.
    const Matrix& geometryMatrix() const { return m_geometryMatrix; }
    void setGeometryMatrix(const Matrix& matrix) { m_geometryMatrix = matrix; }

    SkinWeights& weights() { return m_weights; }
    const SkinWeights& weights() const { return m_weights; }

private:
    std::vector<NodePtr> m_influences;
    std::vector<Matrix> m_bindPre;
    std::vector<HPoint> m_bindPositions;
    Matrix m_geometryMatrix = Matrix::identity();
    SkinWeights m_weights;
};

} // namespace runtime
