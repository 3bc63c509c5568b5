// The table's own undo copies, its unrounded weights and the rounded list of "Round" belong
// to the table they were taken from: after a reload or an opened scene the window's Ctrl+Z
// finds nothing of the previous table to show or to write, while Ctrl+Z of "Load Component"
// still brings the previous table back whole.
#include "OutputRecorder.h"
#include "sceneWeights.h"
#include "windowControls.h"

#include <QLineEdit>
#include <QTableView>
#include <gtest/gtest.h>

namespace {

using vorel::everyVertexWeights;
using vorel::MeshWeights;

class TableUndoCopies : public vorel::VorelControlsTest {
protected:
    void SetUp() override {
        VorelControlsTest::SetUp();
        body = vorel::makeMesh(12, 3, 3);
        arm = vorel::makeMesh(4, 3, 3, "arm");
    }
    void setAutoUpdate(bool on) {
        QMetaObject::invokeMethod(model, "setAutoUpdate", Q_ARG(bool, on));
    }
    MeshWeights sceneWeights() const {
        MeshWeights weights = everyVertexWeights(body);
        for (const std::vector<double>& vertex : everyVertexWeights(arm))
            weights.push_back(vertex);
        return weights;
    }

    fixture::SkinnedMesh body;
    fixture::SkinnedMesh arm;
};

const std::string kRestoreFailed = "There is a problem with restoring weight data.";

} // namespace

TEST_F(TableUndoCopies, KeyboardUndoAfterAnAutomaticReloadShowsNothingOfThePreviousTable) {
    selectAndLoad("body arm");
    clickCell(1, 0);
    typeIntoCell({1, 0}, "0.5");
    setAutoUpdate(true);
    ASSERT_TRUE(vorel::run("select -r arm"));
    ASSERT_EQ(rowNames(), (QStringList{"armShape", "vtx[0]", "vtx[1]", "vtx[2]", "vtx[3]"}));
    const MeshWeights before = sceneWeights();
    const QString shown = cellText(1, 0);

    OutputRecorder output;
    vorel::undoKey(table);
    EXPECT_EQ(output.texts(HCommandMessage::kError), std::vector<std::string>{kRestoreFailed});
    EXPECT_EQ(model->rowCount(), 0);
    // Nothing of the two-shape table is left to edit from.
    output.clear();
    clickButton("ApplyInfluence");
    EXPECT_EQ(sceneWeights(), before);
    // Ctrl+Y brings back what was shown.
    vorel::redoKey(table);
    EXPECT_EQ(rowNames(), (QStringList{"armShape", "vtx[0]", "vtx[1]", "vtx[2]", "vtx[3]"}));
    EXPECT_EQ(cellText(1, 0), shown);
}

TEST_F(TableUndoCopies, KeyboardUndoOfRoundAfterAReloadWritesNothing) {
    selectAndLoad("body");
    vorel::enter(controls->precisionEdit, "0.01");
    clickButton("RoundPrecision");
    setAutoUpdate(true);
    // Other vertices of the same mesh, then another mesh.
    ASSERT_TRUE(vorel::run("select -r body.vtx[10] body.vtx[11]"));
    const MeshWeights rounded = sceneWeights();
    OutputRecorder output;
    vorel::undoKey(table);
    EXPECT_EQ(sceneWeights(), rounded);
    ASSERT_TRUE(vorel::run("select -r arm"));
    vorel::undoKey(table);
    vorel::redoKey(table);
    EXPECT_EQ(sceneWeights(), rounded);
    EXPECT_TRUE(output.texts(HCommandMessage::kError).empty());
}

TEST_F(TableUndoCopies, KeyboardUndoAfterOpeningASceneShowsNothingOfTheOldOne) {
    selectAndLoad("body");
    vorel::enter(controls->maxInfluenceEdit, "2");
    clickButton("ApplyInfluence");
    ASSERT_TRUE(vorel::run("file -f -new"));
    fixture::SkinnedMesh leg = vorel::makeMesh(3, 2, 2, "leg");
    const MeshWeights before = everyVertexWeights(leg);

    OutputRecorder output;
    vorel::undoKey(table);
    EXPECT_EQ(output.texts(HCommandMessage::kError), std::vector<std::string>{kRestoreFailed});
    EXPECT_EQ(model->rowCount(), 0);
    // With no table there is nothing to limit; the old scene's rows never come back.
    output.clear();
    clickButton("ApplyInfluence");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"There is no weight list displayed in the window."});
    vorel::redoKey(table);
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(everyVertexWeights(leg), before);
}

TEST_F(TableUndoCopies, KeyboardUndoOfALoadBringsThePreviousTableBackWhole) {
    selectAndLoad("body.vtx[3]");
    const QStringList first = rowNames();
    const QStringList columns = columnNames();
    const QString shown = cellText(1, 2);
    selectAndLoad("arm");
    vorel::undoKey(table);
    EXPECT_EQ(rowNames(), first);
    EXPECT_EQ(columnNames(), columns);
    EXPECT_EQ(cellText(1, 2), shown);
    // The table that came back is edited as any other.
    selectCells({{1, 0}});
    typeIntoCell({1, 0}, "0.5");
    EXPECT_EQ(vorel::weightsOf(body, 3)[0], 0.5);
    vorel::redoKey(table);
    EXPECT_EQ(rowNames(), (QStringList{"armShape", "vtx[0]", "vtx[1]", "vtx[2]", "vtx[3]"}));
}
