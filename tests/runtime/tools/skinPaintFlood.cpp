// Flooding with the skin paint tool, checked against weights worked out by hand on a 3 x 3
// grid. Its vertices and their edge neighbours:
//
//     0 - 1 - 2        4: 1 3 5 7     0: 1 3     1: 0 2 4
//     |   |   |
//     3 - 4 - 5        Joint 1 starts at W1 below; joints 2 and 3 share the rest 3 : 1.
//     |   |   |
//     6 - 7 - 8
//
// Each flood is one undo step, and undo and redo give back every weight exactly.
#include "HGlobal.h"
#include "HSelectionList.h"
#include "OutputRecorder.h"
#include "scene/MeshData.h"
#include "scene/Selection.h"
#include "scene/SkinClusterData.h"
#include "sceneFixture.h"
#include "tools/ToolContexts.h"
#include "undo/UndoQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const double W1[9] = {0.9, 0.1, 0.3, 0.2, 0.6, 0.0, 0.5, 0.4, 0.7};
constexpr double kTolerance = 1e-12;

runtime::UndoQueue& undoQueue() {
    return runtime::host().get<runtime::UndoQueue>();
}

std::vector<std::string> selectionTexts() {
    HSelectionList list;
    HGlobal::getActiveSelectionList(list);
    HStringArray strings;
    list.getSelectionStrings(strings);
    std::vector<std::string> texts;
    for (const HString& text : strings)
        texts.push_back(text.str());
    return texts;
}

class SkinPaintFlood : public fixture::FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        undoQueue().flush();
        runtime::toolContexts().setCurrent(runtime::ToolContexts::kSelectContext);
        runtime::toolContexts().skinPaint() = runtime::SkinPaintSettings();
        fixture::SkinnedMeshOptions options;
        options.vertices = 9;
        options.joints = 3;
        options.weightsPerVertex = 3;
        m_mesh = fixture::makeSkinnedMesh(options);
        ASSERT_EQ(m_mesh.shape->mesh()->neighbours(4).size(), 4u) << "the grid the test draws";
        runtime::SkinWeights& weights = m_mesh.cluster->skinCluster()->weights();
        for (unsigned v = 0; v < 9; ++v) {
            const runtime::SkinWeights::Influence influences[] = {0, 1, 2};
            const double values[] = {W1[v], (1.0 - W1[v]) * 0.75, (1.0 - W1[v]) * 0.25};
            weights.assign(v, influences, values, 3);
        }
    }

    void select(std::initializer_list<const char*> items) {
        HSelectionList list;
        for (const char* item : items)
            ASSERT_TRUE(list.add(item)) << item;
        runtime::selection().setActive(list);
    }

    // The tool set up and flooded as a script drives it, with undo on.
    HStatus paint(const std::string& operation, double opacity,
                  const std::string& joint = "bodyJoint1") {
        std::string script = "PntPaintSkinWeightsTool;\n"
                             "pntAttrPaintOperation pntAttrSkinPaintCtx " +
                             operation +
                             ";\n"
                             "pntSkinSelectInfluence pntAttrSkinPaintCtx " +
                             joint + ";\npntAttrSkinPaintCtx -e -opacity " +
                             HString().set(opacity).str() + " `currentCtx`;\n" +
                             "pntAttrSkinPaintCtx -e -clear `currentCtx`;\n";
        return HGlobal::executeCommand(script.c_str(), false, true);
    }

    std::vector<double> weightsOf(unsigned vertex) const {
        std::vector<double> dense(3);
        m_mesh.cluster->skinCluster()->weights().readDense(vertex, dense.data(), 3);
        return dense;
    }

    void expectWeights(unsigned vertex, std::initializer_list<double> expected) const {
        std::vector<double> actual = weightsOf(vertex);
        unsigned k = 0;
        for (double value : expected) {
            EXPECT_NEAR(actual[k], value, kTolerance) << "vertex " << vertex << " joint " << k + 1;
            ++k;
        }
    }

    void expectUntouched(std::initializer_list<unsigned> vertices) const {
        for (unsigned v : vertices)
            expectWeights(v, {W1[v], (1.0 - W1[v]) * 0.75, (1.0 - W1[v]) * 0.25});
    }

    void lockJoint(unsigned index) {
        ASSERT_TRUE(scene().setValue(m_mesh.joints[index]->plug("lockInfluenceWeights"), true));
    }

    fixture::SkinnedMesh m_mesh;
};

