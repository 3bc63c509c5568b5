// Picking without OpenGL: a click finds the projected vertex, a rectangle the vertices inside
// it, only on meshes that may be picked, and the select statements name what was picked.
#include "Picking.h"

#include "HGlobal.h"
#include "SceneView.h"
#include "sceneFixture.h"
#include "sheetScene.h"

#include <gtest/gtest.h>

using namespace app::viewport;
using viewporttest::run;

namespace {

class PickingTest : public fixture::FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        sheet = viewporttest::makeSheet();
        view = std::make_unique<SceneView>([] {});
        camera.setViewportSize(QSize(400, 300));
    }
    void TearDown() override {
        view.reset();
        run("selectType -vertex 1");
    }

    std::vector<const MeshDrawData*> pickable() {
        view->prepare();
        std::vector<const MeshDrawData*> meshes;
        for (const auto& mesh : view->meshes())
            meshes.push_back(mesh.get());
        return pickableMeshes(meshes);
    }
    QPointF pixelOf(unsigned vertex) {
        QPointF pixel;
        EXPECT_TRUE(camera.project(view->meshes().front()->worldPosition(vertex), pixel));
        return pixel;
    }

    viewporttest::Sheet sheet;
    std::unique_ptr<SceneView> view;
    Camera camera;
};

} // namespace

TEST_F(PickingTest, OnlyHilitedOrSelectedMeshesArePickedInVertexMode) {
    EXPECT_TRUE(pickable().empty());
    run("select -r sheet");
    EXPECT_EQ(pickable().size(), 1u);
    run("select -r sheet.vtx[2]");
    EXPECT_EQ(pickable().size(), 1u);
    run("select -cl");
    HSelectionList hilite;
    hilite.add("sheet");
    HGlobal::setHiliteList(hilite);
    EXPECT_EQ(pickable().size(), 1u);
    run("selectType -vertex 0");
    EXPECT_TRUE(pickable().empty());
    run("setAttr sheet.visibility 0; selectType -vertex 1");
    EXPECT_TRUE(pickable().empty());
}

TEST_F(PickingTest, AClickPicksTheNearestProjectedVertexWithinTheRadius) {
    run("select -r sheet");
    std::vector<const MeshDrawData*> meshes = pickable();
    camera.frame(view->sceneBounds());
    unsigned target = sheet.vertexAt(1, -1);
    QPointF pixel = pixelOf(target) + QPointF(3, -2);
    std::optional<PickedVertices> picked = pickNearest(camera, meshes, pixel);
    ASSERT_TRUE(picked);
    EXPECT_EQ(picked->shape, sheet.shape);
    EXPECT_EQ(picked->vertices, std::vector<unsigned>{target});
    EXPECT_FALSE(pickNearest(camera, meshes, QPointF(-50, -50)));
}

TEST_F(PickingTest, ARectanglePicksTheVerticesInsideIt) {
    run("select -r sheet");
    std::vector<const MeshDrawData*> meshes = pickable();
    camera.frame(view->sceneBounds());
    std::vector<unsigned> corner{sheet.vertexAt(-2, -2), sheet.vertexAt(-1, -2),
                                 sheet.vertexAt(-2, -1), sheet.vertexAt(-1, -1)};
    QRectF area;
    for (unsigned v : corner)
        area = area.united(QRectF(pixelOf(v) - QPointF(2, 2), QSizeF(4, 4)));
    std::vector<PickedVertices> picked = pickInside(camera, meshes, area);
    ASSERT_EQ(picked.size(), 1u);
    std::vector<unsigned> got = picked[0].vertices;
    std::sort(got.begin(), got.end());
    std::sort(corner.begin(), corner.end());
    EXPECT_EQ(got, corner);
}

TEST_F(PickingTest, StatementsNameRunsOfVerticesByShape) {
    std::vector<PickedVertices> picked{{sheet.shape, {3, 4, 5, 9}}};
    EXPECT_EQ(selectStatement(SelectMode::kReplace, picked).toStdString(),
              "select -r sheetShape.vtx[3:5] sheetShape.vtx[9]");
    EXPECT_EQ(selectStatement(SelectMode::kAdd, picked).toStdString(),
              "select -add sheetShape.vtx[3:5] sheetShape.vtx[9]");
    EXPECT_EQ(selectStatement(SelectMode::kRemove, picked).toStdString(),
              "select -d sheetShape.vtx[3:5] sheetShape.vtx[9]");
    EXPECT_EQ(selectStatement(SelectMode::kReplace, {}).toStdString(), "select -cl");
    EXPECT_TRUE(selectStatement(SelectMode::kAdd, {}).isEmpty());
}
