// Picking with the mouse: a click selects the vertex under it through `select` (echoed and
// undoable), Shift adds, Ctrl removes, a dragged rectangle selects what it covers, Alt drags
// move the camera instead.
#include "HFnSingleIndexedComponent.h"
#include "HGlobal.h"
#include "OutputRecorder.h"
#include "viewportFixture.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <gtest/gtest.h>

using viewporttest::run;
using Names = std::vector<std::string>;

using ViewportPicking = viewporttest::ViewportTest;

namespace {

std::string shapeVertex(unsigned vertex) {
    return "sheetShape.vtx[" + std::to_string(vertex) + "]";
}

} // namespace

TEST_F(ViewportPicking, AClickSelectsTheVertexUnderTheMouseAsIfTypedAndUndoRestores) {
    run("select -r sheet");
    draw();
    unsigned first = sheet.vertexAt(1, 1), second = sheet.vertexAt(-1, 0);
    OutputRecorder output;
    QTest::mouseClick(&viewport(), Qt::LeftButton, Qt::NoModifier, pixelOf(first).toPoint());
    EXPECT_EQ(selected(), Names{shapeVertex(first)});
    EXPECT_EQ(output.texts(HCommandMessage::kHistory), Names{"select -r " + shapeVertex(first)});

    QTest::mouseClick(&viewport(), Qt::LeftButton, Qt::ShiftModifier, pixelOf(second).toPoint());
    EXPECT_EQ(selected(), (Names{shapeVertex(first), shapeVertex(second)}));
    QTest::mouseClick(&viewport(), Qt::LeftButton, Qt::ControlModifier, pixelOf(first).toPoint());
    EXPECT_EQ(selected(), Names{shapeVertex(second)});

    run("undo; undo; undo");
    EXPECT_EQ(selected(), Names{"sheet"});
}

TEST_F(ViewportPicking, AClickOnNothingClearsAndVertexModeOffPicksNothing) {
    run("select -r sheet");
    draw();
    QTest::mouseClick(&viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(3, 296));
    EXPECT_TRUE(selected().empty());
    run("select -r sheet; selectType -vertex 0");
    QTest::mouseClick(&viewport(), Qt::LeftButton, Qt::NoModifier,
                      pixelOf(sheet.vertexAt(0, 0)).toPoint());
    EXPECT_TRUE(selected().empty());
    run("selectType -vertex 1");
}

TEST_F(ViewportPicking, DraggingARectangleSelectsTheVerticesInside) {
    HSelectionList list;
    list.add("sheet");
    HGlobal::setHiliteList(list);
    draw();
    QPoint from = (pixelOf(sheet.vertexAt(1, -2)) + QPointF(-8, -8)).toPoint();
    QPoint to = (pixelOf(sheet.vertexAt(2, 2)) + QPointF(8, 8)).toPoint();
    QTest::mousePress(&viewport(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseRelease(&viewport(), Qt::LeftButton, Qt::NoModifier, to);
    HSelectionList active;
    HGlobal::getActiveSelectionList(active);
    HDagPath path;
    HObject component;
    ASSERT_EQ(active.length(), 1u);
    active.getDagPath(0, path, component);
    HFnSingleIndexedComponent vertices(component);
    HIntArray elements;
    vertices.getElements(elements);
    std::vector<int> got;
    for (unsigned i = 0; i < elements.length(); ++i)
        got.push_back(elements[i]);
    std::sort(got.begin(), got.end());
    std::vector<int> expected;
    for (double x : {1.0, 2.0})
        for (double z : {-2.0, -1.0, 0.0, 1.0, 2.0})
            expected.push_back(static_cast<int>(sheet.vertexAt(x, z)));
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(got, expected);
}

TEST_F(ViewportPicking, AltDragsMoveTheCameraAndSelectNothing) {
    run("select -r sheet");
    draw();
    QVector3D eye = viewport().camera().eye();
    QPoint centre(200, 150);
    QPoint end = centre + QPoint(0, -40);
    QTest::mousePress(&viewport(), Qt::LeftButton, Qt::AltModifier, centre);
    // A move with the button held (QTest's own moves carry no buttons).
    QMouseEvent move(QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton, Qt::AltModifier);
    QApplication::sendEvent(&viewport(), &move);
    QTest::mouseRelease(&viewport(), Qt::LeftButton, Qt::AltModifier, end);
    EXPECT_GT((viewport().camera().eye() - eye).length(), 0.5f);
    EXPECT_EQ(selected(), Names{"sheet"});
    QTest::keyClick(&viewport(), Qt::Key_F);
    EXPECT_NEAR(viewport().camera().target().y(), 1.0f, 1e-4f);
}
