#include "scene/SkinWeightCleanup.h"

#include "api/StatusReport.h"
#include "scene/Node.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLocks.h"
#include "scene/SkinWeightAccess.h"
#include "scene/VertexWeightRecord.h"

#include <algorithm>
#include <functional>

namespace runtime {

namespace {

bool isLocked(const std::vector<char>& locks, unsigned influence) {
    return influence < locks.size() && locks[influence] != 0;
}

void dropZeros(VertexEntries& entries) {
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [](const WeightEntry& e) { return e.weight == 0.0; }),
                  entries.end());
}

using VertexEdit = std::function<bool(VertexEntries&, const std::vector<char>&)>;

// Runs edit on each listed vertex that is not locked; stores the result where edit says so
// and it differs from what is there.
HStatus editVertices(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                     VertexWeightRecord* record, const VertexEdit& edit) {
    SkinClusterData* data = cluster.skinCluster();
    if (!cluster.isAlive() || !data)
        return invalidParameter(cluster.name() + " is not a live skin cluster.");
    HStatus status = checkVertices(*data, vertices);
    if (!status)
        return status;
    std::vector<char> locks = influenceLocks(*data);
    VertexLocks vertexLocks(cluster);
    SkinWeights& weights = data->weights();
    VertexEntries entries;
    std::vector<SkinWeights::Influence> influences;
    std::vector<double> values;
    unsigned count = vertexListSize(*data, vertices);
    auto changed = std::make_shared<std::vector<unsigned>>();
    for (unsigned n = 0; n < count; ++n) {
        unsigned vertex = vertices ? static_cast<unsigned>((*vertices)[n]) : n;
        if (vertexLocks.locked(vertex))
            continue;
        entries.clear();
        for (unsigned i = 0; i < weights.entryCount(vertex); ++i)
            entries.push_back({weights.influences(vertex)[i], weights.weights(vertex)[i]});
        if (!edit(entries, locks))
            continue;
        std::sort(entries.begin(), entries.end(), [](const WeightEntry& a, const WeightEntry& b) {
            return a.influence < b.influence;
        });
        if (holdsEntries(weights, vertex, entries))
            continue;
        if (record)
            record->keep(weights, vertex);
        influences.clear();
        values.clear();
        for (const WeightEntry& e : entries) {
            influences.push_back(static_cast<SkinWeights::Influence>(e.influence));
            values.push_back(e.weight);
        }
        weights.assign(vertex, influences.data(), values.data(),
                       static_cast<unsigned>(entries.size()));
        changed->push_back(vertex);
    }
    scene.notify(SceneChange::weightsChanged(cluster.shared_from_this(), std::move(changed)));
    return HS::kSuccess;
}

} // namespace

bool holdsEntries(const SkinWeights& weights, unsigned vertex, const VertexEntries& entries) {
    if (entries.size() != weights.entryCount(vertex))
        return false;
    for (size_t i = 0; i < entries.size(); ++i)
        if (entries[i].influence != weights.influences(vertex)[i] ||
            entries[i].weight != weights.weights(vertex)[i])
            return false;
    return true;
}

bool normaliseUnlocked(VertexEntries& entries, const std::vector<char>& locks) {
    double lockedSum = 0.0, unlockedSum = 0.0;
    for (const WeightEntry& e : entries)
        (isLocked(locks, e.influence) ? lockedSum : unlockedSum) += e.weight;
    double room = std::max(0.0, 1.0 - lockedSum);
    if (unlockedSum <= 0.0)
        return room <= 0.0;
    for (WeightEntry& e : entries)
        if (!isLocked(locks, e.influence))
            e.weight *= room / unlockedSum;
    dropZeros(entries);
    return true;
}

void limitInfluences(VertexEntries& entries, const std::vector<char>& locks, unsigned limit) {
    if (entries.size() <= limit)
        return;
    VertexEntries kept;
    VertexEntries unlocked;
    for (const WeightEntry& e : entries)
        (isLocked(locks, e.influence) ? kept : unlocked).push_back(e);
    std::sort(unlocked.begin(), unlocked.end(), [](const WeightEntry& a, const WeightEntry& b) {
        return a.weight != b.weight ? a.weight > b.weight : a.influence < b.influence;
    });
    size_t room = limit > kept.size() ? limit - kept.size() : 0;
    size_t keep = std::min(unlocked.size(), std::max<size_t>(room, 1));
    kept.insert(kept.end(), unlocked.begin(), unlocked.begin() + static_cast<std::ptrdiff_t>(keep));
    entries = std::move(kept);
    normaliseUnlocked(entries, locks);
}

HStatus normalizeVertexWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                               VertexWeightRecord* record) {
    return editVertices(scene, cluster, vertices, record, normaliseUnlocked);
}

HStatus pruneVertexWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                           double threshold, bool normalise, VertexWeightRecord* record) {
    return editVertices(scene, cluster, vertices, record,
                        [&](VertexEntries& entries, const std::vector<char>& locks) {
                            VertexEntries kept;
                            bool unlockedLeft = false;
                            for (const WeightEntry& e : entries) {
                                bool locked = isLocked(locks, e.influence);
                                if (locked || e.weight >= threshold)
                                    kept.push_back(e);
                                unlockedLeft = unlockedLeft || (!locked && e.weight >= threshold);
                            }
                            if (!unlockedLeft)
                                return false;
                            entries = std::move(kept);
                            return !normalise || normaliseUnlocked(entries, locks);
                        });
}

} // namespace runtime
