#include "scene/WeightLimiting.h"

#include <algorithm>

namespace runtime {

bool limitWeights(VertexEntries& entries, const std::vector<char>& locks, unsigned limit,
                  double threshold) {
    auto locked = [&](unsigned influence) {
        return influence < locks.size() && locks[influence] != 0;
    };
    // Ranks: the largest weight first, the lower influence first among equal ones.
    std::vector<unsigned> order(entries.size());
    for (unsigned i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(), [&](unsigned a, unsigned b) {
        return entries[a].weight != entries[b].weight ? entries[a].weight > entries[b].weight
                                                      : entries[a].influence < entries[b].influence;
    });
    std::vector<char> kept(entries.size(), 0);
    double dropped = 0.0, keptUnlocked = 0.0;
    for (unsigned rank = 0; rank < order.size(); ++rank) {
        const WeightEntry& entry = entries[order[rank]];
        const bool keep = rank < limit && entry.weight >= threshold;
        if (!keep && locked(entry.influence))
            return false;
        kept[order[rank]] = keep;
        if (!keep)
            dropped += entry.weight;
        else if (!locked(entry.influence))
            keptUnlocked += entry.weight;
    }
    if (std::find(kept.begin(), kept.end(), 0) == kept.end())
        return true;
    if (dropped > 0.0 && keptUnlocked <= 0.0)
        return false;
    const double scale = dropped > 0.0 ? (keptUnlocked + dropped) / keptUnlocked : 1.0;
    VertexEntries limited;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (!kept[i])
            continue;
        WeightEntry entry = entries[i];
        if (!locked(entry.influence))
            entry.weight *= scale;
        limited.push_back(entry);
    }
    entries = std::move(limited);
    return true;
}

} // namespace runtime
