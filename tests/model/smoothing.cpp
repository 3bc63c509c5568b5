// Smoothing through the host: the skin-cluster smoothing of the selected vertices (or of every
// loaded cluster when nothing is selected) and the paint tool's smoothing of one influence.
// Each must leave exactly the weights the host's own commands give, and undo exactly.
#include "HGlobal.h"
#include "OutputRecorder.h"
#include "sceneState.h"
#include "sceneWeights.h"
#include "windowControls.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

namespace {

class Smoothing : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        // The host keeps its tool across tests run in one process; each starts from selection.
        ASSERT_TRUE(vorel::run("setToolTo selectSuperContext"));
        fixture::SkinnedMeshOptions options;
        options.seed = 7;
        options.weightsPerVertex = 3;
        body = fixture::makeSkinnedMesh(options);
        options.name = "arm";
        options.vertices = 9;
        arm = fixture::makeSkinnedMesh(options);
        selectAndLoad("body arm");
    }
    void apply() { QTest::mouseClick(controls->floodApply, Qt::LeftButton); }
    // Undoes the window's edits, runs `commands` instead and expects the same weights.
    void expectSameAsHost(int undoSteps, const std::string& commands) {
        const vorel::MeshWeights bodyAfter = vorel::everyVertexWeights(body);
        const vorel::MeshWeights armAfter = vorel::everyVertexWeights(arm);
        for (int step = 0; step < undoSteps; ++step)
            ASSERT_TRUE(vorel::run("undo"));
        EXPECT_EQ(vorel::everyVertexWeights(body), bodyBefore);
        EXPECT_EQ(vorel::everyVertexWeights(arm), armBefore);
        ASSERT_TRUE(vorel::run(commands));
        EXPECT_EQ(vorel::everyVertexWeights(body), bodyAfter);
        EXPECT_EQ(vorel::everyVertexWeights(arm), armAfter);
    }
    fixture::SkinnedMesh body;
    fixture::SkinnedMesh arm;
    vorel::MeshWeights bodyBefore;
    vorel::MeshWeights armBefore;
};

} // namespace

TEST_F(Smoothing, NothingSelectedSmoothsEveryClusterWithOneCommandEach) {
    bodyBefore = vorel::everyVertexWeights(body);
    armBefore = vorel::everyVertexWeights(arm);
    vorel::enter(controls->differenceEdit, "0");
    OutputRecorder output;
    apply();
    const std::vector<std::string> echoed = output.texts(HCommandMessage::kHistory);
    EXPECT_EQ(std::count(echoed.begin(), echoed.end(), "vorelCmd -smoothSkinWeights"), 2);
    EXPECT_NE(vorel::everyVertexWeights(body), bodyBefore);
    expectSameAsHost(2, "skinCluster -e -sw 0 -swi 5 -omi 1 skinCluster1;"
                        "skinCluster -e -sw 0 -swi 5 -omi 1 skinCluster2;");
}

TEST_F(Smoothing, SelectedVerticesOfOneShapeAreSmoothedAlone) {
    bodyBefore = vorel::everyVertexWeights(body);
    armBefore = vorel::everyVertexWeights(arm);
    vorel::enter(controls->differenceEdit, "0.1");
    vorel::enter(controls->iterationsEdit, "5");
    selectCells({{3, 0}, {8, 1}});
    apply();
    EXPECT_NE(vorel::everyVertexWeights(body), bodyBefore);
    expectSameAsHost(1, "select -r body.vtx[2] body.vtx[7] ;"
                        "skinCluster -e -sw 0.1 -swi 5 -omi 1 skinCluster1;");
}

TEST_F(Smoothing, VerticesOfTwoShapesAreRefused) {
    bodyBefore = vorel::everyVertexWeights(body);
    selectCells({{3, 0}, {20, 0}});
    OutputRecorder output;
    apply();
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{
                  "The vertices are not on the same skinCluster. You can only smooth vertices on "
                  "the same SkinCluster one at a time. Please only select vertices on the same "
                  "shape."});
    EXPECT_EQ(vorel::everyVertexWeights(body), bodyBefore);
}

TEST_F(Smoothing, PaintSmoothingOfOneInfluenceLeavesToolAndSelectionAsTheyWere) {
    bodyBefore = vorel::everyVertexWeights(body);
    armBefore = vorel::everyVertexWeights(arm);
    ASSERT_TRUE(vorel::run("select -r arm.vtx[4]"));
    const fixture::Texts selected = fixture::selectionTexts();
    controls->floodOperation->setCurrentIndex(1);
    vorel::enter(controls->opacityEdit, "1.0");
    vorel::enter(controls->floodValueEdit, "0.5");
    selectCells({{2, 0}, {3, 0}});
    apply();

    EXPECT_EQ(HGlobal::executeCommandStringResult("currentCtx"), HString("selectSuperContext"));
    EXPECT_EQ(fixture::selectionTexts(), selected);
    EXPECT_NE(vorel::everyVertexWeights(body), bodyBefore);
    expectSameAsHost(1, "select -r body.vtx[1] body.vtx[2];"
                        "PntPaintSkinWeightsTool;"
                        "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth;"
                        "pntSkinSelectInfluence pntAttrSkinPaintCtx bodyJoint1;"
                        "pntAttrSkinPaintCtx -e -opacity 0.5 pntAttrSkinContext;"
                        "pntAttrSkinPaintCtx -e -clear pntAttrSkinContext;");

    OutputRecorder output;
    selectCells({{2, 0}, {3, 1}});
    apply();
    EXPECT_EQ(output.texts(HCommandMessage::kInfo),
              std::vector<std::string>{"Please select cells under same joint."});
}
