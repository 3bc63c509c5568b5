#include "scene/WeightMirroring.h"

#include <algorithm>
#include <unordered_map>

namespace runtime {

namespace {

unsigned counterpartOf(unsigned influence, const std::vector<unsigned>& counterparts) {
    return influence < counterparts.size() ? counterparts[influence] : influence;
}

void sortByInfluence(VertexEntries& entries) {
    std::sort(entries.begin(), entries.end(),
              [](const WeightEntry& a, const WeightEntry& b) { return a.influence < b.influence; });
}

// The name with one occurrence of `from` replaced by `to`, for each occurrence in turn, until
// `found` accepts one; -1 when none is accepted.
template <typename Found>
long long replacedName(const std::string& name, const std::string& from, const std::string& to,
                       const Found& found) {
    if (from.empty())
        return -1;
    for (size_t at = name.find(from); at != std::string::npos; at = name.find(from, at + 1)) {
        std::string candidate = name;
        candidate.replace(at, from.size(), to);
        long long index = found(candidate);
        if (index >= 0)
            return index;
    }
    return -1;
}

} // namespace

const std::vector<SideNames>& defaultSideNames() {
    static const std::vector<SideNames> kDefaults = {
        {"Left", "Right"}, {"left", "right"}, {"_L", "_R"}, {"_l", "_r"},
        {"L_", "R_"},      {"l_", "r_"},      {".L", ".R"}, {".l", ".r"},
    };
    return kDefaults;
}

std::vector<unsigned> counterpartInfluences(const std::vector<std::string>& names,
                                            const std::vector<SideNames>& sides) {
    std::unordered_map<std::string, unsigned> byName;
    for (unsigned i = 0; i < names.size(); ++i)
        byName.emplace(names[i], i);
    std::vector<unsigned> counterparts(names.size());
    std::vector<char> paired(names.size(), 0);
    for (unsigned i = 0; i < names.size(); ++i)
        counterparts[i] = i;
    for (unsigned i = 0; i < names.size(); ++i) {
        if (paired[i])
            continue;
        auto unpaired = [&](const std::string& candidate) -> long long {
            auto it = byName.find(candidate);
            if (it == byName.end() || it->second == i || paired[it->second])
                return -1;
            return static_cast<long long>(it->second);
        };
        long long other = -1;
        for (size_t s = 0; other < 0 && s < sides.size(); ++s) {
            other = replacedName(names[i], sides[s].first, sides[s].second, unpaired);
            if (other < 0)
                other = replacedName(names[i], sides[s].second, sides[s].first, unpaired);
        }
        if (other < 0)
            continue;
        const unsigned j = static_cast<unsigned>(other);
        counterparts[i] = j;
        counterparts[j] = i;
        paired[i] = paired[j] = 1;
    }
    return counterparts;
}

VertexEntries mirroredWeights(const VertexEntries& entries,
                              const std::vector<unsigned>& counterparts) {
    VertexEntries mirrored;
    for (const WeightEntry& entry : entries)
        mirrored.push_back({counterpartOf(entry.influence, counterparts), entry.weight});
    sortByInfluence(mirrored);
    return mirrored;
}

VertexEntries symmetricWeights(const VertexEntries& entries,
                               const std::vector<unsigned>& counterparts) {
    VertexEntries both = entries;
    for (const WeightEntry& entry : entries)
        both.push_back({counterpartOf(entry.influence, counterparts), entry.weight});
    sortByInfluence(both);
    VertexEntries mean;
    for (const WeightEntry& entry : both) {
        if (!mean.empty() && mean.back().influence == entry.influence)
            mean.back().weight += entry.weight;
        else
            mean.push_back(entry);
    }
    for (WeightEntry& entry : mean)
        entry.weight *= 0.5;
    return mean;
}

} // namespace runtime
