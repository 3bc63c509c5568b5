// Limiting vertices to a maximum number of influences: the smallest weights go first (the
// leftmost of equal ones), locked rows are refused, and host undo restores every weight.
#include "HFnSkinCluster.h"
#include "OutputRecorder.h"
#include "sceneWeights.h"
#include "windowControls.h"

#include <QLineEdit>
#include <QTableView>
#include <gtest/gtest.h>

namespace {

class MaximumInfluences : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        body = vorel::makeMesh(4, 4, 1);
        vorel::setWeights(body, {{0.5, 0.25, 0.25, 0.0},
                                 {1.0, 0.0, 0.0, 0.0},
                                 {0.4, 0.3, 0.3, 0.0},
                                 {0.1, 0.2, 0.3, 0.4}});
        selectAndLoad("body");
        before = vorel::everyVertexWeights(body);
    }

    fixture::SkinnedMesh body;
    vorel::MeshWeights before;
};

} // namespace

TEST_F(MaximumInfluences, EveryRowLosesItsSmallestWeightsLeftmostFirst) {
    vorel::enter(controls->maxInfluenceEdit, "1");
    clickButton("ApplyInfluence");
    EXPECT_EQ(vorel::everyVertexWeights(body), (vorel::MeshWeights{{1.0, 0.0, 0.0, 0.0},
                                                                   {1.0, 0.0, 0.0, 0.0},
                                                                   {1.0, 0.0, 0.0, 0.0},
                                                                   {0.0, 0.0, 0.0, 1.0}}));
    EXPECT_EQ(cellText(4, 3), "1.000");
    vorel::expectExactUndoRedo(body, before);
}

TEST_F(MaximumInfluences, OnlySelectedVertexRowsAreLimited) {
    vorel::enter(controls->maxInfluenceEdit, "2");
    table->selectRow(0);
    table->setSelectionMode(QAbstractItemView::MultiSelection);
    table->selectRow(3);
    table->selectRow(4);
    clickButton("ApplyInfluence");

    EXPECT_EQ(vorel::weightsOf(body, 0), before[0]);
    const std::vector<double> third = vorel::weightsOf(body, 2);
    EXPECT_NEAR(third[0], 0.4 / 0.7, 1e-12);
    EXPECT_EQ(third[1], 0.0);
    EXPECT_NEAR(third[2], 0.3 / 0.7, 1e-12);
    const std::vector<double> fourth = vorel::weightsOf(body, 3);
    EXPECT_EQ(fourth[0], 0.0);
    EXPECT_EQ(fourth[1], 0.0);
    EXPECT_NEAR(fourth[3], 0.4 / 0.7, 1e-12);
    vorel::expectExactUndoRedo(body, before);
}

TEST_F(MaximumInfluences, LockedRowsAreRefusedAndTheRowAfterOneIsNotChecked) {
    table->setSelectionMode(QAbstractItemView::MultiSelection);
    table->selectRow(3);
    table->selectRow(4);
    clickButton("Lock");
    table->clearSelection();

    OutputRecorder output;
    vorel::enter(controls->maxInfluenceEdit, "1");
    clickButton("ApplyInfluence");
    const std::vector<std::string> refused{
        "This row is locked or has locked cell, and its number of influence can not be changed."};
    EXPECT_EQ(output.texts(HCommandMessage::kInfo), refused);
    EXPECT_EQ(vorel::weightsOf(body, 0), (std::vector<double>{1.0, 0.0, 0.0, 0.0}));
    EXPECT_EQ(vorel::weightsOf(body, 2), before[2]);

    // A locked weight too small to show at the precision refuses its row all the same.
    clickButton("UnLock All");
    vorel::setWeights(body, {{0.04, 0.16, 0.3, 0.5}});
    selectAndLoad("body.vtx[0]");
    vorel::enter(controls->precisionEdit, "0.1");
    ASSERT_EQ(cellText(1, 0), "0.0");
    lockCell({1, 0});
    table->clearSelection();
    output.clear();
    vorel::enter(controls->maxInfluenceEdit, "2");
    clickButton("ApplyInfluence");
    EXPECT_EQ(output.texts(HCommandMessage::kInfo), refused);
    EXPECT_EQ(vorel::weightsOf(body, 0), (std::vector<double>{0.04, 0.16, 0.3, 0.5}));
}

