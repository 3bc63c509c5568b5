// The table as a spreadsheet: Ctrl+C puts exactly the selected range on the clipboard, the row
// query box shows only the matching vertex rows with their shapes' header rows, refuses texts
// that are not queries with the word named, and Ctrl+A then selects the shown rows only.
#include "OutputRecorder.h"
#include "sceneWeights.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMainWindow>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class Spreadsheet : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 3);
        vorel::setWeights(body,
                          {{0.5, 0.3, 0.2}, {0.25, 0.75, 0.0}, {0.3, 0.6, 0.1}, {1.0, 0.0, 0.0}});
        // A second mesh on the first two joints only: its rows lack the third column.
        arm = vorel::bindMesh("arm", {body.joints[0], body.joints[1]}, {{0.4, 0.6}, {0.9, 0.05}});
        selectAndLoad("body arm");
        QApplication::setActiveWindow(window);
        table->setFocus();
        queryEdit = window->findChild<QLineEdit*>("rowQueryEdit");
        ASSERT_NE(queryEdit, nullptr);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(table, key, modifiers);
    }
    // The clipboard's text after Ctrl+C, as a standard string so that failures print it.
    std::string copied() {
        QApplication::clipboard()->clear();
        press(Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text().toStdString();
    }
    void query(const QString& text) {
        queryEdit->setText(text);
        QTest::keyClick(queryEdit, Qt::Key_Return);
    }
    QStringList shownRows() const {
        QStringList shown;
        const QStringList names = rowNames();
        for (int row = 0; row < names.size(); ++row)
            if (!table->isRowHidden(row))
                shown.append(names[row]);
        return shown;
    }

    fixture::SkinnedMesh body;
    fixture::SkinnedMesh arm;
    QLineEdit* queryEdit = nullptr;
    OutputRecorder output;
};

} // namespace

TEST_F(Spreadsheet, CopyPutsTheSelectedRangeAsTabSeparatedLines) {
    // Rows: bodyShape, vtx[0..3], armShape, vtx[0..1]. The range runs over both shapes; the
    // header row is left out, unselected cells and the missing influence are blank.
    const QStringList names = rowNames();
    ASSERT_EQ(names.size(), 8);
    selectCells({{3, 1}, {4, 0}, {6, 1}, {6, 2}});
    EXPECT_EQ(copied(), ("\t" + columnNames().join('\t') + "\n" + //
                         names[0] + ".vtx[2]\t\t0.600\t\n" +      //
                         names[0] + ".vtx[3]\t1.000\t\t\n" +      //
                         names[5] + ".vtx[0]\t\t0.600\t\n")
                            .toStdString());
    // The copy follows the precision shown.
    QLineEdit* precision = nullptr;
    for (QLineEdit* edit : window->findChildren<QLineEdit*>())
        if (edit->text() == "0.001")
            precision = edit;
    ASSERT_NE(precision, nullptr);
    precision->setText("0.1");
    QTest::keyClick(precision, Qt::Key_Return);
    selectCells({{2, 0}});
    EXPECT_EQ(copied(), ("\tbodyJoint1\n" + names[0] + ".vtx[1]\t0.3\n").toStdString());
}

TEST_F(Spreadsheet, CopyLeavesOutRowsAQueryHidesAndColumnsTheFilterHides) {
    vorel::setWeights(body, {{0.5, 0.5, 0.0}, {0.25, 0.75, 0.0}, {0.4, 0.6, 0.0}, {1.0, 0.0, 0.0}});
    selectAndLoad("body arm");
    clickButton("Filter");
    ASSERT_TRUE(table->isColumnHidden(2));
    query("bodyJoint1 >= 0.5");
    press(Qt::Key_A, Qt::ControlModifier);
    const QStringList names = rowNames();
    EXPECT_EQ(copied(), ("\tbodyJoint1\tbodyJoint2\n" +         //
                         names[0] + ".vtx[0]\t0.500\t0.500\n" + //
                         names[0] + ".vtx[3]\t1.000\t0.000\n" + //
                         names[5] + ".vtx[1]\t0.900\t0.050\n")
                            .toStdString());
}

