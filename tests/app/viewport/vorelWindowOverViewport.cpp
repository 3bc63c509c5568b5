// The Vorel window beside the viewport, as a user works with the two: with "Highlight" on, the
// column of a joint selected in the table colours the mesh by that joint's weights, and the
// vertices clicked in the viewport become the table's selected rows.
#include "ColorRamp.h"
#include "viewportFixture.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using app::viewport::rampColour;
using viewporttest::sameColour;

using VorelWindowOverViewport = viewporttest::ViewportTestOn<vorel::VorelWindowTest>;

TEST_F(VorelWindowOverViewport, AHighlightedColumnColoursTheMeshByItsJoint) {
    selectAndLoad("sheet");
    clickButton("Highlight");
    ASSERT_TRUE(button("Highlight")->isChecked());
    const QPointF leftVertex = pixelOf(sheet.vertexAt(-1, 1));
    const QPointF rightVertex = pixelOf(sheet.vertexAt(1, 1));

    clickColumnHeader(columnNames().indexOf("left"));
    QImage frame = draw();
    EXPECT_TRUE(sameColour(litColour(rampColour(1.0f)), colourAt(frame, leftVertex)));
    EXPECT_TRUE(sameColour(litColour(rampColour(0.0f)), colourAt(frame, rightVertex)));

    clickColumnHeader(columnNames().indexOf("right"));
    frame = draw();
    EXPECT_TRUE(sameColour(litColour(rampColour(1.0f)), colourAt(frame, rightVertex)));
    EXPECT_TRUE(sameColour(litColour(rampColour(0.0f)), colourAt(frame, leftVertex)));
}

TEST_F(VorelWindowOverViewport, VerticesClickedInTheViewportBecomeTheSelectedRows) {
    selectAndLoad("sheet");
    const unsigned first = sheet.vertexAt(1, 1), second = sheet.vertexAt(-1, 0);
    draw();
    QTest::mouseClick(&viewport(), Qt::LeftButton, Qt::NoModifier, pixelOf(first).toPoint());
    QTest::mouseClick(&viewport(), Qt::LeftButton, Qt::ShiftModifier, pixelOf(second).toPoint());

    QStringList rows;
    for (const QModelIndex& row : table->selectionModel()->selectedRows())
        rows.append(model->headerData(row.row(), Qt::Vertical).toString());
    rows.sort();
    QStringList expected{QString("vtx[%1]").arg(first), QString("vtx[%1]").arg(second)};
    expected.sort();
    EXPECT_EQ(rows, expected);
}
