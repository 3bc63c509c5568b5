// The display precision: set from the precision box, rounded again from the unrounded weights,
// refused while anything is locked, and written into the scene by "Round".
#include "OutputRecorder.h"
#include "sceneWeights.h"
#include "windowControls.h"

#include <QLineEdit>
#include <QSlider>
#include <QTableView>
#include <gtest/gtest.h>

namespace {

class PrecisionRounding : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        body = vorel::makeMesh(2, 3, 1);
        vorel::setWeights(body, {{0.46, 0.27, 0.27}, {0.3334, 0.3333, 0.3333}});
        selectAndLoad("body");
    }
    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(PrecisionRounding, LoweringAndRaisingThePrecisionNeverLosesDigitsAndRoundWritesThem) {
    const vorel::MeshWeights before = vorel::everyVertexWeights(body);
    vorel::enter(controls->precisionEdit, "0.1");
    EXPECT_EQ(rowTexts(1), (QStringList{"0.5", "0.3", "0.2"}));
    vorel::enter(controls->precisionEdit, "0.0101");
    EXPECT_EQ(rowTexts(2), (QStringList{"0.33", "0.33", "0.34"}));
    vorel::enter(controls->precisionEdit, "0.001");
    EXPECT_EQ(rowTexts(1), (QStringList{"0.460", "0.270", "0.270"}));
    EXPECT_EQ(vorel::everyVertexWeights(body), before);

    vorel::enter(controls->precisionEdit, "0.01");
    clickButton("RoundPrecision");
    EXPECT_EQ(vorel::weightsOf(body, 1), (std::vector<double>{0.33, 0.33, 1.0 - (0.33 + 0.33)}));
    EXPECT_EQ(vorel::weightsOf(body, 0), (std::vector<double>{0.46, 0.27, 1.0 - (0.46 + 0.27)}));
    vorel::expectExactUndoRedo(body, before);
}

TEST_F(PrecisionRounding, BadPrecisionTextsAndLocksAreRefused) {
    OutputRecorder output;
    for (const QString text : {"1.0", ".5", "0.000", ""})
        vorel::enter(controls->precisionEdit, text);
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>(4, "The precision number is not set up correctly. Please "
                                          "use the 0.XXXX1 format."));

    // More places than the value slider can count.
    vorel::enter(controls->precisionEdit, "0.000000001");
    EXPECT_EQ(output.texts(HCommandMessage::kError).back(),
              "The precision number is not set up correctly. Please use the 0.XXXX1 format.");
    EXPECT_EQ(rowTexts(1), (QStringList{"0.460", "0.270", "0.270"}));
    vorel::enter(controls->precisionEdit, "0.00000001");
    EXPECT_EQ(controls->valueSlider->maximum(), 100000000);
    EXPECT_EQ(cellText(1, 0), "0.46000000");
    vorel::enter(controls->precisionEdit, "0.001");

    selectCells({{1, 1}});
    clickButton("Lock");
    output.clear();
    vorel::enter(controls->precisionEdit, "0.01");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{
                  "There is locked joint or vertex, please unlock all and then set precision."});
    EXPECT_EQ(rowTexts(1), (QStringList{"0.460", "0.270", "0.270"}));
}

TEST_F(PrecisionRounding, JointLockOfAnotherTableDoesNotBlockPrecision) {
    runtime::NodePtr elbow = scene().createNode("joint", "elbow");
    vorel::bindMesh("arm", {elbow}, {{1.0}});
    selectAndLoad("body arm");
    table->selectColumn(3);
    clickButton("Lock");
    // The elbow is no column of the body's table: its stored lock locks nothing there.
    selectAndLoad("body");
    OutputRecorder output;
    vorel::enter(controls->precisionEdit, "0.1");
    EXPECT_TRUE(output.texts(HCommandMessage::kError).empty());
    EXPECT_EQ(rowTexts(1), (QStringList{"0.5", "0.3", "0.2"}));
}

TEST_F(PrecisionRounding, RoundKeepsEveryVertexNormalisedWhenTheLastWeightWouldGoNegative) {
    runtime::NodePtr joints[4];
    for (int j = 0; j < 4; ++j)
        joints[j] = scene().createNode("joint", "leg" + std::to_string(j));
    fixture::SkinnedMesh leg = vorel::bindMesh("leg", {joints[0], joints[1], joints[2], joints[3]},
                                               {{0.35, 0.35, 0.25, 0.05}});
    selectAndLoad("leg");
    vorel::enter(controls->precisionEdit, "0.1");
    // 0.4 + 0.4 + 0.3 leave -0.1 to the last weight: the largest weight takes the remainder.
    EXPECT_EQ(rowTexts(1), (QStringList{"0.2", "0.4", "0.3", "0.1"}));
    clickButton("RoundPrecision");
    const std::vector<double> written = vorel::weightsOf(leg, 0);
    EXPECT_NEAR(written[0] + written[1] + written[2] + written[3], 1.0, 1e-12);
    EXPECT_NEAR(written[0], 0.2, 1e-12);
    EXPECT_EQ(written[3], 0.1);
}
