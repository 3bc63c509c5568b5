// The host's undo and redo of the window's edits work from what each edit recorded when it
// was made (skin clusters, shapes, vertices, influences), whatever the table shows by then:
// another load, a renamed shape, two shapes of one name.
#include "HGlobal.h"
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

using vorel::everyVertexWeights;
using vorel::MeshWeights;

class EditRecords : public vorel::VorelControlsTest {
protected:
    // Every vertex's weights as the table shows them, read back as numbers.
    MeshWeights shownWeights(int headerRow, unsigned vertices, int firstColumn, int columns) const {
        MeshWeights shown;
        for (unsigned v = 0; v < vertices; ++v) {
            shown.emplace_back();
            for (int c = firstColumn; c < firstColumn + columns; ++c)
                shown.back().push_back(cellText(headerRow + 1 + int(v), c).toDouble());
        }
        return shown;
    }
    static bool runUndoable(const std::string& command) {
        return static_cast<bool>(HGlobal::executeCommand(HString(command), false, true));
    }
    // The shown texts parse to the nearest double, the written weights may lie a hair away.
    static void expectWeights(const MeshWeights& held, const MeshWeights& shown) {
        ASSERT_EQ(held.size(), shown.size());
        for (size_t v = 0; v < held.size(); ++v)
            for (size_t k = 0; k < held[v].size(); ++k)
                EXPECT_NEAR(held[v][k], shown[v][k], 1e-12) << "vtx[" << v << "] " << k;
    }
};

} // namespace

TEST_F(EditRecords, LimitRedoneUnderAnotherTableRemovesTheSameInfluences) {
    fixture::SkinnedMesh body = vorel::makeMesh(49, 4, 3);
    fixture::SkinnedMesh arm = vorel::makeMesh(16, 4, 4, "arm");
    selectAndLoad("body");
    const MeshWeights before = everyVertexWeights(body);
    const MeshWeights armBefore = everyVertexWeights(arm);
    vorel::enter(controls->maxInfluenceEdit, "1");
    clickButton("ApplyInfluence");
    const MeshWeights limited = everyVertexWeights(body);
    ASSERT_NE(limited, before);

    // One vertex of the body, then the arm's rows and columns first.
    OutputRecorder output;
    for (const char* items : {"body.vtx[7]", "arm body"}) {
        SCOPED_TRACE(items);
        selectAndLoad(items);
        const QStringList rows = rowNames();
        ASSERT_TRUE(vorel::run("undo"));
        EXPECT_EQ(everyVertexWeights(body), before);
        ASSERT_TRUE(vorel::run("redo"));
        EXPECT_EQ(everyVertexWeights(body), limited);
        EXPECT_EQ(everyVertexWeights(arm), armBefore);
        EXPECT_EQ(rowNames(), rows);
    }
    EXPECT_TRUE(output.texts(HCommandMessage::kInfo).empty());
}

TEST_F(EditRecords, PaintSmoothingStaysOnItsMeshWhenAnotherIsLoaded) {
    fixture::SkinnedMesh body = vorel::makeMesh(9, 3, 3);
    fixture::SkinnedMesh arm = vorel::makeMesh(9, 3, 3, "arm");
    selectAndLoad("body");
    const MeshWeights before = everyVertexWeights(body);
    const MeshWeights armBefore = everyVertexWeights(arm);
    selectCells({{4, 0}, {5, 0}});
    controls->floodOperation->setCurrentIndex(1);
    vorel::enter(controls->opacityEdit, "1.0");
    vorel::enter(controls->floodValueEdit, "1.0");
    QTest::mouseClick(controls->floodApply, Qt::LeftButton);
    const MeshWeights smoothed = everyVertexWeights(body);
    ASSERT_NE(smoothed, before);

    selectAndLoad("arm");
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(everyVertexWeights(body), before);
    ASSERT_TRUE(vorel::run("redo"));
    EXPECT_EQ(everyVertexWeights(body), smoothed);
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(everyVertexWeights(body), before);
    EXPECT_EQ(everyVertexWeights(arm), armBefore);
}

TEST_F(EditRecords, RoundAfterRenamingTheShapeWritesTheShownWeights) {
    fixture::SkinnedMesh body = vorel::makeMesh(6, 3, 3);
    selectAndLoad("body");
    vorel::enter(controls->precisionEdit, "0.01");
    ASSERT_TRUE(runUndoable("rename bodyShape torsoShape"));
    const MeshWeights shown = shownWeights(0, 6, 0, 3);

    clickButton("RoundPrecision");
    expectWeights(everyVertexWeights(body), shown);
    // The renamed shape keeps its rows for every later edit.
    selectCells({{1, 0}});
    typeIntoCell({1, 0}, "0.5");
    EXPECT_EQ(vorel::weightsOf(body, 0)[0], 0.5);
    EXPECT_EQ(cellText(1, 0), "0.50");
}

TEST_F(EditRecords, ShapesOfOneNameEachRoundTheirOwnRows) {
    fixture::SkinnedMesh body = vorel::makeMesh(4, 3, 3);
    fixture::SkinnedMesh arm = vorel::makeMesh(5, 3, 3, "arm");
    ASSERT_TRUE(vorel::run("rename bodyShape skinShape"));
    ASSERT_TRUE(vorel::run("rename armShape skinShape"));
    selectAndLoad("body arm");
    ASSERT_EQ(rowNames().count("skinShape"), 2);
    vorel::enter(controls->precisionEdit, "0.01");
    const MeshWeights bodyShown = shownWeights(0, 4, 0, 3);
    const MeshWeights armShown = shownWeights(5, 5, 3, 3);

    clickButton("RoundPrecision");
    expectWeights(everyVertexWeights(body), bodyShown);
    expectWeights(everyVertexWeights(arm), armShown);
}
