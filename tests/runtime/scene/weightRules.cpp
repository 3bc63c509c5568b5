// The pipeline's rules for one vertex's weights: limiting, quantizing and mirroring, and the
// nearest-point search that matches vertices by position.
#include "scene/NearestPoints.h"
#include "scene/WeightLimiting.h"
#include "scene/WeightMirroring.h"
#include "scene/WeightQuantizing.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <tuple>

namespace {

using runtime::VertexEntries;

std::vector<double> weightsOf(const VertexEntries& entries, unsigned influenceCount) {
    std::vector<double> dense(influenceCount, 0.0);
    for (const runtime::WeightEntry& entry : entries)
        dense[entry.influence] = entry.weight;
    return dense;
}

VertexEntries entriesOf(const std::vector<double>& dense) {
    VertexEntries entries;
    for (unsigned i = 0; i < dense.size(); ++i)
        if (dense[i] != 0.0)
            entries.push_back({i, dense[i]});
    return entries;
}

void expectNear(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-15) << "influence " << i;
}

double sumOf(const VertexEntries& entries) {
    double sum = 0.0;
    for (const runtime::WeightEntry& entry : entries)
        sum += entry.weight;
    return sum;
}

// Random normalised weights on up to 10 of 12 influences, some of them equal.
VertexEntries randomEntries(std::mt19937& random) {
    std::vector<double> dense(12, 0.0);
    const unsigned count = 1 + random() % 10;
    for (unsigned n = 0; n < count; ++n)
        dense[random() % 12] =
            random() % 4 == 0 ? 0.125 : std::uniform_real_distribution<>(0.01, 1)(random);
    double sum = 0.0;
    for (double weight : dense)
        sum += weight;
    for (double& weight : dense)
        weight /= sum;
    return entriesOf(dense);
}

std::vector<char> randomLocks(std::mt19937& random) {
    std::vector<char> locks(12, 0);
    for (char& lock : locks)
        lock = random() % 5 == 0;
    return locks;
}

} // namespace

TEST(WeightLimiting, KeepsTheLargestWeightsAndGivesTheRestToTheUnlockedOnes) {
    VertexEntries entries = entriesOf({0.1, 0.4, 0.1, 0.4});
    ASSERT_TRUE(runtime::limitWeights(entries, {}, 3, 0.0));
    expectNear(weightsOf(entries, 4), {0.1 / 0.9, 0.4 / 0.9, 0, 0.4 / 0.9});
    entries = entriesOf({0.1, 0.4, 0.1, 0.4});
    ASSERT_TRUE(runtime::limitWeights(entries, {1, 0, 0, 0}, 3, 0.0));
    expectNear(weightsOf(entries, 4), {0.1, 0.45, 0, 0.45});
    EXPECT_EQ(entries[0].weight, 0.1) << "a locked weight keeps every bit";
    entries = entriesOf({0.1, 0.4, 0.2, 0.3});
    ASSERT_TRUE(runtime::limitWeights(entries, {}, 4, 0.25));
    expectNear(weightsOf(entries, 4), {0, 0.4 / 0.7, 0, 0.3 / 0.7});
}

TEST(WeightLimiting, RefusesWhatWouldChangeALockedWeight) {
    const VertexEntries start = entriesOf({0.1, 0.4, 0.2, 0.3});
    for (const auto& [locks, limit, threshold] :
         {std::tuple<std::vector<char>, unsigned, double>{{1, 0, 0, 0}, 3, 0.0},
          {{0, 0, 1, 0}, 4, 0.25},
          {{0, 1, 0, 1}, 2, 0.0},
          {{}, 4, 0.5}}) {
        VertexEntries entries = start;
        EXPECT_FALSE(runtime::limitWeights(entries, locks, limit, threshold));
        EXPECT_EQ(weightsOf(entries, 4), weightsOf(start, 4));
    }
}

