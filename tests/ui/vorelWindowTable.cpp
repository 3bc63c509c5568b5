// Working the table with the keyboard and the mouse: type-to-edit opens editors on every
// selected cell for the keys that start an entry, Ctrl+Z and Ctrl+Y step the table back and
// forward after an edit (after a load: weightCache.cpp), and the selection slots report what
// they must.
#include "OutputRecorder.h"
#include "qtWarnings.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class TableKeys : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 3);
        vorel::setWeights(body,
                          {{0.5, 0.3, 0.2}, {0.3, 0.3, 0.4}, {0.3, 0.6, 0.1}, {0.1, 0.2, 0.7}});
        selectAndLoad("body");
        // Keys reach the table only while its window is the active one.
        QApplication::setActiveWindow(window);
        table->setFocus();
    }
    int openEditors() const {
        int open = 0;
        for (int row = 0; row < model->rowCount(); ++row)
            for (int column = 0; column < model->columnCount(); ++column)
                if (table->indexWidget(model->index(row, column)))
                    ++open;
        return open;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(table, key, modifiers);
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(TableKeys, EntryKeyOpensAnEditorWhoseTextGoesToEverySelectedCellAndControlZUndoes) {
    selectCells({{1, 0}, {2, 0}, {3, 0}});
    press(Qt::Key_5);
    // The view keeps one editor open at a time: the first selected cell's.
    ASSERT_EQ(openEditors(), 1);
    QLineEdit* editor = qobject_cast<QLineEdit*>(table->indexWidget(model->index(1, 0)));
    ASSERT_NE(editor, nullptr);
    editor->setText("0.75");
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    for (int vertex = 0; vertex < 3; ++vertex)
        EXPECT_EQ(vorel::weightsOf(body, vertex)[0], 0.75) << vertex;
    EXPECT_EQ(vorel::weightsOf(body, 3)[0], 0.1);

    // Ctrl+Z and Ctrl+Y step the table back and forward.
    QMetaObject::invokeMethod(window, "tableCellSelected", Q_ARG(QModelIndex, model->index(1, 0)));
    table->setFocus();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cellText(1, 0), "0.500");
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(cellText(1, 0), "0.750");
}

TEST_F(TableKeys, EntryKeyOpensOneEditorOnTheFirstEditableSelectedCell) {
    vorel::QtWarningCatcher warnings;
    lockCell({1, 0});
    selectCells({{1, 0}, {2, 1}, {3, 1}});
    press(Qt::Key_5);
    EXPECT_EQ(openEditors(), 1);
    EXPECT_NE(table->indexWidget(model->index(2, 1)), nullptr);
    EXPECT_EQ(warnings.take(), std::vector<std::string>());
}

TEST_F(TableKeys, KeypadEnterOpensAnEditorAndReturnDoesNot) {
    selectCells({{1, 0}, {2, 0}});
    press(Qt::Key_Return);
    EXPECT_EQ(openEditors(), 0);
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(openEditors(), 1);
}

TEST_F(TableKeys, UndoNeedsExactlyControl) {
    selectCells({{1, 0}});
    typeIntoCell({1, 0}, "0.25");
    ASSERT_EQ(cellText(1, 0), "0.250");
    table->setFocus();
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cellText(1, 0), "0.250");
    EXPECT_EQ(openEditors(), 0);
}

TEST_F(TableKeys, ClickWithoutSelectionIsReported) {
    selectCells({});
    OutputRecorder output;
    QMetaObject::invokeMethod(window, "tableCellSelected", Q_ARG(QModelIndex, model->index(1, 0)));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              std::vector<std::string>{"There is no cell selected."});
}

class FreshWindowKeys : public vorel::VorelWindowTest {};

TEST_F(FreshWindowKeys, ControlZRightAfterOpeningDoesNothing) {
    OutputRecorder output;
    QTest::keyClick(table, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(table, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_TRUE(output.lines().empty());
    EXPECT_EQ(model->rowCount(), 0);
}
