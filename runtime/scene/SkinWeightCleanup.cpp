#include "scene/SkinWeightCleanup.h"

#include "scene/SkinWeightPass.h"
#include "scene/SkinWeights.h"

#include <algorithm>

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

// Runs edit on each listed vertex as applyVertexRule does; the edits here change no locked
// weight, so the vertices it counts as refused are those edit left alone.
template <typename Edit>
HStatus editVertices(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                     VertexWeightRecord* record, const Edit& edit) {
    RuleCounts counts;
    return applyVertexRule(
        scene, cluster, vertices, record,
        [&](unsigned, VertexEntries& entries, const std::vector<char>& locks) {
            return edit(entries, locks);
        },
        counts);
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

void readEntries(const SkinWeights& weights, unsigned vertex, VertexEntries& entries) {
    entries.clear();
    for (unsigned i = 0; i < weights.entryCount(vertex); ++i)
        entries.push_back({weights.influences(vertex)[i], weights.weights(vertex)[i]});
}

void storeEntries(SkinWeights& weights, unsigned vertex, const VertexEntries& entries) {
    // Most vertices have a few weights: their arrays live on the stack.
    constexpr size_t kOnStack = 64;
    SkinWeights::Influence stackInfluences[kOnStack];
    double stackValues[kOnStack];
    std::vector<SkinWeights::Influence> heapInfluences;
    std::vector<double> heapValues;
    SkinWeights::Influence* influences = stackInfluences;
    double* values = stackValues;
    if (entries.size() > kOnStack) {
        heapInfluences.resize(entries.size());
        heapValues.resize(entries.size());
        influences = heapInfluences.data();
        values = heapValues.data();
    }
    for (size_t i = 0; i < entries.size(); ++i) {
        influences[i] = static_cast<SkinWeights::Influence>(entries[i].influence);
        values[i] = entries[i].weight;
    }
    weights.assign(vertex, influences, values, static_cast<unsigned>(entries.size()));
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
