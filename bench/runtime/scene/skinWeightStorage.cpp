// bench-skin-weight-storage: the memory a skin cluster's weights take at the size the host
// must handle: 1,000,000 vertices, 128 influences, 8 non-zero weights per vertex. The bound is
// 200 MB. Prints the bytes the storage holds and the growth of the process's resident memory
// while it is built; exits with 1 when either is over the bound.
#include "scene/SkinWeights.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <numeric>
#include <random>
#include <unistd.h>
#include <vector>

namespace {

const unsigned kVertices = 1000000;
const unsigned kInfluences = 128;
const unsigned kWeightsPerVertex = 8;
const double kBoundMegabytes = 200.0;

double residentMegabytes() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1048576.0;
}

} // namespace

int main() {
    std::mt19937 random(1);
    std::vector<runtime::SkinWeights::Influence> all(kInfluences);
    std::iota(all.begin(), all.end(), runtime::SkinWeights::Influence(0));
    std::vector<double> values(kWeightsPerVertex);

    double before = residentMegabytes();
    runtime::SkinWeights weights(kVertices);
    weights.reserveEntries(static_cast<size_t>(kVertices) * kWeightsPerVertex);
    for (unsigned v = 0; v < kVertices; ++v) {
        // Eight different influences near each other, as a real rig gives.
        unsigned first = random() % (kInfluences - kWeightsPerVertex);
        double total = 0.0;
        for (double& value : values)
            total += value = 0.05 + (random() % 1000) / 1000.0;
        for (double& value : values)
            value /= total;
        weights.assign(v, all.data() + first, values.data(), kWeightsPerVertex);
    }
    double grown = residentMegabytes() - before;
    double held = static_cast<double>(weights.memoryBytes()) / 1048576.0;

    std::printf("skin weights: %u vertices, %u influences, %u weights per vertex\n", kVertices,
                kInfluences, kWeightsPerVertex);
    std::printf("  storage holds     %8.1f MB\n", held);
    std::printf("  resident growth   %8.1f MB\n", grown);
    std::printf("  bound             %8.1f MB  %s\n", kBoundMegabytes,
                std::max(held, grown) < kBoundMegabytes ? "(met)" : "(EXCEEDED)");
    return std::max(held, grown) < kBoundMegabytes ? 0 : 1;
}