TEST_F(SkinPaintFlood, SmoothBlendsTowardsTheNeighbourAverageFromTheWeightsBeforeTheFlood) {
    select({"body.vtx[0]", "body.vtx[1]", "body.vtx[4]"});
    ASSERT_TRUE(paint("Smooth", 0.5));
    // 0: 0.5*0.9 + 0.5*(0.1+0.2)/2; 1: 0.5*0.1 + 0.5*(0.9+0.3+0.6)/3 (vertex 0 before the
    // flood); 4: 0.5*0.6 + 0.5*(0.1+0.2+0.0+0.4)/4 (vertex 1 before the flood).
    expectWeights(0, {0.525, 0.475 * 0.75, 0.475 * 0.25});
    expectWeights(1, {0.35, 0.65 * 0.75, 0.65 * 0.25});
    expectWeights(4, {0.3875, 0.6125 * 0.75, 0.6125 * 0.25});
    expectUntouched({2, 3, 5, 6, 7, 8});
}

TEST_F(SkinPaintFlood, FullOpacityTakesTheAverageAndALockedInfluenceKeepsItsWeight) {
    lockJoint(2);
    select({"body.vtx[4]", "body.vtx[8]"});
    ASSERT_TRUE(paint("Smooth", 1.0));
    // 4: (0.1+0.2+0.0+0.4)/4 = 0.175, joint 3 keeps 0.1, joint 2 takes the rest.
    expectWeights(4, {0.175, 1.0 - 0.1 - 0.175, 0.1});
    // 8: (0.0+0.4)/2 = 0.2, joint 3 keeps 0.075.
    expectWeights(8, {0.2, 1.0 - 0.075 - 0.2, 0.075});
    expectUntouched({0, 1, 2, 3, 5, 6, 7});
}

TEST_F(SkinPaintFlood, LockedVertexStaysAndSmoothingAnotherInfluenceWorksAlike) {
    ASSERT_TRUE(scene().setValue(m_mesh.cluster->plug("lockVertex").element(4), true));
    select({"body.vtx[4]", "body.vtx[3]"});
    ASSERT_TRUE(paint("Smooth", 1.0, "bodyJoint3"));
    expectUntouched({4});
    // 3: joint 3 becomes the average of 0, 4 and 6: (0.025+0.1+0.125)/3; joints 1 and 2 keep
    // their 0.2 : 0.6 ratio.
    double smoothed = (0.025 + 0.1 + 0.125) / 3.0;
    expectWeights(3, {(1.0 - smoothed) * 0.25, (1.0 - smoothed) * 0.75, smoothed});
}

TEST_F(SkinPaintFlood, ReplaceAddAndScaleApplyTheOpacityToTheInfluence) {
    select({"body.vtx[2]"});
    ASSERT_TRUE(paint("Replace", 0.8));
    expectWeights(2, {0.8, 0.2 * 0.75, 0.2 * 0.25});
    ASSERT_TRUE(paint("Add", 0.1));
    expectWeights(2, {0.9, 0.1 * 0.75, 0.1 * 0.25});
    ASSERT_TRUE(paint("Add", 0.5));
    expectWeights(2, {1.0, 0.0, 0.0});
    ASSERT_TRUE(paint("Scale", 0.25));
    // Nothing else holds weight: the nearest unlocked other joint takes the rest.
    std::vector<double> scaled = weightsOf(2);
    EXPECT_NEAR(scaled[0], 0.25, kTolerance);
    EXPECT_NEAR(scaled[0] + scaled[1] + scaled[2], 1.0, kTolerance);
    expectUntouched({0, 1, 3, 4, 5, 6, 7, 8});
}

