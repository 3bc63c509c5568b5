// Flood replace of one influence column: the shape of the topmost row with that influence gets
// the flood value times the opacity on every vertex, renormalised; the checks of the column
// selection and the opacity.
#include "OutputRecorder.h"
#include "sceneWeights.h"
#include "windowControls.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class FloodReplace : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        body = vorel::makeMesh(3, 3, 1);
        vorel::setWeights(body, {{0.2, 0.8, 0.0}, {0.5, 0.5, 0.0}, {0.6, 0.2, 0.2}});
        arm = vorel::bindMesh("arm", body.joints, {{0.5, 0.5, 0.0}, {0.2, 0.8, 0.0}});
        selectAndLoad("body arm");
        controls->floodOperation->setCurrentIndex(2);
    }
    void flood(const QString& value, const QString& opacity) {
        vorel::enter(controls->floodValueEdit, value);
        vorel::enter(controls->opacityEdit, opacity);
        QTest::mouseClick(controls->floodApply, Qt::LeftButton);
    }

    fixture::SkinnedMesh body;
    fixture::SkinnedMesh arm;
};

} // namespace

TEST_F(FloodReplace, OnlyTheTopmostShapeTakesValueTimesOpacity) {
    const vorel::MeshWeights bodyBefore = vorel::everyVertexWeights(body);
    const vorel::MeshWeights armBefore = vorel::everyVertexWeights(arm);
    table->selectColumn(0);
    flood("0.8", "0.5");
    for (int vertex = 0; vertex < 3; ++vertex)
        EXPECT_DOUBLE_EQ(vorel::weightsOf(body, vertex)[0], 0.4) << vertex;
    EXPECT_DOUBLE_EQ(vorel::weightsOf(body, 2)[1], 0.3);
    EXPECT_EQ(vorel::everyVertexWeights(arm), armBefore);
    EXPECT_EQ(cellText(1, 0), "0.400");
    vorel::expectExactUndoRedo(body, bodyBefore);

    // The value itself is not range-checked; the write clamps it.
    flood("2.0", "1.0");
    EXPECT_EQ(vorel::weightsOf(body, 1), (std::vector<double>{1.0, 0.0, 0.0}));
}

TEST_F(FloodReplace, ColumnSelectionAndOpacityAreChecked) {
    const vorel::MeshWeights before = vorel::everyVertexWeights(body);
    OutputRecorder output;
    flood("0.5", "1.0");
    selectCells({{1, 0}});
    flood("0.5", "1.0");
    table->selectColumn(0);
    table->setSelectionMode(QAbstractItemView::MultiSelection);
    table->selectColumn(1);
    flood("0.5", "1.0");
    const std::string noJoint = "No joint has been selected for flood operation. Please select a "
                                "joint column first, then click on replace button.";
    EXPECT_EQ(output.texts(HCommandMessage::kInfo),
              (std::vector<std::string>{noJoint, noJoint,
                                        "You can only do floor operation on one joint. Please "
                                        "select only one joint column"}));
    output.clear();
    flood("0.5", "1.5");
    flood("0.5", "x");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>(2, "Opacity number should be between 0.0 and 1.0."));
    EXPECT_EQ(vorel::everyVertexWeights(body), before);
}
