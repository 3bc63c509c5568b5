#include "document/WeightsExport.h"

#include "document/SkinLockAttributes.h"
#include "scene/NodeValues.h"
#include "scene/SkinBindPose.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"

#include <algorithm>
#include <cassert>

namespace runtime {

namespace {

// The locks of the listed vertices only; joint locks whole.
SkinLocks locksOf(const Node& cluster, const std::vector<int>* vertices) {
    SkinLocks locks = readSkinLocks(cluster);
    if (!vertices)
        return locks;
    auto listed = [&](int vertex) {
        return std::binary_search(vertices->begin(), vertices->end(), vertex);
    };
    locks.lockedVertices.erase(std::remove_if(locks.lockedVertices.begin(),
                                              locks.lockedVertices.end(),
                                              [&](int vertex) { return !listed(vertex); }),
                               locks.lockedVertices.end());
    locks.lockedCells.erase(
        std::remove_if(locks.lockedCells.begin(), locks.lockedCells.end(),
                       [&](const CellLocks& cell) { return !listed(cell.vertex); }),
        locks.lockedCells.end());
    return locks;
}

} // namespace

WeightsFileCluster describeClusterWeights(const Node& cluster, const std::vector<int>* vertices) {
    const SkinClusterData& data = *cluster.skinCluster();
    NodePtr mesh = skinClusterGeometry(cluster);
    assert(mesh && "the cluster deforms no mesh");
    WeightsFileCluster file;
    file.name = cluster.name();
    file.mesh = mesh->fullPathName();
    file.vertexCount = data.weights().vertexCount();
    for (const NodePtr& influence : data.influences())
        file.influences.push_back({influence->name(), influence->fullPathName(),
                                   storedBool(*influence, "lockInfluenceWeights")});
    file.hasLocks = true;
    file.locks = locksOf(cluster, vertices);

    const std::vector<HPoint> positions = bindPosePositions(cluster);
    const unsigned count = vertices ? static_cast<unsigned>(vertices->size()) : file.vertexCount;
    file.vertices.reserve(count);
    file.positions.reserve(count);
    if (!vertices) {
        file.weights = data.weights();
    } else {
        file.weights.setVertexCount(count);
    }
    for (unsigned n = 0; n < count; ++n) {
        const unsigned vertex = vertices ? static_cast<unsigned>((*vertices)[n]) : n;
        file.vertices.push_back(vertex);
        file.positions.push_back(vertex < positions.size() ? positions[vertex] : HPoint());
        if (vertices)
            file.weights.assign(n, data.weights().influences(vertex),
                                data.weights().weights(vertex), data.weights().entryCount(vertex));
    }
    return file;
}

} // namespace runtime