TEST(WeightLimiting, RandomVerticesKeepTheirInvariants) {
    std::mt19937 random(16);
    unsigned refused = 0;
    for (int round = 0; round < 2000; ++round) {
        const VertexEntries start = randomEntries(random);
        const std::vector<char> locks = randomLocks(random);
        const unsigned limit = 1 + random() % 6;
        const double threshold = random() % 3 == 0 ? 0.05 : 0.0;
        VertexEntries entries = start;
        if (!runtime::limitWeights(entries, locks, limit, threshold)) {
            ++refused;
            EXPECT_EQ(weightsOf(entries, 12), weightsOf(start, 12));
            continue;
        }
        EXPECT_LE(entries.size(), limit);
        EXPECT_NEAR(sumOf(entries), 1.0, 1e-12);
        const std::vector<double> before = weightsOf(start, 12), after = weightsOf(entries, 12);
        for (unsigned i = 0; i < 12; ++i) {
            if (locks[i]) {
                EXPECT_EQ(after[i], before[i]);
            }
            if (after[i] != 0.0) {
                EXPECT_GE(before[i], threshold);
            }
        }
    }
    EXPECT_GT(refused, 0u);
    EXPECT_LT(refused, 2000u);
}

TEST(WeightQuantizing, GivesWholeStepsByLargestRemainder) {
    VertexEntries entries = entriesOf({0.5, 0.25, 0.25});
    ASSERT_TRUE(runtime::quantizeWeights(entries, {}, 2));
    EXPECT_EQ(weightsOf(entries, 3), (std::vector<double>{0.5, 0.5, 0}))
        << "of equal remainders the lower influence takes the step";
    entries = entriesOf({0.5, 0.25, 0.25});
    ASSERT_TRUE(runtime::quantizeWeights(entries, {}, 3));
    EXPECT_EQ(weightsOf(entries, 3), (std::vector<double>{1.0 / 3, 1.0 / 3, 1.0 / 3}));
    entries = entriesOf({0.5, 0.25, 0.25});
    ASSERT_TRUE(runtime::quantizeWeights(entries, {0, 0, 1}, 4));
    EXPECT_EQ(weightsOf(entries, 3), (std::vector<double>{0.5, 0.25, 0.25}));
    entries = entriesOf({0.3, 0.3});
    ASSERT_TRUE(runtime::quantizeWeights(entries, {}, 255));
    EXPECT_EQ(weightsOf(entries, 2), (std::vector<double>{128.0 / 255, 127.0 / 255}))
        << "a vertex that does not sum to one is normalised";
    for (const auto& [dense, locks] :
         {std::pair<std::vector<double>, std::vector<char>>{{0.3, 0.7}, {1, 0}},
          {{0.5, 0.5}, {1, 1}},
          {{}, {}}}) {
        entries = entriesOf(dense);
        const bool wholeSteps = dense == std::vector<double>{0.5, 0.5};
        EXPECT_EQ(runtime::quantizeWeights(entries, locks, 4), wholeSteps)
            << "locked weights must be whole steps, and something must take the steps";
        EXPECT_EQ(weightsOf(entries, 2), weightsOf(entriesOf(dense), 2));
    }
}

