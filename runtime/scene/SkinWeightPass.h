// applyVertexRule: runs a rule over some vertices of a skin cluster, one vertex at a time, as
// the pipeline's weight edits (limit, quantize, mirror) do, and keeps what it did for undo.
//
// The rule gets a vertex's non-zero weights sorted by influence and the influence locks (one
// entry per influence, non-zero where the joint has lockInfluenceWeights on; for a vertex
// whose lockVertex element is on, every entry is locked). It changes the entries and returns
// true, or returns false when it cannot do its work on that vertex. A vertex is counted as
// refused, and left as it is, when the rule refuses it or its result would change a locked
// weight; it is counted as changed when its weights differ afterwards. Each changed vertex is
// kept in the record (when one is given) before it changes, and the scene is told once which
// vertices changed. Fails, changing nothing, for a node that is not a live skin cluster or a
// vertex out of range.
#pragma once

#include "HStatus.h"
#include "scene/SkinWeightCleanup.h"

#include <functional>
#include <vector>

namespace runtime {

class Node;
class Scene;
class VertexWeightRecord;

using VertexRule =
    std::function<bool(unsigned vertex, VertexEntries& entries, const std::vector<char>& locks)>;

struct RuleCounts {
    unsigned changed = 0;
    unsigned refused = 0;
};

// vertices: null for every vertex in index order.
HStatus applyVertexRule(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                        VertexWeightRecord* record, const VertexRule& rule, RuleCounts& counts);

} // namespace runtime
