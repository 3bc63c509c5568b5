#include "scene/WeightQuantizing.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace runtime {

long long wholeSteps(double weight, unsigned steps) {
    const double scaled = std::round(weight * steps);
    if (!(scaled >= 0.0 && scaled <= static_cast<double>(steps)))
        return -1;
    const long long count = static_cast<long long>(scaled);
    return static_cast<double>(count) / steps == weight ? count : -1;
}

bool quantizeWeights(VertexEntries& entries, const std::vector<char>& locks, unsigned steps) {
    assert(steps >= 1);
    auto locked = [&](unsigned influence) {
        return influence < locks.size() && locks[influence] != 0;
    };
    long long lockedSteps = 0;
    double unlockedSum = 0.0;
    for (const WeightEntry& entry : entries) {
        if (!locked(entry.influence)) {
            unlockedSum += entry.weight;
            continue;
        }
        const long long count = wholeSteps(entry.weight, steps);
        if (count < 0)
            return false;
        lockedSteps += count;
    }
    const long long left = static_cast<long long>(steps) - lockedSteps;
    if (left < 0 || (left > 0 && !(unlockedSum > 0.0)))
        return false;

    // The unlocked weights' shares of the steps left, whole steps first. Scratch room is kept
    // between calls: this runs once per vertex of large meshes.
    struct Share {
        size_t entry;
        long long count;
        double remainder;
    };
    static thread_local std::vector<Share> shares;
    shares.clear();
    long long given = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (locked(entries[i].influence))
            continue;
        const double exact = left > 0 ? entries[i].weight / unlockedSum * left : 0.0;
        const long long count = std::min(left, static_cast<long long>(std::floor(exact)));
        shares.push_back({i, count, exact - static_cast<double>(count)});
        given += count;
    }
    if (given < left) {
        // The steps left over go to the largest remainders; shares are in influence order, so
        // a stable sort puts the lower influence first among equal remainders.
        std::stable_sort(shares.begin(), shares.end(), [](const Share& a, const Share& b) {
            return a.remainder > b.remainder;
        });
        for (size_t n = 0; given < left; ++n, ++given)
            ++shares[n % shares.size()].count;
    }
    for (const Share& share : shares)
        entries[share.entry].weight = static_cast<double>(share.count) / steps;
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [](const WeightEntry& entry) { return entry.weight == 0.0; }),
                  entries.end());
    return true;
}

} // namespace runtime
