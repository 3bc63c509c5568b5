// SkinSmoothing: evens out a skin cluster's weights along the edges of its mesh.
//
// Each pass looks at every listed vertex: the average weight vector of its edge neighbours
// (absent weights count as 0) is compared with the vertex's own; where any influence differs
// by more than the threshold, the vertex takes the average, except that locked influences
// keep the vertex's own weights and the unlocked rest is normalised (SkinWeightCleanup). With
// obeyMaxInfluences the changed vertex then keeps only its maxInfluences largest weights,
// normalised. Vertices whose lockVertex element is on, vertices without neighbours, and
// vertices whose neighbours give their unlocked influences nothing are left as they are.
// Every vertex of a pass is computed from the weights the pass started with, so the result
// does not depend on the order of the list or on how the work is split among threads. The
// passes stop after maxPasses or at the first pass that changes nothing.
//
// Fails, changing nothing, for a node that is not a live skin cluster with a mesh of as many
// vertices as it has weights, or a listed vertex out of range.
#pragma once

#include "HStatus.h"

#include <vector>

namespace runtime {

class Node;
class Scene;
class VertexWeightRecord;

struct SmoothingOptions {
    double threshold = 0.0;
    unsigned maxPasses = 1;
    bool obeyMaxInfluences = false;
    unsigned maxInfluences = 5;
};

// vertices: the vertices to smooth, each once. record (when given) keeps every vertex before
// its first change; passes (when given) receives the number of passes that changed something.
HStatus smoothSkinWeights(Scene& scene, Node& cluster, const std::vector<unsigned>& vertices,
                          const SmoothingOptions& options, VertexWeightRecord* record,
                          unsigned* passes = nullptr);

} // namespace runtime
