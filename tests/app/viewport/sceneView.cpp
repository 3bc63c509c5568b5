// The viewport's picture of the scene follows every kind of change doing only what the change
// asks for: weight edits refresh their vertices, joint moves the matrices, the hilite list and
// the paint tool the heat map, the selection the selected vertices.
#include "SceneView.h"

#include "HGlobal.h"
#include "sceneFixture.h"
#include "sheetScene.h"

#include <gtest/gtest.h>

using app::viewport::MeshDrawData;
using app::viewport::SceneView;
using app::viewport::SkinChanges;
using viewporttest::run;
using viewporttest::vertexName;

namespace {

class SceneViewTest : public fixture::FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        run("setToolTo selectSuperContext");
        sheet = viewporttest::makeSheet();
        view = std::make_unique<SceneView>([this] { ++notices; });
        view->prepare();
        ASSERT_EQ(view->meshes().size(), 1u);
        // What the first frame would send.
        mesh().skin()->takeChanges();
        mesh().takePoseChanged();
        mesh().takeSelectionChanged();
        firstId = mesh().id();
        notices = 0;
    }
    void TearDown() override { view.reset(); }

    MeshDrawData& mesh() const { return *view->meshes().front(); }

    viewporttest::Sheet sheet;
    std::unique_ptr<SceneView> view;
    std::uint64_t firstId = 0;
    int notices = 0;
};

} // namespace

TEST_F(SceneViewTest, AOneCellEditAndItsUndoRefreshOnlyThatVertex) {
    unsigned vertex = sheet.vertexAt(-1, 1);
    run("skinPercent -t left -tv 0.25 sheetSkin " + vertexName(vertex));
    EXPECT_GT(notices, 0);
    view->prepare();
    EXPECT_EQ(mesh().id(), firstId) << "the mesh was read again";
    SkinChanges changes = mesh().skin()->takeChanges();
    EXPECT_FALSE(changes.allSlots);
    EXPECT_FALSE(changes.allPaint);
    ASSERT_EQ(changes.runs.size(), 1u);
    EXPECT_EQ(changes.runs[0].first, vertex);
    EXPECT_EQ(changes.runs[0].count, 1u);
    EXPECT_FLOAT_EQ(mesh().skin()->skinSlots()[vertex].weights[0], 0.25f);
    EXPECT_FALSE(mesh().takePoseChanged());
    EXPECT_FALSE(mesh().takeSelectionChanged());

    std::string edit = "skinPercent -t left -tv 0.25 sheetSkin " + vertexName(sheet.vertexAt(1, 1));
    HGlobal::executeCommand(edit.c_str(), false, true);
    HGlobal::executeCommand("undo");
    view->prepare();
    changes = mesh().skin()->takeChanges();
    ASSERT_EQ(changes.runs.size(), 1u);
    EXPECT_EQ(changes.runs[0].first, sheet.vertexAt(1, 1));
    EXPECT_EQ(changes.runs[0].count, 1u);
    // Back to the right joint alone.
    const auto& restored = mesh().skin()->skinSlots()[sheet.vertexAt(1, 1)];
    EXPECT_EQ(restored.influences[0], 1u);
    EXPECT_EQ(restored.weights[0], 1.0f);
    EXPECT_EQ(restored.weights[1], 0.0f);
}

TEST_F(SceneViewTest, AJointMoveChangesOnlyTheMatrices) {
    unsigned vertex = sheet.vertexAt(-2, 0);
    QVector3D before = mesh().worldPosition(vertex);
    run("setAttr left.ty 2");
    view->prepare();
    EXPECT_EQ(mesh().id(), firstId);
    EXPECT_TRUE(mesh().takePoseChanged());
    EXPECT_TRUE(mesh().skin()->takeChanges().empty());
    EXPECT_FALSE(mesh().takeSelectionChanged());
    EXPECT_TRUE(qFuzzyCompare(mesh().worldPosition(vertex), before + QVector3D(0, 1, 0)));
    // The middle column follows half way.
    unsigned middle = sheet.vertexAt(0, 0);
    EXPECT_NEAR(mesh().worldPosition(middle).y(), 1.5f, 1e-5f);
}