TEST(WeightQuantizing, RandomVerticesKeepTheirInvariants) {
    std::mt19937 random(255);
    for (int round = 0; round < 2000; ++round) {
        const unsigned steps = round % 2 ? 255 : 65535;
        VertexEntries start = randomEntries(random);
        std::vector<char> locks = randomLocks(random);
        // Locked weights that are whole steps already, as after an earlier quantize.
        for (runtime::WeightEntry& entry : start)
            if (locks[entry.influence])
                entry.weight = std::floor(entry.weight * steps / 2) / steps;
        start.erase(std::remove_if(start.begin(), start.end(),
                                   [](const runtime::WeightEntry& e) { return e.weight == 0; }),
                    start.end());
        VertexEntries entries = start;
        const bool anyUnlocked =
            std::any_of(start.begin(), start.end(),
                        [&](const runtime::WeightEntry& e) { return !locks[e.influence]; });
        ASSERT_EQ(runtime::quantizeWeights(entries, locks, steps), anyUnlocked);
        if (!anyUnlocked)
            continue;
        long long total = 0;
        for (const runtime::WeightEntry& entry : entries) {
            const long long count = runtime::wholeSteps(entry.weight, steps);
            ASSERT_GT(count, 0) << entry.weight;
            total += count;
        }
        EXPECT_EQ(total, steps);
        const std::vector<double> before = weightsOf(start, 12), after = weightsOf(entries, 12);
        for (unsigned i = 0; i < 12; ++i) {
            if (locks[i]) {
                EXPECT_EQ(after[i], before[i]);
            }
        }
        VertexEntries again = entries;
        ASSERT_TRUE(runtime::quantizeWeights(again, locks, steps));
        EXPECT_EQ(weightsOf(again, 12), after) << "quantized weights stay as they are";
    }
}

TEST(WeightMirroring, PairsJointsBySideNames) {
    const std::vector<std::string> names = {
        "root",  "LeftArm", "RightArm", "leftLeg", "rightLeg",   "hand_L",     "hand_R",
        "eye_l", "eye_r",   "L_foot",   "R_foot",  "l_toe",      "r_toe",      "ear.L",
        "ear.R", "tip.l",   "tip.r",    "solo_L",  "Left_arm_L", "Right_arm_L"};
    const std::vector<unsigned> counterparts =
        runtime::counterpartInfluences(names, runtime::defaultSideNames());
    const std::vector<unsigned> expected = {0, 2,  1,  4,  3,  6,  5,  8,  7,  10,
                                            9, 12, 11, 14, 13, 16, 15, 17, 19, 18};
    EXPECT_EQ(counterparts, expected);
    const std::vector<runtime::SideNames> sides = {runtime::SideNames{"_x", "_y"}};
    EXPECT_EQ(runtime::counterpartInfluences({"a_x", "a_y", "b_y"}, sides),
              (std::vector<unsigned>{1, 0, 2}));
}

TEST(WeightMirroring, SwapsAndAveragesSymmetrically) {
    const std::vector<unsigned> counterparts = {0, 2, 1};
    const VertexEntries entries = entriesOf({0.25, 0.625, 0.125});
    EXPECT_EQ(weightsOf(runtime::mirroredWeights(entries, counterparts), 3),
              (std::vector<double>{0.25, 0.125, 0.625}));
    const VertexEntries mean = runtime::symmetricWeights(entries, counterparts);
    EXPECT_EQ(weightsOf(mean, 3), (std::vector<double>{0.25, 0.375, 0.375}));
    EXPECT_EQ(weightsOf(runtime::symmetricWeights(mean, counterparts), 3), weightsOf(mean, 3));
}

TEST(NearestPoints, FindsTheNearestAndTheLowerIndexOfEquallyNearOnes) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> coordinate(-4, 4);
    std::vector<HPoint> points;
    for (int i = 0; i < 500; ++i)
        points.push_back(
            {coordinate(random) * 0.5, coordinate(random) * 0.5, coordinate(random) * 0.5});
    const runtime::NearestPoints nearest(points);
    for (int query = 0; query < 500; ++query) {
        const HPoint place(coordinate(random) * 0.25, coordinate(random) * 0.25,
                           coordinate(random) * 0.25);
        unsigned best = 0;
        auto distance = [&](unsigned i) {
            const double dx = points[i].x - place.x, dy = points[i].y - place.y,
                         dz = points[i].z - place.z;
            return dx * dx + dy * dy + dz * dz;
        };
        for (unsigned i = 1; i < points.size(); ++i)
            if (distance(i) < distance(best))
                best = i;
        EXPECT_EQ(nearest.nearest(place), best)
            << "at " << place.x << " " << place.y << " " << place.z;
    }
}
