// WeightsImport: puts a cluster of a weights file (WeightsFile.h) onto a skin cluster of the
// scene, in two steps, so that an import that cannot be done changes nothing.
//
// planImport() works out what will be written. Influences are matched by short name, after
// the remaps (a file influence named `from` stands for the cluster's `to`; the first remap
// that names it counts); file influences the cluster lacks fail the plan, listed. Vertices
// (null: every vertex of the cluster's mesh) are matched by index (the mesh must have the
// file's vertex count; vertices the file does not list are left out) or by position (each
// takes the file's vertex nearest to its bind-pose world position, the lower index among
// equally near ones; the file must list at least one vertex).
//
// applyImport() writes it: each planned vertex gets the weights of its file vertex exactly as
// the file holds them (two file influences remapped onto one add up), whatever locks the
// scene has. When the file says what is locked, the locks come along: each matched joint's
// lockInfluenceWeights, the weight editor's locked joints (their paths taken to the matched
// influences'), and the vertex and cell locks of the planned vertices (those of their file
// vertices). Everything is recorded in the journal, so that undo restores it exactly.
#pragma once

#include "HStatus.h"
#include "files/WeightsFile.h"
#include "scene/Node.h"

#include <string>
#include <vector>

namespace runtime {

class Scene;
class SceneJournal;

enum class VertexMatching { kIndex, kPosition };

struct InfluenceRemap {
    std::string from;
    std::string to;
};

struct ImportPlan {
    NodePtr cluster;
    const WeightsFileCluster* file = nullptr;
    // For each file influence, the cluster's influence index.
    std::vector<unsigned> influences;
    // The vertices to write, and for each the position of its file vertex in file->vertices.
    std::vector<unsigned> targets;
    std::vector<unsigned> sources;
};

// Fails with a message naming the problem (without the command's name).
HStatus planImport(const WeightsFileCluster& file, const NodePtr& cluster,
                   const std::vector<int>* vertices, VertexMatching matching,
                   const std::vector<InfluenceRemap>& remaps, ImportPlan& plan);

struct ImportCounts {
    unsigned written = 0;
    // Vertices written whose weights differ from a sum of 1 by more than kSumTolerance.
    unsigned notSummingToOne = 0;
};
constexpr double kSumTolerance = 1e-6;

// Fails, with everything it wrote taken back, only when the cluster has a lock attribute of
// another kind than the weight editor's.
HStatus applyImport(Scene& scene, SceneJournal& journal, const ImportPlan& plan,
                    ImportCounts& counts);

} // namespace runtime