TEST_F(Spreadsheet, AQueryShowsMatchingVertexRowsUnderTheirShapes) {
    const QStringList all = rowNames();
    query("bodyJoint2 > 0.5 or sum < 0.99");
    EXPECT_EQ(shownRows(), (QStringList{all[0], "vtx[1]", "vtx[2]", all[5], "vtx[0]", "vtx[1]"}));
    query("influences == 1");
    EXPECT_EQ(shownRows(), (QStringList{all[0], "vtx[3]"}));
    query("");
    EXPECT_EQ(shownRows(), all);
    EXPECT_TRUE(output.texts(HCommandMessage::kError).empty());
}

TEST_F(Spreadsheet, LockedAndUnnormalisedRowsCanBeFound) {
    selectCells({{2, 1}});
    clickButton("Lock");
    vorel::setWeights(body, {{0.5, 0.3, 0.2}, {0.25, 0.75, 0.0}, {0.3, 0.6, 0.1}, {0.5, 0.0, 0.0}});
    selectAndLoad("body");
    query("locked");
    EXPECT_EQ(shownRows(), (QStringList{rowNames()[0], "vtx[1]"}));
    query("unnormalised");
    EXPECT_EQ(shownRows(), (QStringList{rowNames()[0], "vtx[3]"}));
}

TEST_F(Spreadsheet, AQueryThatCannotBeReadSaysWhyAndHidesNothing) {
    query("influences > 1");
    query("elbow > 0.5");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"Unknown joint \"elbow\" in the row query."});
    EXPECT_EQ(shownRows(), rowNames());
}

TEST_F(Spreadsheet, SelectAllTakesTheShownRowsOnlyAndAReloadIsQueriedAgain) {
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table->selectionModel()->selectedIndexes().size(), model->rowCount() * 3);
    query("bodyJoint1 < 0.35");
    press(Qt::Key_A, Qt::ControlModifier);
    QSet<int> selectedRows;
    for (const QModelIndex& index : table->selectionModel()->selectedIndexes())
        selectedRows.insert(index.row());
    EXPECT_EQ(selectedRows, (QSet<int>{0, 2, 3}));
    // Hidden rows stay loaded: a reload with the query applied picks from the new table.
    vorel::setWeights(body, {{0.3, 0.5, 0.2}, {0.6, 0.4, 0.0}, {0.3, 0.6, 0.1}, {1.0, 0.0, 0.0}});
    selectAndLoad("body");
    EXPECT_EQ(shownRows(), (QStringList{rowNames()[0], "vtx[0]", "vtx[2]"}));
}

namespace {

class Paste : public Spreadsheet {
protected:
    void paste(const QString& text, int row, int column) {
        table->setCurrentIndex(model->index(row, column));
        pasteKeeping(text);
    }
    // Pastes without moving the current cell, over the selection as it stands.
    void pasteKeeping(const QString& text) {
        QApplication::clipboard()->setText(text);
        press(Qt::Key_V, Qt::ControlModifier);
    }
    vorel::MeshWeights bodyWeights() const { return vorel::everyVertexWeights(body); }
};

} // namespace

TEST_F(Paste, ABlockLandsAtTheCurrentCellAndEachRowKeepsItsValues) {
    paste("0.125\t0.5\n0.25\t0.25\n", 2, 0);
    EXPECT_EQ(vorel::weightsOf(body, 1), (std::vector<double>{0.125, 0.5, 0.375}));
    const std::vector<double> second = vorel::weightsOf(body, 2);
    EXPECT_EQ(second[0], 0.25);
    EXPECT_EQ(second[1], 0.25);
    EXPECT_DOUBLE_EQ(second[2], 0.5);
    EXPECT_EQ(cellText(3, 2), "0.500");
    EXPECT_TRUE(output.texts(HCommandMessage::kError).empty());
}