TEST_F(SkinPaintFlood, EveryFloodIsOneUndoStepRestoredExactly) {
    std::vector<std::vector<double>> before, afterFirst, afterSecond;
    auto snapshot = [&](std::vector<std::vector<double>>& into) {
        into.clear();
        for (unsigned v = 0; v < 9; ++v)
            into.push_back(weightsOf(v));
    };
    snapshot(before);
    select({"body"});
    ASSERT_TRUE(paint("Smooth", 0.7));
    snapshot(afterFirst);
    ASSERT_TRUE(paint("Smooth", 0.3, "bodyJoint2"));
    snapshot(afterSecond);
    ASSERT_NE(afterFirst, before) << "the whole mesh was painted";
    EXPECT_EQ(undoQueue().undoCount(), 2u) << "only the floods are recorded";

    std::vector<std::vector<double>> now;
    ASSERT_TRUE(HGlobal::executeCommand("undo"));
    snapshot(now);
    EXPECT_EQ(now, afterFirst);
    ASSERT_TRUE(HGlobal::executeCommand("undo"));
    snapshot(now);
    EXPECT_EQ(now, before);
    ASSERT_TRUE(HGlobal::executeCommand("redo; redo"));
    snapshot(now);
    EXPECT_EQ(now, afterSecond);
}

