#include "scene/SkinWeightPass.h"

#include "api/StatusReport.h"
#include "scene/Node.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLocks.h"
#include "scene/SkinWeightAccess.h"
#include "scene/VertexWeightRecord.h"

namespace runtime {

namespace {

// Whether every locked influence has the same weight in both (entries sorted by influence).
bool lockedWeightsKept(const VertexEntries& before, const VertexEntries& after,
                       const std::vector<char>& locks) {
    auto skipUnlocked = [&](const VertexEntries& entries, size_t& at) {
        while (at < entries.size() &&
               !(entries[at].influence < locks.size() && locks[entries[at].influence]))
            ++at;
    };
    size_t a = 0, b = 0;
    for (;; ++a, ++b) {
        skipUnlocked(before, a);
        skipUnlocked(after, b);
        if (a == before.size() || b == after.size())
            return a == before.size() && b == after.size();
        if (before[a].influence != after[b].influence || before[a].weight != after[b].weight)
            return false;
    }
}

} // namespace

HStatus applyVertexRule(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                        VertexWeightRecord* record, const VertexRule& rule, RuleCounts& counts) {
    SkinClusterData* data = cluster.skinCluster();
    if (!cluster.isAlive() || !data)
        return invalidParameter(cluster.name() + " is not a live skin cluster.");
    HStatus status = checkVertices(*data, vertices);
    if (!status)
        return status;
    const std::vector<char> locks = influenceLocks(*data);
    const std::vector<char> allLocked(data->influenceCount(), 1);
    const VertexLocks vertexLocks(cluster);
    SkinWeights& weights = data->weights();
    VertexEntries before, after;
    auto changed = std::make_shared<std::vector<unsigned>>();
    const unsigned count = vertexListSize(*data, vertices);
    if (record) {
        // Edits over many vertices usually change most of them: room for all at once is
        // cheaper than growing the record vertex by vertex.
        std::size_t entries = 0;
        for (unsigned n = 0; n < count; ++n)
            entries += weights.entryCount(vertices ? static_cast<unsigned>((*vertices)[n]) : n);
        record->reserve(count, entries);
    }
    changed->reserve(count);
    for (unsigned n = 0; n < count; ++n) {
        const unsigned vertex = vertices ? static_cast<unsigned>((*vertices)[n]) : n;
        const std::vector<char>& vertexInfluenceLocks =
            vertexLocks.locked(vertex) ? allLocked : locks;
        readEntries(weights, vertex, before);
        after = before;
        if (!rule(vertex, after, vertexInfluenceLocks) ||
            !lockedWeightsKept(before, after, vertexInfluenceLocks)) {
            ++counts.refused;
            continue;
        }
        if (holdsEntries(weights, vertex, after))
            continue;
        if (record)
            record->keep(weights, vertex);
        storeEntries(weights, vertex, after);
        changed->push_back(vertex);
        ++counts.changed;
    }
    scene.notify(SceneChange::weightsChanged(cluster.shared_from_this(), std::move(changed)));
    return HS::kSuccess;
}

} // namespace runtime
