#include "files/GltfWeightSets.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace runtime {

namespace {

std::size_t positiveCount(SparseSkinWeights::Range range) {
    return static_cast<std::size_t>(std::count_if(
        range.begin(), range.end(), [](const SkinWeight& entry) { return entry.weight > 0.0; }));
}

int nearestJoint(const std::array<double, 3>& point,
                 const std::vector<std::array<double, 3>>& joints) {
    int best = 0;
    double bestDistance = INFINITY;
    for (int j = 0; j < static_cast<int>(joints.size()); ++j) {
        double dx = joints[j][0] - point[0], dy = joints[j][1] - point[1],
               dz = joints[j][2] - point[2];
        double distance = dx * dx + dy * dy + dz * dz;
        if (distance < bestDistance) {
            bestDistance = distance;
            best = j;
        }
    }
    return best;
}

// The vertex's positive weights as floats summing to one, largest first.
void normalisedFloats(SparseSkinWeights::Range range, std::vector<std::pair<float, int>>& out) {
    std::vector<SkinWeight> entries;
    double sum = 0.0;
    for (const SkinWeight& entry : range)
        if (entry.weight > 0.0) {
            entries.push_back(entry);
            sum += entry.weight;
        }
    std::sort(entries.begin(), entries.end(), [](const SkinWeight& a, const SkinWeight& b) {
        return a.weight != b.weight ? a.weight > b.weight : a.influence < b.influence;
    });
    out.clear();
    double floatSum = 0.0;
    for (const SkinWeight& entry : entries) {
        float value = static_cast<float>(entry.weight / sum);
        if (value > 0.0f) {
            out.push_back({value, entry.influence});
            floatSum += value;
        }
    }
    if (out.empty())
        return;
    // Rounding leaves a residue of a few units in the last place. Taking it off the smallest
    // weight or adding it to the largest keeps the order.
    const double residue = 1.0 - floatSum;
    if (residue < 0.0 && out.back().first + residue > 0.0)
        out.back().first = static_cast<float>(out.back().first + residue);
    else
        out.front().first = static_cast<float>(out.front().first + residue);
}

} // namespace

int weightSetsNeeded(const SparseSkinWeights& weights, int first, int count) {
    std::size_t most = 1; // an unweighted vertex still gets its nearest joint
    for (int v = first; v < first + count; ++v)
        most = std::max(most, positiveCount(weights.vertex(v)));
    return static_cast<int>((most + 3) / 4);
}

std::vector<std::array<double, 3>> jointBindPositions(const std::vector<Matrix4>& matrices) {
    std::vector<std::array<double, 3>> positions;
    for (const Matrix4& m : matrices) {
        // Solve A p = -t for the affine matrix [A | t]: p is where the joint's origin is.
        const double a = m[0], b = m[4], c = m[8], d = m[1], e = m[5], f = m[9], g = m[2], h = m[6],
                     i = m[10];
        const double det = a * (e * i - f * h) - b * (d * i - f * g) + c * (d * h - e * g);
        if (std::fabs(det) < 1e-12) {
            positions.push_back({0.0, 0.0, 0.0});
            continue;
        }
        const double tx = -m[12], ty = -m[13], tz = -m[14];
        positions.push_back(
            {((e * i - f * h) * tx - (b * i - c * h) * ty + (b * f - c * e) * tz) / det,
             (-(d * i - f * g) * tx + (a * i - c * g) * ty - (a * f - c * d) * tz) / det,
             ((d * h - e * g) * tx - (a * h - b * g) * ty + (a * e - b * d) * tz) / det});
    }
    return positions;
}

WeightSets encodeWeightSets(const SparseSkinWeights& weights, int first, int count, int setCount,
                            const std::vector<std::array<double, 3>>& points,
                            const std::vector<std::array<double, 3>>& joints) {
    assert(setCount >= weightSetsNeeded(weights, first, count));
    WeightSets sets;
    sets.setCount = setCount;
    sets.vertexCount = count;
    const std::size_t slots = static_cast<std::size_t>(setCount) * count * 4;
    sets.joints.assign(slots, 0);
    sets.weights.assign(slots, 0.0f);
    std::vector<std::pair<float, int>> vertexWeights;
    for (int v = 0; v < count; ++v) {
        normalisedFloats(weights.vertex(first + v), vertexWeights);
        if (vertexWeights.empty()) {
            vertexWeights.push_back({1.0f, nearestJoint(points[first + v], joints)});
            ++sets.unweightedVertices;
        }
        for (std::size_t k = 0; k < vertexWeights.size(); ++k) {
            const std::size_t slot = ((k / 4) * count + v) * 4 + k % 4;
            sets.weights[slot] = vertexWeights[k].first;
            sets.joints[slot] = static_cast<std::uint16_t>(vertexWeights[k].second);
        }
    }
    return sets;
}

} // namespace runtime