TEST_F(Paste, NamesMapColumnsAndRowsWhateverTheCurrentCell) {
    const QString shape = rowNames()[0];
    paste("\tbodyJoint3\tbodyJoint1\n" + shape + ".vtx[3]\t0.25\t0.5\n", 6, 1);
    const std::vector<double> weights = vorel::weightsOf(body, 3);
    EXPECT_EQ(weights[2], 0.25);
    EXPECT_EQ(weights[0], 0.5);
    EXPECT_DOUBLE_EQ(weights[1], 0.25);
}

TEST_F(Paste, OneRowFillsEverySelectedRowAsOneUndoStep) {
    const auto before = bodyWeights();
    selectCells({{1, 0}, {2, 0}, {4, 1}});
    pasteKeeping("0.125,0.25,0.625");
    for (int vertex : {0, 1, 3})
        EXPECT_EQ(vorel::weightsOf(body, vertex), (std::vector<double>{0.125, 0.25, 0.625}))
            << vertex;
    EXPECT_EQ(vorel::weightsOf(body, 2), before[2]);
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_EQ(bodyWeights(), before);
    ASSERT_TRUE(vorel::run("redo"));
    EXPECT_EQ(vorel::weightsOf(body, 3), (std::vector<double>{0.125, 0.25, 0.625}));
    // The window's own Ctrl+Z shows the table from before the paste, as after a typed entry;
    // the scene is the host's undo's business.
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cellText(4, 0), "1.000");
    EXPECT_EQ(vorel::weightsOf(body, 3), (std::vector<double>{0.125, 0.25, 0.625}));
}

TEST_F(Paste, LockedCellsAreSkippedAndCountedAndOverfullRowsScaled) {
    selectCells({{2, 1}});
    clickButton("Lock");
    output.clear();
    paste("0.125\t0.5\t0.125\n0.75\t0.75\t0.5\n", 2, 0);
    // vtx[1] keeps its locked 0.75; the pasted values take the rest.
    EXPECT_EQ(vorel::weightsOf(body, 1), (std::vector<double>{0.125, 0.75, 0.125}));
    const std::vector<double> scaled = vorel::weightsOf(body, 2);
    EXPECT_DOUBLE_EQ(scaled[0], 0.375);
    EXPECT_DOUBLE_EQ(scaled[1], 0.375);
    EXPECT_DOUBLE_EQ(scaled[2], 0.25);
    EXPECT_EQ(output.texts(HCommandMessage::kInfo),
              (std::vector<std::string>{"1 locked cells were left as they were.",
                                        "The pasted values of 1 rows were scaled to sum to one."}));
}

TEST_F(Paste, TextThatCannotBePastedChangesNothing) {
    const auto before = bodyWeights();
    const std::string outOfRange = "The value entered has to be between 0.0 and 1.0.";
    paste("0.5\tabc\n", 1, 0);
    paste("0.5\t1.5\n", 1, 0);
    paste("abc\n", 1, 0);
    paste("\tbodyJoint1\tknee\nvtx[0]\t0.5\t0.5\n", 1, 0);
    paste("\tbodyJoint1\n" + rowNames()[0] + ".vtx[9]\t0.5\n", 1, 0);
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (std::vector<std::string>{
                  outOfRange, outOfRange, outOfRange, "Unknown joint \"knee\" in the pasted text.",
                  "The row \"" + rowNames()[0].toStdString() + ".vtx[9]\" is not in the table."}));
    EXPECT_EQ(bodyWeights(), before);
}

TEST_F(Paste, ACopyPastedBackGivesTheSameTable) {
    press(Qt::Key_A, Qt::ControlModifier);
    const std::string copiedTable = copied();
    ASSERT_TRUE(vorel::run("skinWeights -quantize 3"));
    selectAndLoad("body arm");
    table->setFocus();
    paste(QString::fromStdString(copiedTable), 0, 0);
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(copied(), copiedTable);
}
