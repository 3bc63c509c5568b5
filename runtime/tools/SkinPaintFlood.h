// SkinPaintFlood: what a flood of the skin paint tool ("pntAttrSkinPaintCtx -e -clear") does
// to the weights: for each selected vertex of a mesh whose skin cluster has the painted
// influence, the influence's weight w takes the value the operation gives (ToolContexts.h),
// computed from the weights as they were before the flood, so the order of the vertices does
// not matter. The write then normalises as any normalising write does: the other unlocked
// influences share the rest in proportion, locked ones keep their weights, a vertex whose
// lockVertex is on stays as it is, and nothing is normalised when the cluster's
// normalizeWeights is not 1.
//
// The selected vertices are the vertex components of the selection; a selected mesh, or a
// transform above meshes, counts with all its vertices. Other items (joints, edges, faces) are
// passed over. A vertex without edge neighbours keeps its weight when smoothed.
#pragma once

#include "HSelectionList.h"
#include "HStatus.h"
#include "scene/Node.h"
#include "tools/ToolContexts.h"

#include <vector>

namespace runtime {

class Scene;
class SceneJournal;

struct PaintTarget {
    NodePtr shape;
    NodePtr cluster;
    unsigned influence = 0;
    // Each vertex once, in the order the selection gives them.
    std::vector<int> vertices;
};

// One target per selected mesh bound to the influence, in selection order.
std::vector<PaintTarget> paintTargets(const HSelectionList& selection, const Node& influence);

// The influence's new weight for each of the target's vertices.
std::vector<double> paintedWeights(const PaintTarget& target, PaintOperation operation,
                                   double opacity);

// Paints one target, keeping the weights it changes in the journal for undo.
HStatus floodTarget(Scene& scene, SceneJournal& journal, const PaintTarget& target,
                    PaintOperation operation, double opacity);

} // namespace runtime
