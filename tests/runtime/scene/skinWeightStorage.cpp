#include "scene/SkinWeights.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

using runtime::SkinWeights;

namespace {

std::vector<double> denseOf(const SkinWeights& weights, unsigned vertex, unsigned influences) {
    std::vector<double> dense(influences);
    weights.readDense(vertex, dense.data(), influences);
    return dense;
}

} // namespace

TEST(SkinWeightStorage, KeepsExactDoublesAndOnlyNonZeroWeights) {
    SkinWeights weights(3);
    const double third = 1.0 / 3.0;
    weights.setWeight(1, 7, third);
    weights.setWeight(1, 2, 0.1 + 0.2);
    weights.setWeight(1, 5, 0.0);
    EXPECT_EQ(weights.entryCount(1), 2u);
    EXPECT_EQ(weights.weight(1, 7), third);
    EXPECT_EQ(weights.weight(1, 2), 0.1 + 0.2);
    EXPECT_EQ(weights.influences(1)[0], 2u);
    weights.setWeight(1, 7, 0.0);
    EXPECT_EQ(weights.entryCount(1), 1u);
    EXPECT_EQ(weights.entryCount(0), 0u);
    EXPECT_EQ(denseOf(weights, 1, 4), (std::vector<double>{0.0, 0.0, 0.1 + 0.2, 0.0}));
}

// Random edits of every kind against a plain dense table: whatever blocks move or get reused
// and however often the pools are compacted, every vertex must read what was written.
TEST(SkinWeightStorage, MatchesADenseTableThroughRandomEdits) {
    const unsigned vertices = 300, influences = 24;
    SkinWeights weights(vertices);
    std::vector<std::vector<double>> reference(vertices, std::vector<double>(influences, 0.0));
    std::mt19937 random(7);
    std::uniform_int_distribution<unsigned> anyVertex(0, vertices - 1),
        anyInfluence(0, influences - 1);
    std::uniform_real_distribution<double> anyWeight(0.0, 1.0);
    for (int step = 0; step < 40000; ++step) {
        unsigned v = anyVertex(random);
        switch (random() % 4) {
        case 0:
        case 1: {
            unsigned k = anyInfluence(random);
            double value = random() % 3 == 0 ? 0.0 : anyWeight(random);
            weights.setWeight(v, k, value);
            reference[v][k] = value;
            break;
        }
        case 2: {
            std::vector<double> dense(influences, 0.0);
            for (unsigned k = 0; k < influences; ++k)
                if (random() % 4 == 0)
                    dense[k] = anyWeight(random);
            weights.assignDense(v, dense.data(), influences);
            reference[v] = dense;
            break;
        }
        default: {
            std::vector<SkinWeights::Influence> ids = {
                static_cast<SkinWeights::Influence>(anyInfluence(random))};
            std::vector<double> values = {anyWeight(random)};
            weights.assign(v, ids.data(), values.data(), 1);
            reference[v].assign(influences, 0.0);
            reference[v][ids[0]] = values[0];
            break;
        }
        }
    }
    size_t nonZero = 0;
    for (unsigned v = 0; v < vertices; ++v) {
        ASSERT_EQ(denseOf(weights, v, influences), reference[v]) << "vertex " << v;
        for (double w : reference[v])
            nonZero += w != 0.0;
    }
    EXPECT_EQ(weights.entryTotal(), nonZero);
    SkinWeights packed = weights;
    packed.compact();
    EXPECT_EQ(packed, weights);
    EXPECT_LE(packed.memoryBytes(), weights.memoryBytes());
}

TEST(SkinWeightStorage, ShrinkingTheVertexCountDropsTheirWeights) {
    SkinWeights weights(4);
    weights.setWeight(3, 1, 0.5);
    weights.setVertexCount(2);
    weights.setVertexCount(4);
    EXPECT_EQ(weights.entryCount(3), 0u);
    EXPECT_EQ(weights.entryTotal(), 0u);
}
