// Dragging weights with the value slider and its box: the selected cells (one per row, the
// rightmost) or a whole influence column, absolute or relative to where the drag began.
#include "OutputRecorder.h"
#include "sceneWeights.h"
#include "windowControls.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class SliderDrag : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        body = vorel::makeMesh(3, 3, 1);
        vorel::setWeights(body, {{0.2, 0.8, 0.0}, {0.5, 0.5, 0.0}, {0.6, 0.2, 0.2}});
        selectAndLoad("body");
    }
    void addCell(int row, int column) {
        table->selectionModel()->select(model->index(row, column), QItemSelectionModel::Select);
    }
    // Switching the mode with one cell selected makes that cell's weight where the drag begins.
    void startDragAt(int row, int column) {
        selectCells({{row, column}});
        QTest::mouseClick(controls->absolute, Qt::LeftButton);
        QTest::mouseClick(controls->relative, Qt::LeftButton);
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(SliderDrag, RelativeDragMovesEveryRowByTheOffsetOfTheTopCell) {
    startDragAt(1, 0);
    addCell(2, 0);
    const vorel::MeshWeights before = vorel::everyVertexWeights(body);

    vorel::release(controls->valueSlider, 100);
    EXPECT_DOUBLE_EQ(vorel::weightsOf(body, 0)[0], 0.3);
    EXPECT_DOUBLE_EQ(vorel::weightsOf(body, 0)[1], 0.7);
    EXPECT_DOUBLE_EQ(vorel::weightsOf(body, 1)[0], 0.6);
    EXPECT_EQ(vorel::weightsOf(body, 2), before[2]);
    vorel::expectExactUndoRedo(body, before);

    // The slider holds the offset since the drag began, so a further 0.05 moves both again.
    const vorel::MeshWeights afterFirst = vorel::everyVertexWeights(body);
    vorel::release(controls->valueSlider, 150);
    EXPECT_DOUBLE_EQ(vorel::weightsOf(body, 0)[0], 0.35);
    EXPECT_DOUBLE_EQ(vorel::weightsOf(body, 1)[0], 0.65);
    vorel::expectExactUndoRedo(body, afterFirst);
}

TEST_F(SliderDrag, AbsoluteValueGoesToTheRightmostSelectedCellOfEachRow) {
    QTest::mouseClick(controls->absolute, Qt::LeftButton);
    selectCells({{1, 0}, {1, 1}, {2, 0}});
    const vorel::MeshWeights before = vorel::everyVertexWeights(body);

    vorel::enter(controls->valueEdit, "0.25");
    EXPECT_EQ(vorel::weightsOf(body, 0), (std::vector<double>{0.75, 0.25, 0.0}));
    EXPECT_EQ(vorel::weightsOf(body, 1), (std::vector<double>{0.25, 0.75, 0.0}));
    EXPECT_EQ(vorel::weightsOf(body, 2), before[2]);
    vorel::expectExactUndoRedo(body, before);
}

TEST_F(SliderDrag, WholeColumnTakesTheSliderValueUnlessAVertexIsLocked) {
    QTest::mouseClick(controls->absolute, Qt::LeftButton);
    table->selectColumn(0);
    const vorel::MeshWeights before = vorel::everyVertexWeights(body);

    vorel::release(controls->valueSlider, 600);
    for (int vertex = 0; vertex < 3; ++vertex)
        EXPECT_DOUBLE_EQ(vorel::weightsOf(body, vertex)[0], 0.6) << vertex;
    EXPECT_EQ(cellText(2, 0), "0.600");
    vorel::expectExactUndoRedo(body, before);

    table->selectRow(3);
    clickButton("Lock");
    const vorel::MeshWeights locked = vorel::everyVertexWeights(body);
    table->selectColumn(0);
    OutputRecorder output;
    vorel::release(controls->valueSlider, 300);
    EXPECT_EQ(output.texts(HCommandMessage::kInfo),
              std::vector<std::string>{"Can not set weight on this joint, since it is locked."});
    EXPECT_EQ(vorel::everyVertexWeights(body), locked);
}

TEST_F(SliderDrag, RelativeDragAfterAHeaderClickStartsFromTheColumnsTopWeight) {
    fixture::SkinnedMesh arm = vorel::makeMesh(4, 3, 1, "arm");
    vorel::setWeights(arm, {{0.5, 0.5, 0.0}, {0.3, 0.7, 0.0}, {0.4, 0.6, 0.0}, {0.0, 1.0, 0.0}});
    selectAndLoad("arm");
    QTest::mouseClick(controls->relative, Qt::LeftButton);
    clickColumnHeader(0);
    vorel::release(controls->valueSlider, 200);
    const double expected[] = {0.7, 0.5, 0.6, 0.2};
    for (int vertex = 0; vertex < 4; ++vertex)
        EXPECT_DOUBLE_EQ(vorel::weightsOf(arm, vertex)[0], expected[vertex]) << vertex;
}

TEST_F(SliderDrag, RelativeColumnDragClampsAtZero) {
    QTest::mouseClick(controls->relative, Qt::LeftButton);
    clickColumnHeader(1);
    // The column's top weight 0.8 is where the drag starts: -0.5 takes 0.2 below zero.
    vorel::release(controls->valueSlider, -500);
    EXPECT_DOUBLE_EQ(vorel::weightsOf(body, 0)[1], 0.3);
    EXPECT_EQ(vorel::weightsOf(body, 1)[1], 0.0);
    EXPECT_EQ(vorel::weightsOf(body, 2)[1], 0.0);
}
