// skinCluster -e -smoothWeights against weights worked out by hand on a strip of six
// vertices, with locked influences, locked vertices and -obeyMaxInfluences, the plug-in's own
// command text, and exact undo.
//
// The strip's edge neighbours are 0: 1 3, 1: 0 2 4, 2: 1 5, 3: 0 4, 4: 1 3 5, 5: 2 4.
#include "OutputRecorder.h"
#include "commandTesting.h"

using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::Texts;

namespace {

using commandtest::StripWeights;

const auto& kStart = commandtest::kStripStart;

class Smoothing : public commandtest::WeightedStripTest {
protected:
    void expectWeights(unsigned vertex, const StripWeights& expected) {
        commandtest::expectStripWeights(vertex, expected);
    }

    void expectUnchanged(std::initializer_list<unsigned> vertices) {
        for (unsigned v : vertices)
            EXPECT_EQ(commandtest::stripWeights(v), kStart[v]) << "vertex " << v;
    }
};

} // namespace

TEST_F(Smoothing, ASelectedVertexTakesTheAverageOfItsNeighbours) {
    ASSERT_TRUE(run("select -r body.vtx[1]; skinCluster -e -sw 0.01 -swi 1 cluster1"));
    expectWeights(1, {1.2 / 3, 1.6 / 3, 0.2 / 3});
    expectUnchanged({0, 2, 3, 4, 5});
}

TEST_F(Smoothing, EveryVertexWhenNoneIsSelectedEachFromThePassStart) {
    ASSERT_TRUE(run("select body; skinCluster -e -sw 0.01 -swi 1 cluster1"));
    expectWeights(0, {0.55, 0.25, 0.2});
    expectWeights(1, {1.2 / 3, 1.6 / 3, 0.2 / 3});
    expectWeights(2, {0.25, 0.5, 0.25});
    expectWeights(3, {0.6, 0.3, 0.1});
    expectWeights(4, {1.1 / 3, 1.0 / 3, 0.9 / 3});
    expectWeights(5, {0.1, 0.8, 0.1});
}

TEST_F(Smoothing, OnlyVerticesDifferingByMoreThanTheThresholdChange) {
    // Largest differences: v0 0.45, v2 0.5, v5 0.4, v3 0.3, v4 0.27, v1 0.1.
    ASSERT_TRUE(run("skinCluster -e -sw 0.42 -swi 1 cluster1"));
    expectWeights(0, {0.55, 0.25, 0.2});
    expectWeights(2, {0.25, 0.5, 0.25});
    expectUnchanged({1, 3, 4, 5});
}

TEST_F(Smoothing, LaterPassesStartFromTheEarlierOnes) {
    ASSERT_TRUE(run("select -r body.vtx[1] body.vtx[4]; skinCluster -e -sw 0.01 -swi 2 cluster1"));
    expectWeights(1, {4.1 / 9, 4.0 / 9, 0.9 / 9});
    expectWeights(4, {3.0 / 9, 3.1 / 9, 2.9 / 9});
    expectUnchanged({0, 2, 3, 5});
}

TEST_F(Smoothing, LockedInfluencesKeepTheirWeightsAndTheRestIsNormalised) {
    ASSERT_TRUE(run("setAttr c.lockInfluenceWeights 1; select -r body.vtx[4];"
                    "skinCluster -e -sw 0.01 -swi 1 cluster1"));
    // Average (1.1/3, 1/3, 0.9/3); a and b share the 0.8 that c leaves.
    expectWeights(4, {1.1 / 2.1 * 0.8, 1.0 / 2.1 * 0.8, 0.2});
}

TEST_F(Smoothing, ObeyingMaxInfluencesKeepsTheLargestWeights) {
    ASSERT_TRUE(run("skinCluster -e -mi 2 cluster1; select -r body.vtx[4]"));
    ASSERT_TRUE(run("skinCluster -e -sw 0.01 -swi 1 -omi 0 cluster1"));
    expectWeights(4, {1.1 / 3, 1.0 / 3, 0.9 / 3});
    ASSERT_TRUE(run("undo", false));
    ASSERT_TRUE(run("skinCluster -e -sw 0.01 -swi 1 -omi 1 cluster1"));
    expectWeights(4, {1.1 / 2.1, 1.0 / 2.1, 0.0});
    ASSERT_TRUE(run("undo", false));
    // A locked influence is always kept; the largest unlocked one fills the limit.
    ASSERT_TRUE(run("setAttr c.liw 1; skinCluster -e -sw 0.01 -swi 1 -omi 1 cluster1"));
    expectWeights(4, {0.8, 0.0, 0.2});
}

TEST_F(Smoothing, WithoutTheFlagTheClustersOwnSettingDecides) {
    ASSERT_TRUE(run("skinCluster -e -mi 2 -omi 1 cluster1; select -r body.vtx[4];"
                    "skinCluster -e -sw 0.01 -swi 1 cluster1"));
    expectWeights(4, {1.1 / 2.1, 1.0 / 2.1, 0.0});
}

TEST_F(Smoothing, LockedVerticesStayAndOtherMeshesSelectionMeansEveryVertex) {
    ASSERT_TRUE(run("setAttr cluster1.lockVertex[0] 1; polyCube -n other; select -r other.vtx[0];"
                    "skinCluster -e -sw 0.01 -swi 1 cluster1"));
    expectUnchanged({0});
    expectWeights(5, {0.1, 0.8, 0.1});
}

TEST_F(Smoothing, NothingToChangeRecordsNothing) {
    unsigned entries = runtime::host().get<runtime::UndoQueue>().undoCount();
    ASSERT_TRUE(run("skinCluster -e -sw 0.6 -swi 5 cluster1"));
    expectUnchanged({0, 1, 2, 3, 4, 5});
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), entries);
}

TEST_F(Smoothing, ThePluginsCommandTextSmoothsTheListedVertices) {
    ASSERT_TRUE(run("polyPlane -n sheet -sx 3 -sy 3; skinCluster -n cluster2 a b c sheet"));
    std::vector<std::string> before = commandtest::sceneState();
    ASSERT_TRUE(run("select -r sheet.vtx[3] sheet.vtx[7] ;skinCluster -e -sw 0.1 -swi 5 -omi 1 "
                    "cluster2;"));
    std::vector<std::string> after = commandtest::sceneState();
    Texts changed;
    for (const std::string& line : after)
        if (line.rfind("cluster2 vtx ", 0) == 0 &&
            std::find(before.begin(), before.end(), line) == before.end())
            changed.push_back(line.substr(0, line.find(' ', 13)));
    EXPECT_EQ(changed, (Texts{"cluster2 vtx 3", "cluster2 vtx 7"}));
}

TEST_F(Smoothing, SmoothingIsUndoneBitForBit) {
    ASSERT_TRUE(run("select -r body.vtx[0:4]"));
    expectUndoAndRedoExact("skinCluster -e -sw 0.01 -swi 3 -omi 1 cluster1");
    expectUndoAndRedoExact("skinCluster -e -mi 1 -sw 0 cluster1");
}
