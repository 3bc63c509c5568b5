// describeClusterWeights: a skin cluster as a weights file holds it (WeightsFile.h): the full
// path of its mesh, its influences (short names, full paths, lockInfluenceWeights), the weight
// editor's locks (SkinLockAttributes.h) of the listed vertices, and each listed vertex with
// its bind-pose world position and its non-zero weights, exactly as stored.
//
// vertices: the vertex indices to write, ascending and each once, all of them in range (null:
// every vertex). The cluster must deform a mesh.
#pragma once

#include "files/WeightsFile.h"

#include <vector>

namespace runtime {

class Node;

WeightsFileCluster describeClusterWeights(const Node& cluster, const std::vector<int>* vertices);

} // namespace runtime
