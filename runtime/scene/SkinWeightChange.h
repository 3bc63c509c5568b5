// SkinWeightChange: the weights of some vertices of one skin cluster before and after an edit,
// so that undo and redo put either state back exactly (every weight bit for bit, whatever the
// locks and normalisation settings say meanwhile).
//
// The edit is made between construction (which keeps the "before" weights) and
// captureAfter(). Both states are kept compactly, only the non-zero weights of the listed
// vertices. The change holds the cluster alive; restoring on a cluster that has since lost
// those vertices is a programming error of the undo order and asserts.
#pragma once

#include "scene/Node.h"
#include "scene/SkinWeights.h"

#include <vector>

namespace runtime {

class Scene;

class SkinWeightChange {
public:
    SkinWeightChange(NodePtr cluster, std::vector<int> vertices);

    void captureAfter();
    void restoreBefore(Scene& scene) const;
    void restoreAfter(Scene& scene) const;

    const NodePtr& cluster() const { return m_cluster; }
    const std::vector<int>& vertices() const { return m_vertices; }

private:
    void capture(SkinWeights& into) const;
    void restore(Scene& scene, const SkinWeights& from) const;

    NodePtr m_cluster;
    std::vector<int> m_vertices;
    SkinWeights m_before;
    SkinWeights m_after;
};

} // namespace runtime