TEST_F(SkinPaintFlood, FloodIsRefusedUntilTheToolCanPaint) {
    select({"body.vtx[4]"});
    const std::string clear = "pntAttrSkinPaintCtx -e -clear pntAttrSkinContext";
    OutputRecorder output;
    EXPECT_FALSE(HGlobal::executeCommand(clear.c_str(), false, true));
    ASSERT_TRUE(HGlobal::executeCommand("PntPaintSkinWeightsTool"));
    EXPECT_FALSE(HGlobal::executeCommand(clear.c_str(), false, true));
    ASSERT_TRUE(HGlobal::executeCommand("pntSkinSelectInfluence pntAttrSkinPaintCtx bodyJoint1"));
    EXPECT_FALSE(HGlobal::executeCommand(
        "pntAttrSkinPaintCtx -e -opacity 0.5 -skinPaintMode 0 -clear pntAttrSkinContext", false,
        true));
    EXPECT_THAT(
        output.texts(HCommandMessage::kError),
        ElementsAre("pntAttrSkinPaintCtx: The skin paint tool is not the current tool; make it "
                    "current with PntPaintSkinWeightsTool.",
                    "pntAttrSkinPaintCtx: No influence is selected to paint; select one with "
                    "pntSkinSelectInfluence.",
                    "pntAttrSkinPaintCtx: The skin paint tool picks vertices; set -skinPaintMode 1 "
                    "to paint."));
    EXPECT_EQ(runtime::toolContexts().skinPaint().opacity, 1.0) << "a refused edit sets nothing";
    expectUntouched({0, 1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(undoQueue().undoCount(), 0u);
}

TEST_F(SkinPaintFlood, NothingBoundToTheInfluenceIsAWarningAndNoStep) {
    runtime::NodePtr loose = scene().createNode("joint", "loose");
    select({"body.vtx[4]", "bodyJoint1"});
    OutputRecorder output;
    ASSERT_TRUE(paint("Replace", 0.5, "loose"));
    EXPECT_THAT(output.texts(HCommandMessage::kWarning),
                ElementsAre("Nothing to paint: no selected vertex belongs to a mesh bound to "
                            "loose."));
    EXPECT_THAT(output.texts(HCommandMessage::kError), IsEmpty());
    expectUntouched({0, 1, 2, 3, 4, 5, 6, 7, 8});
    EXPECT_EQ(undoQueue().undoCount(), 0u);
}

TEST_F(SkinPaintFlood, PaintSmoothingScriptLeavesToolModesAndSelectionAsTheyWere) {
    ASSERT_TRUE(
        HGlobal::executeCommand("select -r bodyJoint2 body.vtx[8];\n"
                                "selectType -ocm -alc true;\nselectType -ocm -vertex false;"));
    const std::vector<std::string> selectedBefore = selectionTexts();

    // The steps the Vorel plug-in takes to smooth joint 1 on vertices 4 and 0 at opacity 0.5,
    // keeping joint 3 (a locked cell in a painted row) locked meanwhile; undo is off throughout.
    HString context = HGlobal::executeCommandStringResult("currentCtx");
    int allComponents = -1, vertices = -1;
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -alc", allComponents));
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -vertex", vertices));
    HSelectionList kept;
    HGlobal::getActiveSelectionList(kept);
    ASSERT_TRUE(HGlobal::executeCommand("setAttr bodyJoint3.lockInfluenceWeights 1"));
    HString script = "selectType -ocm -alc false;\n";
    script += "selectType -ocm -vertex true;\n";
    script += "select -r body.vtx[4] body.vtx[0] ;\n";
    script += "PntPaintSkinWeightsTool;\n";
    script += "pntAttrSkinToolScript 4;\n";
    script += "pntAttrSkinJointMenu(\"pntJoinListPopupMenu\", \"pntAttrSkinPaintCtx\" );\n";
    script += "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth;\n";
    script += "pntAttrSkinPaintCtx -e -skinPaintMode 1 pntAttrSkinContext;\n";
    script += "pntSkinSelectInfluence pntAttrSkinPaintCtx bodyJoint1;\n";
    ASSERT_TRUE(HGlobal::executeCommand(script));
    ASSERT_TRUE(HGlobal::executeCommand("pntAttrSkinPaintCtx -e -opacity " + HString().set(0.5) +
                                        " `currentCtx`;\n" +
                                        "pntAttrSkinPaintCtx -e -clear `currentCtx`;\n"));
    ASSERT_TRUE(HGlobal::executeCommand("setAttr bodyJoint3.lockInfluenceWeights 0"));
    if (!(context == "pntAttrSkinContext")) {
        ASSERT_TRUE(HGlobal::executeCommand("setToolTo " + context + ";\n"));
    }
    ASSERT_TRUE(HGlobal::executeCommand("selectType -ocm -alc " + HString().set(allComponents) +
                                        ";\n" + "selectType -ocm -vertex " +
                                        HString().set(vertices) + ";\n"));
    HGlobal::setActiveSelectionList(kept);

    EXPECT_EQ(HGlobal::executeCommandStringResult("currentCtx").str(), "selectSuperContext");
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -alc", allComponents));
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -vertex", vertices));
    EXPECT_EQ(allComponents, 1);
    EXPECT_EQ(vertices, 0);
    EXPECT_EQ(selectionTexts(), selectedBefore);
    int locked = -1;
    ASSERT_TRUE(HGlobal::executeCommand("getAttr bodyJoint3.lockInfluenceWeights", locked));
    EXPECT_EQ(locked, 0);

    // 4: 0.5*0.6 + 0.5*(0.1+0.2+0.0+0.4)/4, joint 3 keeps 0.1; 0: 0.5*0.9 + 0.5*(0.1+0.2)/2,
    // joint 3 keeps 0.025.
    expectWeights(4, {0.3875, 1.0 - 0.1 - 0.3875, 0.1});
    expectWeights(0, {0.525, 1.0 - 0.025 - 0.525, 0.025});
    expectUntouched({1, 2, 3, 5, 6, 7, 8});
    EXPECT_EQ(undoQueue().undoCount(), 0u);
}

} // namespace
