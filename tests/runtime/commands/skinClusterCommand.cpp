// skinCluster binding, editing of its settings and queries: the cluster and its set and group
// id, the weights binding gives, answers, errors, and exact undo. Smoothing has its own file.
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "scene/NodeValues.h"
#include "scene/SkinLinks.h"

#include <cmath>

using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::stringResult;
using commandtest::Texts;

namespace {

class SkinClusterBinding : public commandtest::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(run("joint -n hip -p 0 -1 0; joint -n spine -p 0 0 0; joint -n chest -p 0 1 0;"
                        "select -cl; polyCylinder -n body -h 2 -sx 8 -sy 4; "
                        "polyCube -n box; select -cl"));
    }

    const runtime::SkinClusterData& data(const std::string& cluster) {
        return *scene().findNode(cluster)->skinCluster();
    }

    Texts influences(const std::string& command) {
        HStringArray names;
        EXPECT_TRUE(HGlobal::executeCommand(HString(command), names));
        return commandtest::texts(names);
    }
};

} // namespace

TEST_F(SkinClusterBinding, BindGivesNormalisedWeightsFromTheNearestJoints) {
    EXPECT_EQ(stringResult("skinCluster -n cluster1 -mi 2 hip spine chest body"), "cluster1");
    runtime::NodePtr cluster = scene().findNode("cluster1");
    EXPECT_TRUE(scene().findNode("cluster1Set"));
    EXPECT_TRUE(scene().findNode("cluster1GroupId"));
    EXPECT_EQ(runtime::skinClusterOfGeometry(*scene().findNode("bodyShape")), cluster);
    EXPECT_EQ(runtime::intValue(*cluster, "maxInfluences"), 2);

    const runtime::SkinWeights& weights = data("cluster1").weights();
    const runtime::MeshData& mesh = *scene().findNode("bodyShape")->mesh();
    ASSERT_EQ(weights.vertexCount(), mesh.vertexCount());
    for (unsigned v = 0; v < weights.vertexCount(); ++v) {
        EXPECT_LE(weights.entryCount(v), 2u);
        double sum = 0.0;
        for (unsigned i = 0; i < weights.entryCount(v); ++i)
            sum += weights.weights(v)[i];
        EXPECT_NEAR(sum, 1.0, 1e-12);
        // The joint nearest to the vertex (heights -1, 0, 1) holds its largest weight.
        unsigned nearest =
            static_cast<unsigned>(std::lround(std::clamp(mesh.point(v).y, -1.0, 1.0)) + 1);
        double strongest = weights.weight(v, nearest);
        for (unsigned k = 0; k < 3; ++k)
            EXPECT_LE(weights.weight(v, k), strongest) << "vertex " << v;
    }
}

TEST_F(SkinClusterBinding, BindTakesTheSelectionAndNamesClustersInTurn) {
    ASSERT_TRUE(run("select hip chest body"));
    EXPECT_EQ(stringResult("skinCluster"), "skinCluster1");
    EXPECT_EQ(influences("skinCluster -q -influence skinCluster1"), (Texts{"hip", "chest"}));
    EXPECT_EQ(stringResult("skinCluster spine box"), "skinCluster2");
    EXPECT_EQ(influences("skinCluster -q -inf box"), (Texts{"spine"}));
    int maxInfluences = 0;
    ASSERT_TRUE(HGlobal::executeCommand("skinCluster -q -mi skinCluster2", maxInfluences));
    EXPECT_EQ(maxInfluences, 1);
}

TEST_F(SkinClusterBinding, EditSetsTheClusterSettingsAndQueryReadsThem) {
    ASSERT_TRUE(run("skinCluster -n cluster1 hip spine chest body"));
    ASSERT_TRUE(run("skinCluster -e -nw 0 -mi 3 -omi true cluster1"));
    int value = -1;
    ASSERT_TRUE(HGlobal::executeCommand("skinCluster -q -normalizeWeights cluster1", value));
    EXPECT_EQ(value, 0);
    ASSERT_TRUE(HGlobal::executeCommand("skinCluster -q -maxInfluences body", value));
    EXPECT_EQ(value, 3);
    ASSERT_TRUE(HGlobal::executeCommand("skinCluster -q -obeyMaxInfluences cluster1", value));
    EXPECT_EQ(value, 1);
    expectUndoAndRedoExact("skinCluster -e -normalizeWeights 2 -maxInfluences 4 cluster1");
}

TEST_F(SkinClusterBinding, FailuresNameTheCommandAndTheProblem) {
    ASSERT_TRUE(run("skinCluster -n cluster1 hip spine body"));
    std::vector<std::string> before = commandtest::sceneState();
    OutputRecorder output;
    const char* const commands[] = {
        "skinCluster hip body",
        "skinCluster hip spine",
        "skinCluster hip body box",
        "skinCluster -mi 0 hip box",
        "skinCluster -n 2bad hip box",
        "skinCluster hip hip box",
        "skinCluster -e -nw 3 cluster1",
        "skinCluster -e cluster1",
        "skinCluster -e -n other cluster1",
        "skinCluster -e -inf cluster1",
        "skinCluster -sw 0.1 cluster1",
        "skinCluster -e -swi 3 cluster1",
        "skinCluster -e -sw -1 cluster1",
        "skinCluster -e -sw 0.1 -swi 0 cluster1",
        "skinCluster -q cluster1",
        "skinCluster -q -inf box",
        "skinCluster -q -inf ghost",
    };
    for (const char* command : commands)
        EXPECT_FALSE(run(command)) << command;
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"skinCluster: bodyShape is already bound to cluster1.",
                     "skinCluster: Give the joints and then the mesh to bind.",
                     "skinCluster: Bind one mesh at a time.",
                     "skinCluster: -maxInfluences needs 1 or more.",
                     "skinCluster: Invalid node name: 2bad", "skinCluster: hip is listed twice.",
                     "skinCluster: -normalizeWeights takes 0, 1 or 2.",
                     "skinCluster: Give what to edit: -normalizeWeights, -maxInfluences, "
                     "-obeyMaxInfluences or -smoothWeights.",
                     "skinCluster: -name is for binding, not for editing.",
                     "skinCluster: -influence can only be queried (-q).",
                     "skinCluster: -smoothWeights needs edit mode (-e).",
                     "skinCluster: -smoothWeightsMaxIterations goes with -smoothWeights.",
                     "skinCluster: -smoothWeights needs 0 or more.",
                     "skinCluster: -smoothWeightsMaxIterations needs 1 or more.",
                     "skinCluster: Give what to query: -influence, -maxInfluences, "
                     "-normalizeWeights or -obeyMaxInfluences.",
                     "skinCluster: box is not a skin cluster or a skinned mesh.",
                     "No object matches name: ghost"}));
    EXPECT_EQ(commandtest::sceneState(), before);
}

TEST_F(SkinClusterBinding, BindingIsUndoneExactly) {
    expectUndoAndRedoExact("skinCluster -n cluster1 -mi 2 hip spine chest body");
    expectUndoAndRedoExact("skinCluster -nw 0 spine box");
    ASSERT_TRUE(run("undo", false));
    ASSERT_TRUE(run("undo", false));
    EXPECT_EQ(scene().findNode("bodyShape")->plug("instObjGroups").elementCount(), 0u);
    EXPECT_FALSE(scene().findNode("cluster1GroupId"));
}
