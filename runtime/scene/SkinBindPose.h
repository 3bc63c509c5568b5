// bindPosePositions: where the vertices of a skin cluster's mesh are in the world in the bind
// pose: the mesh's own points (which skinning deforms, never changes) times the world matrix
// the mesh had when it was bound. The nearest-influence rule of weight writes, the viewport's
// skinning and the pipeline's matching of vertices by position all measure from here.
#pragma once

#include "HPoint.h"

#include <vector>

namespace runtime {

class Node;

// One position per vertex of the mesh; empty when the cluster deforms no mesh.
std::vector<HPoint> bindPosePositions(const Node& cluster);

} // namespace runtime
