// What the window's controls do with what the user types and drags before any weight changes:
// the conversions between the four small boxes and their sliders, the flood operation box, the
// value slider's range and its warnings, the checks of the smoothing boxes, and the keyboard
// undo and redo of those controls.
#include "OutputRecorder.h"
#include "sceneWeights.h"
#include "windowControls.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class WindowActions : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        body = vorel::makeMesh(4, 3, 2);
        selectAndLoad("body");
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(WindowActions, SmallBoxesAndSlidersFollowEachOtherWithTheirScales) {
    controls->floodOperation->setCurrentIndex(1);
    vorel::enter(controls->opacityEdit, "0.25");
    EXPECT_EQ(controls->opacitySlider->value(), 2500);
    vorel::release(controls->floodValueSlider, 7500);
    EXPECT_EQ(controls->floodValueEdit->text(), "0.750");
    controls->floodOperation->setCurrentIndex(0);
    vorel::enter(controls->differenceEdit, "2.5");
    EXPECT_EQ(controls->differenceSlider->value(), 2500);
    vorel::enter(controls->iterationsEdit, "7x");
    EXPECT_EQ(controls->iterationsSlider->value(), 0);
    EXPECT_EQ(controls->iterationsEdit->text(), "0");
    vorel::release(controls->iterationsSlider, 9);
    EXPECT_EQ(controls->iterationsEdit->text(), "9");

    // Ctrl+Z puts the line back where it was before its last change, Ctrl+Y again after it.
    vorel::undoKey(controls->iterationsEdit);
    EXPECT_EQ(controls->iterationsEdit->text(), "0");
    EXPECT_EQ(controls->iterationsSlider->value(), 0);
    vorel::redoKey(controls->iterationsEdit);
    EXPECT_EQ(controls->iterationsEdit->text(), "9");
    EXPECT_EQ(controls->iterationsSlider->value(), 9);
}

TEST_F(WindowActions, FloodOperationEnablesTheLinesItUses) {
    controls->floodOperation->setCurrentIndex(2);
    EXPECT_TRUE(controls->opacityEdit->isEnabled());
    EXPECT_TRUE(controls->floodValueSlider->isEnabled());
    EXPECT_FALSE(controls->differenceEdit->isEnabled());
    EXPECT_FALSE(controls->iterationsSlider->isEnabled());
    controls->floodOperation->setCurrentIndex(0);
    EXPECT_FALSE(controls->opacitySlider->isEnabled());
    EXPECT_TRUE(controls->iterationsEdit->isEnabled());

    OutputRecorder output;
    vorel::enter(controls->iterationsEdit, "5");
    controls->differenceEdit->setText("none");
    QTest::mouseClick(controls->floodApply, Qt::LeftButton);
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{
                  "Required Weight Difference or Smoothing Iterations value is invalid."});
}

TEST_F(WindowActions, ValueSliderWarnsWithoutCellsToMove) {
    const vorel::MeshWeights before = vorel::everyVertexWeights(body);
    OutputRecorder output;
    vorel::release(controls->valueSlider, 300);
    EXPECT_EQ(controls->valueSlider->value(), 0);
    EXPECT_EQ(controls->valueEdit->text(), "");
    selectCells({{0, 0}, {0, 1}});
    vorel::release(controls->valueSlider, 300);
    EXPECT_EQ(output.texts(HCommandMessage::kWarning),
              (std::vector<std::string>{"There is no cell selected for value change. Please "
                                        "select cell to change its value.",
                                        "There is no cell with valid data to be set."}));
    EXPECT_EQ(vorel::everyVertexWeights(body), before);
}

TEST_F(WindowActions, PrecisionSetsTheValueSliderScale) {
    vorel::enter(controls->precisionEdit, "0.0001");
    EXPECT_EQ(controls->valueSlider->minimum(), -10000);
    EXPECT_EQ(controls->valueSlider->maximum(), 10000);
    EXPECT_EQ(cellText(1, 0).size(), 6);

    // Ctrl+Z in the box goes back to three places, Ctrl+Y to four again.
    vorel::undoKey(controls->precisionEdit);
    EXPECT_EQ(controls->precisionEdit->text(), "0.001");
    EXPECT_EQ(cellText(1, 0).size(), 5);
    vorel::redoKey(controls->precisionEdit);
    EXPECT_EQ(cellText(1, 0).size(), 6);

    QTest::mouseClick(controls->absolute, Qt::LeftButton);
    EXPECT_EQ(controls->valueSlider->minimum(), 0);
    EXPECT_EQ(controls->valueSlider->maximum(), 10000);
}

TEST_F(WindowActions, KeyboardUndoOfApplyAndRoundFollowsTheTable) {
    const vorel::MeshWeights before = vorel::everyVertexWeights(body);
    vorel::enter(controls->maxInfluenceEdit, "1");
    clickButton("ApplyInfluence");
    const QString limited = cellText(1, 0);
    vorel::undoKey(table);
    EXPECT_NE(cellText(1, 0), limited);
    vorel::redoKey(table);
    EXPECT_EQ(cellText(1, 0), limited);

    // Undoing "Round" by the keyboard writes the unrounded weights back.
    vorel::run("undo");
    vorel::enter(controls->precisionEdit, "0.1");
    clickButton("RoundPrecision");
    EXPECT_NE(vorel::everyVertexWeights(body), before);
    vorel::undoKey(table);
    EXPECT_EQ(vorel::everyVertexWeights(body), before);
}
