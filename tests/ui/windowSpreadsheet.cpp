// The table as a spreadsheet: Ctrl+C puts exactly the selected range on the clipboard, the row
// query box shows only the matching vertex rows with their shapes' header rows, refuses texts
// that are not queries with the word named, and Ctrl+A then selects the shown rows only.
#include "OutputRecorder.h"
#include "vorelSession.h"

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

TEST_F(Spreadsheet, CopyFollowsThePrecisionShown) {
    QLineEdit* precision = nullptr;
    for (QLineEdit* edit : window->findChildren<QLineEdit*>())
        if (edit->text() == "0.001")
            precision = edit;
    ASSERT_NE(precision, nullptr);
    precision->setText("0.1");
    QTest::keyClick(precision, Qt::Key_Return);
    selectCells({{2, 0}});
    EXPECT_EQ(copied(), ("\tbodyJoint1\n" + rowNames()[0] + ".vtx[1]\t0.3\n").toStdString());
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
    output.clear();
    query("sum >");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"The row query needs a number after \">\"."});
    EXPECT_EQ(shownRows(), rowNames());
}

TEST_F(Spreadsheet, SelectAllTakesTheShownRowsOnlyAndAReloadIsQueriedAgain) {
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

TEST_F(Spreadsheet, WithoutAQuerySelectAllIsTheTablesOwn) {
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table->selectionModel()->selectedIndexes().size(), model->rowCount() * 3);
}
