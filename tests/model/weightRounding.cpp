// Rounding one row for display: which weight takes the remainder after an edit (not the
// edited one, not a locked one; equal weights resolve to their leftmost column), where it goes
// when it would fall below zero, and the one-pass fill the rebuild uses, which must give
// exactly what the separate steps give.
#include "weightRounding.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace {

using weightRounding::Correction;

WeightRow vertexRow(std::initializer_list<double> weights) {
    WeightRow row{0.0};
    for (double weight : weights)
        row.append(weight);
    return row;
}

std::vector<double> weightsOf(const WeightRow& row) {
    return std::vector<double>(row.begin() + 1, row.end());
}

// Rounds to three places and corrects as after an edit of `edited`, with `locked` columns.
std::vector<double> afterEdit(std::initializer_list<double> weights, int edited,
                              std::vector<int> locked = {}) {
    WeightRow row = vertexRow(weights);
    weightRounding::roundPositiveWeights(row, 3);
    EXPECT_EQ(weightRounding::absorbIntoFreeWeight(
                  row, edited,
                  [&](int column) {
                      return std::find(locked.begin(), locked.end(), column) != locked.end();
                  }),
              Correction::kDone);
    return weightsOf(row);
}

} // namespace

TEST(EditedRowRounding, FirstWeightThatIsNeitherEditedNorLockedTakesTheRemainder) {
    std::vector<double> row = afterEdit({0.5004, 0.3004, 0.1992}, 0);
    EXPECT_EQ(row[0], 0.5);
    EXPECT_DOUBLE_EQ(row[1], 0.301);
    EXPECT_EQ(row[2], 0.199);

    row = afterEdit({0.5004, 0.3004, 0.1992}, 0, {1});
    EXPECT_EQ(row[1], 0.3);
    EXPECT_DOUBLE_EQ(row[2], 0.2);

    // Every candidate excluded: the first positive weight takes it, edited or not.
    row = afterEdit({0.5004, 0.3004, 0.1992}, 0, {1, 2});
    EXPECT_DOUBLE_EQ(row[0], 0.501);
}

TEST(EditedRowRounding, EqualWeightsResolveToTheLeftmostColumn) {
    const std::vector<double> row = afterEdit({0.33333, 0.33333, 0.33334}, 0);
    EXPECT_DOUBLE_EQ(row[0], 0.334);
    EXPECT_EQ(row[1], 0.333);
    EXPECT_EQ(row[2], 0.333);
}

TEST(EditedRowRounding, SingleWeightIsNotCorrected) {
    EXPECT_EQ(afterEdit({0.5, 0.0}, 1), (std::vector<double>{0.5, 0.0}));
}

TEST(EditedRowRounding, RowWithoutWeightColumnsIsTooShort) {
    WeightRow row{0.0};
    EXPECT_EQ(weightRounding::absorbIntoFreeWeight(row, 0, [](int) { return false; }),
              Correction::kTooShort);
}

TEST(LoadedRowRounding, OnlyRowsOffByNoMoreThanRoundingAreCorrected) {
    const double tolerance = weightRounding::lastWeightTolerance(3);
    EXPECT_DOUBLE_EQ(tolerance, 0.0011);
    WeightRow off = vertexRow({0.4, 0.5989});
    EXPECT_EQ(weightRounding::absorbIntoLastWeight(off, tolerance), Correction::kDone);
    EXPECT_EQ(off.last(), 0.5989);
    WeightRow close = vertexRow({0.4, 0.5992});
    weightRounding::absorbIntoLastWeight(close, tolerance);
    EXPECT_EQ(close.last(), 1.0 - 0.4);
    WeightRow empty = vertexRow({0.0, weightRows::kMissingInfluence});
    EXPECT_EQ(weightRounding::absorbIntoLastWeight(empty, tolerance),
              Correction::kNoPositiveWeight);
}

TEST(LoadedRowRounding, OnePassFillEqualsTheSeparateSteps) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> weight(0.0, 0.3);
    const double tolerance = weightRounding::lastWeightTolerance(3);
    for (int trial = 0; trial < 2000; ++trial) {
        std::vector<double> weights(12, 0.0);
        for (int k = 0; k < 12; ++k)
            if (random() % 3 == 0)
                weights[k] = trial % 7 == 0 ? 0.0001 : weight(random);
        const std::vector<int> elementOf{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};

        WeightRow separate(13, 0.0);
        for (int k = 0; k < 12; ++k)
            separate[elementOf[k]] = weights[k];
        weightRounding::roundPositiveWeights(separate, 3);
        const Correction expected = weightRounding::absorbIntoLastWeight(separate, tolerance);

        WeightRow onePass(13, 0.0);
        const Correction got =
            weightRounding::fillRoundedRow(onePass.data(), onePass.size(), elementOf.data(),
                                           weights.data(), 12, 3, tolerance, true);
        ASSERT_EQ(got, expected) << trial;
        ASSERT_EQ(onePass, separate) << trial;
    }
}

TEST(RemainderRounding, ARemainderBelowZeroGoesToTheLargestUnlockedWeight) {
    const auto give = [](WeightRow row, int position, std::vector<int> locked) {
        double others = 0.0;
        for (int i = 1; i < row.size(); ++i)
            if (i != position && row[i] > 0.0)
                others += row[i];
        weightRounding::giveRemainder(row.data(), row.size(), position, others, [&](int column) {
            return std::find(locked.begin(), locked.end(), column) != locked.end();
        });
        return weightsOf(row);
    };
    // 0.4 + 0.4 + 0.3 would leave the last weight -0.1: the leftmost largest one takes it.
    std::vector<double> row = give(vertexRow({0.4, 0.4, 0.3, 0.1}), 4, {});
    EXPECT_NEAR(row[0], 0.2, 1e-15);
    EXPECT_EQ(row[1], 0.4);
    EXPECT_EQ(row[3], 0.1);
    // A locked weight gives nothing while an unlocked one can.
    row = give(vertexRow({0.4, 0.4, 0.3, 0.1}), 4, {0});
    EXPECT_EQ(row[0], 0.4);
    EXPECT_NEAR(row[1], 0.2, 1e-15);
    // More than the largest weight holds: it goes to zero and the next one gives the rest.
    row = give(vertexRow({0.2, 0.2, 0.2, 0.2, 0.2, 0.2, 0.1}), 7, {});
    EXPECT_EQ(row[0], 0.0);
    EXPECT_NEAR(row[1], 0.1, 1e-15);
    EXPECT_NEAR(std::accumulate(row.begin(), row.end(), 0.0), 1.0, 1e-15);
    // A row its unlocked weights cannot bring to one (a vertex far from normalised) stays as
    // rounded, locked weights untouched.
    row = give(vertexRow({0.2, 0.2, 0.9}), 2, {2});
    EXPECT_EQ(row, (std::vector<double>{0.2, 0.2, 0.9}));
    // A remainder of zero or more stays where it belongs.
    row = give(vertexRow({0.5, 0.3, 0.1}), 3, {});
    EXPECT_NEAR(row[2], 0.2, 1e-15);
}
