// What the viewport draws, read back from its frames: the heat map of the current influence
// (hilite list or paint tool), unnormalised vertices, selected vertices, deformation by the
// joints, and a picture of it saved in the build tree.
#include "ColorRamp.h"
#include "HGlobal.h"
#include "viewportFixture.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace app::viewport;
using viewporttest::run;
using viewporttest::sameColour;
using viewporttest::vertexName;

using ViewportDrawing = viewporttest::ViewportTest;

namespace {

void hilite(const char* name) {
    HSelectionList list;
    list.add(name);
    HGlobal::setHiliteList(list);
}

} // namespace

TEST_F(ViewportDrawing, TheHeatMapShowsTheRampsTopAtWeightOneAndItsBottomAtZero) {
    QPointF leftVertex = pixelOf(sheet.vertexAt(-1, 1));
    QPointF rightVertex = pixelOf(sheet.vertexAt(1, 1));
    EXPECT_TRUE(sameColour(litColour(plainColour()), colourAt(draw(), leftVertex)));

    hilite("left");
    QImage frame = draw();
    EXPECT_TRUE(sameColour(litColour(rampColour(1.0f)), colourAt(frame, leftVertex)));
    EXPECT_TRUE(sameColour(litColour(rampColour(0.0f)), colourAt(frame, rightVertex)));
    EXPECT_TRUE(
        sameColour(litColour(rampColour(0.5f)), colourAt(frame, pixelOf(sheet.vertexAt(0, 1)))));
    QString picture = QDir(VIEWPORT_PICTURE_DIR).filePath("viewport-heat-map.png");
    EXPECT_TRUE(frame.save(picture, "PNG")) << picture.toStdString();

    hilite("right");
    frame = draw();
    EXPECT_TRUE(sameColour(litColour(rampColour(1.0f)), colourAt(frame, rightVertex)));
    EXPECT_TRUE(sameColour(litColour(rampColour(0.0f)), colourAt(frame, leftVertex)));
}

TEST_F(ViewportDrawing, WhileThePaintToolIsCurrentItsInfluenceIsShown) {
    hilite("left");
    run("PntPaintSkinWeightsTool; pntSkinSelectInfluence pntAttrSkinPaintCtx right");
    QPointF rightVertex = pixelOf(sheet.vertexAt(1, -1));
    EXPECT_TRUE(sameColour(litColour(rampColour(1.0f)), colourAt(draw(), rightVertex)));
    run("setToolTo selectSuperContext");
    EXPECT_TRUE(sameColour(litColour(rampColour(0.0f)), colourAt(draw(), rightVertex)));
}

TEST_F(ViewportDrawing, VerticesThatDoNotSumToOneShowInTheirColourWhileToggledOn) {
    hilite("left");
    unsigned vertex = sheet.vertexAt(1, -1);
    run("skinPercent -t left -tv 0.5 -nrm false sheetSkin " + vertexName(vertex));
    QPointF pixel = pixelOf(vertex);
    EXPECT_FALSE(sameColour(litColour(unnormalisedColour()), colourAt(draw(), pixel)));
    viewport().setShowUnnormalised(true);
    EXPECT_TRUE(sameColour(litColour(unnormalisedColour()), colourAt(draw(), pixel)));
    // Its neighbours sum to one: between them the colour fades back to the ramp.
    EXPECT_TRUE(
        sameColour(litColour(rampColour(0.0f)), colourAt(draw(), pixelOf(sheet.vertexAt(1, 1)))));
}

TEST_F(ViewportDrawing, SelectedVerticesAndTheVerticesOfHilitedMeshesShowAsPoints) {
    QPointF selectedPixel = pixelOf(sheet.vertexAt(1, 1));
    QPointF otherPixel = pixelOf(sheet.vertexAt(-1, -1));
    run("select -r " + vertexName(sheet.vertexAt(1, 1)));
    QImage frame = draw();
    QVector3D selectedColour = colourAt(frame, selectedPixel);
    EXPECT_FALSE(sameColour(litColour(plainColour()), selectedColour));
    EXPECT_TRUE(sameColour(litColour(plainColour()), colourAt(frame, otherPixel)));
    hilite("sheet");
    frame = draw();
    EXPECT_FALSE(sameColour(litColour(plainColour()), colourAt(frame, otherPixel)));
    EXPECT_FALSE(sameColour(selectedColour, colourAt(frame, otherPixel)));
    EXPECT_TRUE(sameColour(selectedColour, colourAt(frame, selectedPixel)));
}

TEST_F(ViewportDrawing, MovingAJointDeformsTheMeshAndSendsOnlyItsMatrices) {
    QPointF beyondLeftEdge = pixelOf(QVector3D(-2.5f, 1.0f, 1.0f));
    QImage before = draw();
    UploadCounts counts = viewport().uploads();
    run("setAttr left.tx -3");
    QImage after = draw();
    EXPECT_FALSE(sameColour(litColour(plainColour()), colourAt(before, beyondLeftEdge)));
    EXPECT_TRUE(sameColour(litColour(plainColour()), colourAt(after, beyondLeftEdge)));
    EXPECT_EQ(viewport().uploads().matrixUploads, counts.matrixUploads + 1);
    EXPECT_EQ(viewport().uploads().meshBuilds, counts.meshBuilds);
    EXPECT_EQ(viewport().uploads().skinVertices, counts.skinVertices);
    EXPECT_EQ(viewport().uploads().paintVertices, counts.paintVertices);
}