TEST_F(SceneViewTest, TheHeatMapFollowsTheHiliteListAndThePaintTool) {
    unsigned leftVertex = sheet.vertexAt(-1, 0), rightVertex = sheet.vertexAt(1, 0);
    EXPECT_EQ(view->heatInfluence(), nullptr);

    HSelectionList hilite;
    hilite.add("right");
    HGlobal::setHiliteList(hilite);
    EXPECT_EQ(notices, 1);
    view->prepare();
    EXPECT_EQ(view->heatInfluence(), sheet.right);
    SkinChanges changes = mesh().skin()->takeChanges();
    EXPECT_TRUE(changes.allPaint);
    EXPECT_FALSE(changes.allSlots);
    EXPECT_EQ(mesh().skin()->paint()[rightVertex].heat, 1.0f);
    EXPECT_EQ(mesh().skin()->paint()[leftVertex].heat, 0.0f);

    run("PntPaintSkinWeightsTool; pntSkinSelectInfluence pntAttrSkinPaintCtx left");
    view->prepare();
    EXPECT_EQ(view->heatInfluence(), sheet.left);
    EXPECT_EQ(mesh().skin()->paint()[leftVertex].heat, 1.0f);

    run("setToolTo selectSuperContext");
    view->prepare();
    EXPECT_EQ(view->heatInfluence(), sheet.right);
    HGlobal::setHiliteList(HSelectionList());
    view->prepare();
    EXPECT_EQ(view->heatInfluence(), nullptr);
    EXPECT_EQ(mesh().id(), firstId);
}

TEST_F(SceneViewTest, UnnormalisedVerticesAreMarkedFromAllTheirWeights) {
    unsigned vertex = sheet.vertexAt(1, -1);
    run("skinPercent -t left -tv 0.3 -nrm false sheetSkin " + vertexName(vertex));
    view->prepare();
    EXPECT_EQ(mesh().skin()->paint()[vertex].unnormalised, 1.0f);
    EXPECT_EQ(mesh().skin()->paint()[sheet.vertexAt(1, 1)].unnormalised, 0.0f);
}

TEST_F(SceneViewTest, SelectedVerticesAndHilitedMeshesAreShown) {
    run("select -r sheet.vtx[7] sheet.vtx[3]");
    view->prepare();
    EXPECT_EQ(mesh().selectedVertices(), (std::vector<unsigned>{7, 3}));
    EXPECT_TRUE(mesh().takeSelectionChanged());
    EXPECT_FALSE(mesh().hilited);
    HSelectionList hilite;
    hilite.add("sheet");
    HGlobal::setHiliteList(hilite);
    view->prepare();
    EXPECT_TRUE(mesh().hilited);
    EXPECT_FALSE(mesh().takeSelectionChanged());
    EXPECT_TRUE(mesh().skin()->takeChanges().empty());
}

TEST_F(SceneViewTest, NewGeometryOrANewBindingReadsTheMeshAgain) {
    run("polyCube -n box; select -cl");
    view->prepare();
    ASSERT_EQ(view->meshes().size(), 2u);
    EXPECT_EQ(mesh().id(), firstId) << "an unrelated mesh was read again";
    EXPECT_EQ(view->meshes()[1]->skin(), nullptr);
    run("skinCluster -n boxSkin left right box");
    view->prepare();
    EXPECT_NE(view->meshes()[1]->skin(), nullptr);
    run("delete sheet");
    view->prepare();
    ASSERT_EQ(view->meshes().size(), 1u);
    EXPECT_EQ(view->meshes()[0]->shape()->name(), "boxShape");
}
