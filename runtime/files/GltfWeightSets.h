// Encoding a skin's weights as glTF JOINTS_n / WEIGHTS_n sets.
//
// Each vertex gets its positive weights, largest first (equal weights: lower influence first),
// divided by their sum and rounded to float so that they sum to one within float precision,
// four to a set; slots past the vertex's last weight hold joint 0 with weight 0. A vertex
// without any positive weight would collapse in every viewer, so it is given wholly to the joint
// nearest to it in the bind pose, and counted.
#pragma once

#include "files/SceneDescription.h"

#include <array>
#include <cstdint>
#include <vector>

namespace runtime {

struct WeightSets {
    int setCount = 0;
    int vertexCount = 0;
    // Set s, vertex v, slot c at [(s * vertexCount + v) * 4 + c].
    std::vector<std::uint16_t> joints;
    std::vector<float> weights;
    // Vertices that had no positive weight and went to their nearest joint.
    int unweightedVertices = 0;
};

// The sets vertices [first, first + count) need: a quarter of the most weights any of them has.
int weightSetsNeeded(const SparseSkinWeights& weights, int first, int count);

// Where each joint sits in the mesh's space when bound: the origin carried through the inverse
// of its inverse bind matrix (the origin of the mesh for a matrix that cannot be inverted).
std::vector<std::array<double, 3>>
jointBindPositions(const std::vector<Matrix4>& inverseBindMatrices);

// Encodes vertices [first, first + count) in `setCount` sets (at least weightSetsNeeded()).
// `points` are the mesh's points, `joints` the positions from jointBindPositions().
WeightSets encodeWeightSets(const SparseSkinWeights& weights, int first, int count, int setCount,
                            const std::vector<std::array<double, 3>>& points,
                            const std::vector<std::array<double, 3>>& joints);

} // namespace runtime
