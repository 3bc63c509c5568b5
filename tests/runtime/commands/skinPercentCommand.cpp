// skinPercent: reading weights in influence order, normalising writes around locked
// influences, pruning and normalising, its errors, and exact undo.
#include "OutputRecorder.h"
#include "commandTesting.h"

using commandtest::expectStripWeights;
using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::Texts;

namespace {

const auto& kStart = commandtest::kStripStart;

class SkinPercent : public commandtest::WeightedStripTest {
protected:
    std::vector<double> values(const std::string& command) {
        HDoubleArray result;
        EXPECT_TRUE(HGlobal::executeCommand(HString(command), result)) << command;
        return std::vector<double>(result.begin(), result.end());
    }
};

} // namespace

TEST_F(SkinPercent, QueriesGiveWeightsVertexAfterVertexInInfluenceOrder) {
    EXPECT_EQ(values("skinPercent -q -v cluster1 body.vtx[3]"), (std::vector<double>{0.6, 0, 0.4}));
    EXPECT_EQ(values("skinPercent -q -v cluster1 body.vtx[4] body.vtx[0]"),
              (std::vector<double>{0.2, 0.6, 0.2, 1, 0, 0}));
    EXPECT_EQ(values("skinPercent -q -v -t a -t c cluster1 body.vtx[3:4]"),
              (std::vector<double>{0.6, 0.4, 0.2, 0.2}));
    EXPECT_EQ(values("skinPercent -q -v body body").size(), 18u);
    double weight = 0.0;
    ASSERT_TRUE(
        HGlobal::executeCommand("skinPercent -q -value -transform c cluster1 body.vtx[5]", weight));
    EXPECT_EQ(weight, 0.5);
    ASSERT_TRUE(run("select -r body.vtx[2]"));
    EXPECT_EQ(values("skinPercent -q -v cluster1"), (std::vector<double>{0, 1, 0}));
}

TEST_F(SkinPercent, ASetWeightSpreadsTheRestOverUnlockedInfluences) {
    ASSERT_TRUE(run("skinPercent -t a -tv 0.7 cluster1 body.vtx[4]"));
    expectStripWeights(4, {0.7, 0.6 * 0.3 / 0.8, 0.2 * 0.3 / 0.8});
    ASSERT_TRUE(run("undo; setAttr c.liw 1; skinPercent -t a -tv 0.7 cluster1 body.vtx[4]"));
    expectStripWeights(4, {0.7, 0.1, 0.2});
    ASSERT_TRUE(run("skinPercent -t a -tv 0.9 cluster1 body.vtx[4]"));
    expectStripWeights(4, {0.8, 0.0, 0.2});
}

TEST_F(SkinPercent, SeveralInfluencesAndUnnormalisedWrites) {
    ASSERT_TRUE(run("skinPercent -t a -tv 0.5 -t b -tv 0.1 cluster1 body.vtx[4] body.vtx[3]"));
    expectStripWeights(4, {0.5, 0.1, 0.4});
    expectStripWeights(3, {0.5, 0.1, 0.4});
    ASSERT_TRUE(run("skinPercent -t a -tv 0.7 -normalize false cluster1 body.vtx[1]"));
    expectStripWeights(1, {0.7, 0.5, 0.0});
    ASSERT_TRUE(run("skinPercent -normalize true cluster1 body.vtx[1]"));
    expectStripWeights(1, {0.7 / 1.2, 0.5 / 1.2, 0.0});
}

TEST_F(SkinPercent, PruningRemovesSmallUnlockedWeights) {
    ASSERT_TRUE(run("skinPercent -pruneWeights 0.25 cluster1 body.vtx[4] body.vtx[1]"));
    expectStripWeights(4, {0.0, 1.0, 0.0});
    expectStripWeights(1, kStart[1]);
    ASSERT_TRUE(run("undo; setAttr c.liw 1; skinPercent -prw 0.25 cluster1 body.vtx[4]"));
    expectStripWeights(4, {0.0, 0.8, 0.2});
    ASSERT_TRUE(run("undo; undo; setAttr cluster1.normalizeWeights 0;"
                    "skinPercent -prw 0.3 body body"));
    expectStripWeights(3, {0.6, 0.0, 0.4});
    expectStripWeights(4, {0.0, 0.6, 0.0});
}

TEST_F(SkinPercent, LockedVerticesAreLeftAlone) {
    ASSERT_TRUE(
        run("setAttr cluster1.lockVertex[4] 1;"
            "skinPercent -t a -tv 1 cluster1 body.vtx[4]; skinPercent -prw 0.3 body body.vtx[4]"));
    expectStripWeights(4, kStart[4]);
}

TEST_F(SkinPercent, FailuresNameTheCommandAndTheProblem) {
    ASSERT_TRUE(run("polyCube -n box; select -cl"));
    std::vector<std::string> before = commandtest::sceneState();
    OutputRecorder output;
    const char* const commands[] = {
        "skinPercent",
        "skinPercent -q -v cluster1",
        "skinPercent -q cluster1 body.vtx[0]",
        "skinPercent -q -v cluster1 box.vtx[0]",
        "skinPercent -q -v cluster1 body.vtx[6]",
        "skinPercent -t body -tv 1 cluster1 body.vtx[0]",
        "skinPercent -t a cluster1 body.vtx[0]",
        "skinPercent -prw -0.1 cluster1 body.vtx[0]",
        "skinPercent cluster1 body.vtx[0]",
        "skinPercent -q -v box box.vtx[0]",
    };
    for (const char* command : commands)
        EXPECT_FALSE(run(command)) << command;
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"skinPercent: Give the skin cluster and the vertices.",
                     "skinPercent: Give the vertices or select them.",
                     "skinPercent: -q needs -v (-value).",
                     "skinPercent: boxShape is not deformed by cluster1.",
                     "skinPercent: Index out of range: body.vtx[6]",
                     "skinPercent: body is not an influence of cluster1.",
                     "skinPercent: Give one -tv value for each -t joint.",
                     "skinPercent: -pruneWeights needs 0 or more.",
                     "skinPercent: Give -q -v, -t with -tv, -pruneWeights or -normalize.",
                     "skinPercent: box is not a skin cluster or a skinned mesh."}));
    EXPECT_EQ(commandtest::sceneState(), before);
}

TEST_F(SkinPercent, WritesAreUndoneBitForBit) {
    expectUndoAndRedoExact("skinPercent -t b -tv 0.33 cluster1 body.vtx[0:5]");
    expectUndoAndRedoExact("skinPercent -prw 0.3 cluster1 body");
    expectUndoAndRedoExact("skinPercent -t a -tv 0.9 -nrm false cluster1 body.vtx[2]");
    expectUndoAndRedoExact("skinPercent -normalize true cluster1 body.vtx[2]");
}