TEST_F(MaximumInfluences, BoxTakesOnlyPositiveIntegers) {
    OutputRecorder output;
    for (const QString text : {"0", "-3", "abc", "12"})
        vorel::enter(controls->maxInfluenceEdit, text);
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>(3, "Can not set maximum influence with this number."));
    // 12 allows every weight of the mesh.
    clickButton("ApplyInfluence");
    EXPECT_EQ(vorel::everyVertexWeights(body), before);
}

TEST_F(MaximumInfluences, RedoTakesOutTheSameInfluencesWhateverTheTableShowsMeanwhile) {
    // At one place 0.32 and 0.31 both show 0.3, where the leftmost would be the smallest.
    vorel::setWeights(body, {{0.32, 0.31, 0.37, 0.0}});
    selectAndLoad("body.vtx[0]");
    vorel::enter(controls->maxInfluenceEdit, "2");
    clickButton("ApplyInfluence");
    const std::vector<double> limited = vorel::weightsOf(body, 0);
    EXPECT_EQ(limited[1], 0.0);
    vorel::enter(controls->precisionEdit, "0.1");
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(vorel::weightsOf(body, 0), (std::vector<double>{0.32, 0.31, 0.37, 0.0}));
    ASSERT_TRUE(vorel::run("redo"));
    EXPECT_EQ(vorel::weightsOf(body, 0), limited);
}

// A joint locked in the host alone (the table shows no lock) keeps its weight through every
// removal; where the other unlocked weights then hold nothing, the host's bind-pose rule takes
// the remainder. Either way the limited weights are, bit for bit, those of the host's own
// normalised writes made one removal after another on a twin of the mesh.
TEST_F(MaximumInfluences, GivesTheWeightsOfOneHostWriteAfterAnother) {
    const std::vector<std::vector<double>> start{
        {0.1, 0.2, 0.3, 0.4}, {0.15, 0.25, 0.05, 0.55}, {0.4, 0.3, 0.3, 0.0}, {0.6, 0.4, 0.0, 0.0}};
    vorel::setWeights(body, start);
    fixture::SkinnedMesh twin = vorel::makeMesh(4, 4, 1, "twin");
    vorel::setWeights(twin, start);
    ASSERT_TRUE(vorel::run("setAttr " + body.joints[3]->name() + ".lockInfluenceWeights 1"));
    ASSERT_TRUE(vorel::run("setAttr " + twin.joints[3]->name() + ".lockInfluenceWeights 1"));
    ASSERT_TRUE(vorel::run("setAttr " + body.joints[0]->name() + ".lockInfluenceWeights 1;" +
                           "setAttr " + twin.joints[0]->name() + ".lockInfluenceWeights 1"));
    selectAndLoad("body");

    // The twin, limited to one weight per vertex by hand: the smallest weight shown goes, then
    // the smallest the vertex holds, each through the host's normalised write.
    HFnSkinCluster cluster(twin.clusterObject());
    for (int vertex = 0; vertex < 4; ++vertex) {
        std::vector<double> weights = vorel::weightsOf(twin, vertex);
        int positive = 0;
        for (double weight : weights)
            positive += weight > 0.0;
        for (int round = 0; round < positive - 1; ++round) {
            size_t smallest = weights.size();
            for (size_t k = 0; k < weights.size(); ++k)
                if (weights[k] > 0.0 &&
                    (smallest == weights.size() || weights[k] < weights[smallest]))
                    smallest = k;
            ASSERT_TRUE(cluster.setWeights(twin.shapePath(), fixture::vertexComponent({vertex}),
                                           static_cast<unsigned>(smallest), 0.0));
            weights = vorel::weightsOf(twin, vertex);
        }
    }

    vorel::enter(controls->maxInfluenceEdit, "1");
    clickButton("ApplyInfluence");
    EXPECT_EQ(vorel::everyVertexWeights(body), vorel::everyVertexWeights(twin));
    // The last vertex's remainder went to a joint the vertex did not hold.
    const std::vector<double> last = vorel::weightsOf(body, 3);
    EXPECT_EQ(last[0], 0.6);
    EXPECT_EQ(last[1], 0.0);
    EXPECT_NEAR(last[2] + last[3], 0.4, 1e-15);
    vorel::expectExactUndoRedo(body, vorel::MeshWeights(start.begin(), start.end()));
}
