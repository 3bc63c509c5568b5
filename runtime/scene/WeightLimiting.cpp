#include "scene/WeightLimiting.h"

#include <algorithm>

namespace runtime {

bool limitWeights(VertexEntries& entries, const std::vector<char>& locks, unsigned limit,
                  double threshold) {
    auto locked = [&](unsigned influence) {
        return influence < locks.size() && locks[influence] != 0;
    };
    auto kept = [&](const WeightEntry& entry, size_t rank) {
        return rank < limit && entry.weight >= threshold;
    };
    if (entries.size() <= limit &&
        std::all_of(entries.begin(), entries.end(),
                    [&](const WeightEntry& e) { return e.weight >= threshold; }))
        return true;
    // Ranks: the largest weight first, the lower influence first among equal ones. Scratch
    // room is kept between calls: this runs once per vertex of large meshes.
    static thread_local VertexEntries ranked;
    ranked = entries;
    std::sort(ranked.begin(), ranked.end(), [](const WeightEntry& a, const WeightEntry& b) {
        return a.weight != b.weight ? a.weight > b.weight : a.influence < b.influence;
    });
    double dropped = 0.0, keptUnlocked = 0.0;
    for (size_t rank = 0; rank < ranked.size(); ++rank) {
        const WeightEntry& entry = ranked[rank];
        if (!kept(entry, rank) && locked(entry.influence))
            return false;
        if (!kept(entry, rank))
            dropped += entry.weight;
        else if (!locked(entry.influence))
            keptUnlocked += entry.weight;
    }
    if (dropped > 0.0 && keptUnlocked <= 0.0)
        return false;
    const double scale = dropped > 0.0 ? (keptUnlocked + dropped) / keptUnlocked : 1.0;
    ranked.resize(std::min<size_t>(limit, ranked.size()));
    while (!ranked.empty() && ranked.back().weight < threshold)
        ranked.pop_back();
    for (WeightEntry& entry : ranked)
        if (!locked(entry.influence))
            entry.weight *= scale;
    std::sort(ranked.begin(), ranked.end(),
              [](const WeightEntry& a, const WeightEntry& b) { return a.influence < b.influence; });
    entries.assign(ranked.begin(), ranked.end());
    return true;
}

} // namespace runtime
