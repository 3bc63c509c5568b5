// The viewport shows every change in the next frame, sending the graphics card only what
// changed, and `refresh` draws at once.
#include "ColorRamp.h"
#include "HGlobal.h"
#include "viewportFixture.h"

#include <gtest/gtest.h>

using namespace app::viewport;
using viewporttest::run;
using viewporttest::sameColour;
using viewporttest::vertexName;

using ViewportUpdates = viewporttest::ViewportTest;

TEST_F(ViewportUpdates, AOneCellEditShowsInTheNextFrameWithoutRebuildingTheMesh) {
    HSelectionList list;
    list.add("left");
    HGlobal::setHiliteList(list);
    unsigned vertex = sheet.vertexAt(1, 1);
    QPointF pixel = pixelOf(vertex);
    EXPECT_TRUE(sameColour(litColour(rampColour(0.0f)), colourAt(draw(), pixel)));
    UploadCounts counts = viewport().uploads();

    run("skinPercent -t left -tv 1 sheetSkin " + vertexName(vertex));
    EXPECT_TRUE(sameColour(litColour(rampColour(1.0f)), colourAt(draw(), pixel),
                           viewporttest::kNearVertex));
    const UploadCounts& now = viewport().uploads();
    EXPECT_EQ(now.meshBuilds, counts.meshBuilds);
    EXPECT_EQ(now.skinVertices, counts.skinVertices + 1);
    EXPECT_EQ(now.paintVertices, counts.paintVertices + 1);
    EXPECT_EQ(now.matrixUploads, counts.matrixUploads);
    EXPECT_EQ(now.selectionUploads, counts.selectionUploads);
}

// Each refresh has drawn its frame when it returns, however soon it follows the last one (Qt
// spaces out the frames it draws when asked to repaint a window with OpenGL in it).
TEST_F(ViewportUpdates, RefreshDrawsAtOnceAndAnIdleViewportSendsNothing) {
    draw();
    UploadCounts counts = viewport().uploads();
    unsigned long long frames = viewport().framesDrawn();
    run("refresh");
    EXPECT_EQ(viewport().framesDrawn(), frames + 1);
    run("refresh");
    EXPECT_EQ(viewport().framesDrawn(), frames + 2);
    EXPECT_EQ(viewport().uploads().bytes, counts.bytes);
}
