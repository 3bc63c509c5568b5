// Typing values and operator entries into the table: every selected cell is written through
// the skin cluster with its vertex kept normalised, locked weights stay, and the host's undo
// and redo give back exactly the weights before and after.
#include "HFnDependencyNode.h"
#include "HPlug.h"
#include "OutputRecorder.h"
#include "sceneWeights.h"

#include <QAbstractItemModel>
#include <QMainWindow>
#include <QTableView>
#include <gtest/gtest.h>
#include <numeric>

namespace {

using Weights = std::vector<std::vector<double>>;

class CellEntry : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 3);
        vorel::setWeights(body, kStart);
        selectAndLoad("body");
    }
    Weights sceneWeights() const { return vorel::everyVertexWeights(body); }
    static double sum(const std::vector<double>& weights) {
        return std::accumulate(weights.begin(), weights.end(), 0.0);
    }

    const Weights kStart{{0.5, 0.3, 0.2}, {0.3, 0.3, 0.4}, {0.3, 0.6, 0.1}, {0.1, 0.2, 0.7}};
    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(CellEntry, PlainValueGoesIntoEverySelectedCellNormalisedAndUndoable) {
    selectCells({{1, 0}, {2, 0}, {3, 0}});
    typeIntoCell({1, 0}, "0.25");
    const Weights after = sceneWeights();
    for (int vertex = 0; vertex < 3; ++vertex) {
        EXPECT_EQ(after[vertex][0], 0.25);
        EXPECT_NEAR(sum(after[vertex]), 1.0, 1e-12);
    }
    // The rest goes to the other influences in proportion: 0.3 : 0.2 of 0.75.
    EXPECT_NEAR(after[0][1], 0.45, 1e-12);
    EXPECT_EQ(after[3], kStart[3]);
    EXPECT_EQ(cellText(1, 0), "0.250");
    EXPECT_EQ(cellText(1, 1), "0.450");
    vorel::expectExactUndoRedo(body, kStart);
}

// Values outside 0 to 1 change nothing; the shape header cell is skipped among the others.
TEST_F(CellEntry, RefusedValuesAndTheShapeHeaderCellAreReported) {
    OutputRecorder output;
    selectCells({{1, 0}});
    typeIntoCell({1, 0}, "1.5");
    typeIntoCell({1, 0}, "-0.1");
    EXPECT_EQ(sceneWeights(), kStart);
    selectCells({{0, 0}, {1, 0}});
    typeIntoCell({1, 0}, "0.6");
    EXPECT_EQ(vorel::weightsOf(body, 0)[0], 0.6);
    const std::string outOfRange = "The value entered has to be between 0.0 and 1.0.";
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (std::vector<std::string>{outOfRange, outOfRange,
                                        "There is an error passing in the index."}));
}

TEST_F(CellEntry, OperatorEntriesAreClampedAndOnlyTheFirstCellGetsTheOperation) {
    selectCells({{2, 0}});
    typeIntoCell({2, 0}, "+=2");
    EXPECT_EQ(vorel::weightsOf(body, 1)[0], 1.0);

    // The operator is cut from the one text all cells share: the second cell reads "0." as
    // its operator, which is none, and gets 0.
    selectCells({{3, 0}, {3, 1}});
    typeIntoCell({3, 0}, "+=0.1");
    const std::vector<double> vertex = vorel::weightsOf(body, 2);
    EXPECT_EQ(vertex[1], 0.0);
    EXPECT_NEAR(sum(vertex), 1.0, 1e-12);

    selectCells({{4, 2}});
    typeIntoCell({4, 2}, "*=0.5");
    EXPECT_EQ(vorel::weightsOf(body, 3)[2], 0.35);
}

TEST_F(CellEntry, LockedColumnAndLockedCellKeepTheirWeights) {
    selectCells({});
    table->selectColumn(2);
    clickButton("Lock");
    selectCells({{1, 0}});
    typeIntoCell({1, 0}, "0.1");
    std::vector<double> vertex = vorel::weightsOf(body, 0);
    EXPECT_EQ(vertex[2], 0.2);
    EXPECT_NEAR(vertex[1], 0.7, 1e-12);
    // The host's own lock of the column is on while it is locked in the table.
    EXPECT_TRUE(vorel::hostLocked(body, 2));

    clickButton("UnLock All");
    lockCell({2, 1});
    selectCells({{2, 0}});
    typeIntoCell({2, 0}, "0.5");
    vertex = vorel::weightsOf(body, 1);
    EXPECT_EQ(vertex[0], 0.5);
    EXPECT_EQ(vertex[1], 0.3);
    EXPECT_NEAR(vertex[2], 0.2, 1e-12);
    // The cell's influence was locked only for the write.
    EXPECT_FALSE(vorel::hostLocked(body, 1));
}

TEST_F(CellEntry, NormaliseModeZeroIsRaisedOnlyForTheWriteAndPutBack) {
    ASSERT_TRUE(vorel::run("setAttr skinCluster1.normalizeWeights 0"));
    selectCells({{1, 0}});
    typeIntoCell({1, 0}, "0.7");
    EXPECT_NEAR(sum(vorel::weightsOf(body, 0)), 1.0, 1e-12);
    HPlug mode = HFnDependencyNode(body.clusterObject()).findPlug("normalizeWeights");
    EXPECT_EQ(mode.asInt(), 0);
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(vorel::weightsOf(body, 0), kStart[0]);
    EXPECT_EQ(mode.asInt(), 0);
}

TEST_F(CellEntry, UndoOfTwoCellsOfOneVertexLeavesTheFirstWritesWeights) {
    selectCells({{1, 0}});
    typeIntoCell({1, 0}, "0.2");
    const std::vector<double> afterFirstWrite = vorel::weightsOf(body, 0);
    ASSERT_TRUE(vorel::run("undo"));
    ASSERT_EQ(vorel::weightsOf(body, 0), kStart[0]);

    // The kept weights go back in write order, so the second write's undo comes last.
    selectCells({{1, 0}, {1, 1}});
    typeIntoCell({1, 0}, "0.2");
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(vorel::weightsOf(body, 0), afterFirstWrite);
}

TEST_F(CellEntry, LockedCellsInTheSelectionKeepTheirWeights) {
    lockCell({2, 1});
    table->selectRow(4);
    clickButton("Lock");
    selectCells({{1, 0}, {2, 1}, {3, 0}, {4, 0}});
    typeIntoCell({1, 0}, "0.25");
    EXPECT_EQ(vorel::weightsOf(body, 0)[0], 0.25);
    EXPECT_EQ(vorel::weightsOf(body, 1)[1], 0.3);
    EXPECT_EQ(vorel::weightsOf(body, 2)[0], 0.25);
    EXPECT_EQ(vorel::weightsOf(body, 3), kStart[3]);
}
