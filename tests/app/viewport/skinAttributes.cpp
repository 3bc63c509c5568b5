// The per-vertex skinning attributes the shader reads: the largest weights deform, the heat
// map and the sum check see every weight, and changed vertices are sent as few runs.
#include "SkinAttributes.h"

#include <gtest/gtest.h>

using app::viewport::SkinAttributes;
using app::viewport::VertexRun;

TEST(SkinAttributes, MoreWeightsThanSlotsDeformWithTheLargestButCountAll) {
    runtime::SkinWeights weights(2);
    std::vector<double> dense(12);
    for (unsigned i = 0; i < 12; ++i)
        dense[i] = (i + 1) / 78.0; // 1 + 2 + ... + 12 = 78: the vertex sums to one
    weights.assignDense(0, dense.data(), 12);
    weights.setWeight(1, 3, 0.5); // sums to 0.5
    SkinAttributes attributes;
    attributes.build(weights, 2);
    const auto& vertexSlots = attributes.skinSlots()[0];
    std::vector<unsigned> kept(vertexSlots.influences, vertexSlots.influences + 8);
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(kept, (std::vector<unsigned>{4, 5, 6, 7, 8, 9, 10, 11}));
    EXPECT_FLOAT_EQ(attributes.paint()[0].heat, 3 / 78.0f);
    EXPECT_EQ(attributes.paint()[0].unnormalised, 0.0f);
    EXPECT_EQ(attributes.paint()[1].unnormalised, 1.0f);
    EXPECT_EQ(attributes.paint()[1].heat, 0.0f);
}

TEST(SkinAttributes, ChangedVerticesAreSentAsRunsOnce) {
    runtime::SkinWeights weights(1000);
    SkinAttributes attributes;
    attributes.build(weights, 0);
    EXPECT_TRUE(attributes.takeChanges().allSlots);
    EXPECT_TRUE(attributes.takeChanges().empty());
    weights.setWeight(500, 0, 1.0);
    attributes.updateVertices(weights, {500, 10, 500});
    auto changes = attributes.takeChanges();
    EXPECT_FALSE(changes.allSlots);
    ASSERT_EQ(changes.runs.size(), 2u);
    EXPECT_EQ(changes.runs[0].first, 10u);
    EXPECT_EQ(changes.runs[0].count, 1u);
    EXPECT_EQ(changes.runs[1].first, 500u);
    EXPECT_EQ(changes.runs[1].count, 1u);
    EXPECT_EQ(attributes.paint()[500].heat, 1.0f);

    auto runs = SkinAttributes::runsOf({7, 3, 5, 40, 41}, 2);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].first, 3u);
    EXPECT_EQ(runs[0].count, 5u);
    EXPECT_EQ(runs[1].first, 40u);
    EXPECT_EQ(runs[1].count, 2u);
}
