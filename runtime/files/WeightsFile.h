// WeightsFile: what a skin weights file (.json, docs/weights-format.md) holds, as the reader
// gives it and the writer takes it: per skin cluster, its mesh, its influences, the weight
// editor's locks, and some or all of its vertices, each with its bind-pose world position and
// its non-zero weights.
//
// Weights are kept in the runtime's compact storage (SkinWeights), indexed by the position of
// the vertex in `vertices`, not by its vertex index; influence indices count into
// `influences`. The reader gives only files whose every index is in range.
#pragma once

#include "HPoint.h"
#include "files/SceneDescription.h"
#include "scene/SkinWeights.h"

#include <string>
#include <vector>

namespace runtime {

constexpr const char* kWeightsFileFormat = "vorel-skin-weights";
constexpr int kWeightsFileVersion = 1;

struct WeightsFileInfluence {
    // The joint's short name, by which importing matches it.
    std::string name;
    // Its full path where it was written; empty when the file does not say.
    std::string path;
    // Its lockInfluenceWeights.
    bool locked = false;
};

struct WeightsFileCluster {
    // The skin cluster's name where it was written; may be empty.
    std::string name;
    // The full path of the mesh shape it deforms.
    std::string mesh;
    // How many vertices the mesh has (not all need be listed).
    unsigned vertexCount = 0;
    std::vector<WeightsFileInfluence> influences;
    // Whether the file says what is locked; when it does not, importing leaves the locks be.
    bool hasLocks = false;
    SkinLocks locks;
    // The listed vertices' indices, ascending, each once.
    std::vector<unsigned> vertices;
    // One bind-pose world position per listed vertex.
    std::vector<HPoint> positions;
    // One entry per listed vertex, in the order of `vertices`.
    SkinWeights weights;
};

struct WeightsFile {
    std::vector<WeightsFileCluster> clusters;
};

} // namespace runtime
