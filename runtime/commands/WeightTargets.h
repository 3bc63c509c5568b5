// weightTargets: the skin clusters, and the vertices of each, that a pipeline weight command
// was given: skin clusters, meshes or their transforms (every vertex), and vertex, edge or face
// components ("body.vtx[2:5]": those vertices). Several targets of one cluster add up; a whole
// one takes every vertex. Without targets, every skin cluster of the scene that deforms a
// mesh, in creation order.
//
// Failures are reported as the command's (CommandSupport.h): names that match nothing or more
// than one object, objects that are neither skin clusters nor skinned meshes, a scene without
// skin clusters.
#pragma once

#include "HStatus.h"
#include "HStringArray.h"
#include "scene/Node.h"

#include <memory>
#include <vector>

namespace runtime {

struct WeightTarget {
    NodePtr cluster;
    // The vertices, ascending, each once; null for every vertex.
    std::shared_ptr<std::vector<int>> vertices;
};

HStatus weightTargets(const char* command, const HStringArray& texts,
                      std::vector<WeightTarget>& targets);

} // namespace runtime
