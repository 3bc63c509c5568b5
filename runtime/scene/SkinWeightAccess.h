// SkinWeightAccess: reading and writing a skin cluster's weights by the host's rules, for a
// list of vertices (null: every vertex in index order). Arrays are vertex-major: the weight
// of influence k on the n-th listed vertex is at n * influenceCount + k.
//
// writeWeights, for each listed vertex: `old` (when given) receives all its weights first; a
// vertex whose lockVertex element is on stays as it is; the listed influences take their
// values clamped to [0, 1]. When normalising (normalize on and the cluster's normalizeWeights
// at 1) the rest of the vertex follows: L is the sum of the unlisted influences whose joint
// has lockInfluenceWeights on; listed values summing to more than 1 - L are scaled down to
// it; the remainder R = 1 - L - listed goes to the unlisted unlocked influences in proportion
// to their weights, or, when those hold nothing, to the unlisted unlocked influence nearest to
// the vertex in the bind pose (ties to the lower index), or, when there is none, back to the
// listed influences in proportion (evenly when they are all 0). With `restoreWhenComplete`
// and every influence listed, the values are stored as given (writing back what
// readWeights gave restores it exactly). Otherwise (normalize off, normalizeWeights 0 or 2)
// values are stored as given.
//
// Fails, writing nothing, for a vertex index out of range, an influence out of range or
// listed twice, a value count that does not match, or a value that is not a finite number.
#pragma once

#include "HStatus.h"

#include <cstddef>
#include <vector>

namespace runtime {

class Node;
class Scene;
class SkinClusterData;

// kSuccess when every vertex of the list exists in the cluster.
HStatus checkVertices(const SkinClusterData& data, const std::vector<int>* vertices);
// Number of vertices the list covers.
unsigned vertexListSize(const SkinClusterData& data, const std::vector<int>* vertices);

// out holds vertexListSize * influenceCount doubles, all 0 on entry.
void readWeights(const SkinClusterData& data, const std::vector<int>* vertices, double* out);
// out holds vertexListSize doubles: the weight of one influence per vertex.
void readInfluenceWeights(const SkinClusterData& data, const std::vector<int>* vertices,
                          unsigned influence, double* out);

// Where a write finds each vertex's values; the caller keeps them alive during the write.
struct WeightValues {
    enum class Layout {
        // One per listed influence per vertex, vertex-major.
        kPerVertex,
        // One per listed influence, for every vertex alike.
        kSameForEveryVertex,
        // A row of every influence per vertex (as readWeights gives them); only the listed
        // influences' columns are read.
        kFullRows,
    };
    const double* data = nullptr;
    std::size_t size = 0;
    Layout layout = Layout::kPerVertex;
};

HStatus writeWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                     const std::vector<unsigned>& influences, const WeightValues& values,
                     bool normalize, bool restoreWhenComplete, std::vector<double>* old);
// values: one per listed influence per vertex (vertex-major), or, with sameForEveryVertex,
// one per listed influence for all vertices.
HStatus writeWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                     const std::vector<unsigned>& influences, const std::vector<double>& values,
                     bool sameForEveryVertex, bool normalize, bool restoreWhenComplete,
                     std::vector<double>* old);

} // namespace runtime
