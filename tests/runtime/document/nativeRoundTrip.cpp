#include "OutputRecorder.h"
#include "document/NativeSceneFormat.h"
#include "document/SceneDocument.h"
#include "documentTesting.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"

using namespace documenttest;

namespace {

class NativeRoundTrip : public DocumentTest {};

TEST_F(NativeRoundTrip, BringsBackTheWholeSceneBitForBit) {
    makeLegScene();
    const Texts saved = fixture::sceneState();
    ASSERT_TRUE(run("file -rename \"" + path("leg.vscene") + "\"; file -save"));
    ASSERT_TRUE(run("file -f -new"));
    ASSERT_EQ(runtime::scene().nodeCount(), 0u);

    ASSERT_TRUE(run("file -o \"" + path("leg.vscene") + "\""));
    const Texts opened = fixture::sceneState();
    EXPECT_TRUE(opened == saved) << fixture::differences(opened, saved);
    EXPECT_FALSE(runtime::scene().isModified());

    // Nothing is lost on the way: the same scene writes the same file.
    ASSERT_TRUE(run("file -ea \"" + path("again.vscene") + "\""));
    EXPECT_EQ(readText(path("again.vscene")), readText(path("leg.vscene")));
}

TEST_F(NativeRoundTrip, StoresTextAsTextAndRunsNothing) {
    makeLegScene();
    ASSERT_TRUE(run("file -ea \"" + path("leg.vscene") + "\""));
    ASSERT_TRUE(run("file -f -new"));
    OutputRecorder output;
    ASSERT_TRUE(run("file -o \"" + path("leg.vscene") + "\""));
    EXPECT_TRUE(output.lines().empty());
    EXPECT_EQ(stringResult("getAttr knee.note"), "file -f -new; print \"ran\"");
    EXPECT_EQ(runtime::sceneDocument().name(), path("leg.vscene"));
}

TEST_F(NativeRoundTrip, LeavesOutDeletedInfluencesWithTheirWeights) {
    makeLegScene();
    ASSERT_TRUE(run("delete ankle"));
    OutputRecorder output;
    ASSERT_TRUE(run("file -ea \"" + path("leg.vscene") + "\""));
    EXPECT_EQ(output.texts(HCommandMessage::kWarning),
              (Texts{"\"legCluster\" lost the weights of 1 deleted influences."}));
    ASSERT_TRUE(run("file -f -o \"" + path("leg.vscene") + "\""));
    const runtime::SkinClusterData& data = *runtime::scene().findNode("legCluster")->skinCluster();
    ASSERT_EQ(data.influenceCount(), 2u);
    EXPECT_EQ(data.weights().weight(0, 0), 0.25);
    EXPECT_EQ(data.weights().weight(0, 1), 0.5);
}

// A file written by hand after the description of the format opens as described.
TEST_F(NativeRoundTrip, ReadsAFileWrittenByHand) {
    writeText(path("hand.vscene"), R"({
      "format": "vorel-scene", "version": 1,
      "nodes": [
        {"type": "joint", "name": "root"},
        {"type": "transform", "name": "plate", "values": {"translate": {"translateY": 2.5}}},
        {"type": "mesh", "name": "plateShape", "parent": 1,
         "mesh": {"points": [0,0,0, 1,0,0, 1,0,1], "polygonSizes": [3],
                  "polygonVertices": [0,1,2]}},
        {"type": "skinCluster", "name": "plateCluster",
         "skin": {"influences": [0],
                  "bindPreMatrices": [[1,0,0,0, 0,1,0,0, 0,0,1,0, 0,0,0,1]],
                  "geometryMatrix": [1,0,0,0, 0,1,0,0, 0,0,1,0, 0,2.5,0,1],
                  "weights": {"counts": [1, 0, 1], "influences": [0, 0],
                              "values": [1, 0.5]}}}
      ],
      "connections": [[3, "outputGeometry[0]", 2, "inMesh"]]
    })");
    ASSERT_TRUE(run("file -o \"" + path("hand.vscene") + "\""));
    runtime::Scene& scene = runtime::scene();
    EXPECT_EQ(stringResult("getAttr plate.ty"), "2.5");
    EXPECT_EQ(stringResult("ls -l -type mesh"), "|plate|plateShape");
    const runtime::SkinWeights& weights = scene.findNode("plateCluster")->skinCluster()->weights();
    ASSERT_EQ(weights.vertexCount(), 3u);
    EXPECT_EQ(weights.weight(0, 0), 1.0);
    EXPECT_EQ(weights.entryCount(1), 0u);
    EXPECT_EQ(weights.weight(2, 0), 0.5);
}

} // namespace
