// Locking and unlocking from the table's selection: what the buttons and the context menu
// store on the skin cluster and the influences, the split of a row or column lock when one of
// its cells is unlocked, unlock-all with its keyboard re-lock, and every message.
#include "HFnDependencyNode.h"
#include "HFnStringArrayData.h"
#include "HPlug.h"
#include "OutputRecorder.h"
#include "windowControls.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QApplication>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QMenu>
#include <QSlider>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class LockOperations : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 3);
        selectAndLoad("body");
    }
    HFnDependencyNode cluster() const { return HFnDependencyNode(body.clusterObject()); }
    // One lock of each grain: column 0, the row of vertex 3 and the cell of vertex 1 under
    // influence 1.
    void lockColumnRowAndCell() {
        table->selectColumn(0);
        clickButton("Lock");
        table->selectRow(4);
        clickButton("Lock");
        lockCell({2, 1});
    }
    std::vector<std::string> storedJointNames() const {
        HObject data;
        cluster().findPlug("lockedJointNames").getValue(data);
        std::vector<std::string> names;
        const HStringArray array = HFnStringArrayData(data).array();
        for (unsigned i = 0; i < array.length(); ++i)
            names.push_back(array[i].asChar());
        return names;
    }
    bool storedVertexLock(unsigned vertex) const {
        return cluster().findPlug("lockedVertexIndices").elementByLogicalIndex(vertex).asBool();
    }
    // The influence paths stored as locked cells of one vertex, emptied elements left out.
    std::vector<std::string> storedCellLocks(unsigned vertex) const {
        HPlug joints = cluster().findPlug("lockedLocalJoints");
        joints.selectAncestorLogicalIndex(vertex, cluster().attribute("lockedCellIndices"));
        std::vector<std::string> paths;
        for (unsigned j = 0; j < joints.numElements(); ++j)
            if (joints[j].asString().length() != 0)
                paths.push_back(joints[j].asString().asChar());
        return paths;
    }
    std::string path(size_t joint) const { return body.jointPath(joint).fullPathName().asChar(); }
    // Right-clicks the table and chooses `text` from the menu that pops up.
    void triggerMenuAction(const QString& text) {
        QMetaObject::invokeMethod(window, "showContextMenu", Q_ARG(QPoint, QPoint(5, 5)));
        QAction* chosen = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (QMenu* menu = qobject_cast<QMenu*>(widget))
                for (QAction* action : menu->actions())
                    if (menu->isVisible() && action->text() == text)
                        chosen = action;
        ASSERT_NE(chosen, nullptr) << "no menu entry " << text.toStdString();
        chosen->trigger();
        chosen->parentWidget()->close();
    }
    void pressKeys(int key) {
        QTest::keyClick(table, static_cast<Qt::Key>(key), Qt::ControlModifier);
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(LockOperations, ColumnLockSetsTheInfluenceLockStoresItsPathOnceAndKeyboardUndoesIt) {
    table->selectColumn(1);
    clickButton("Lock");
    EXPECT_TRUE(vorel::hostLocked(body, 1));
    EXPECT_EQ(storedJointNames(), std::vector<std::string>{path(1)});
    EXPECT_FALSE(editable(2, 1));
    table->setFocus();
    pressKeys(Qt::Key_Z);
    EXPECT_FALSE(vorel::hostLocked(body, 1));
    pressKeys(Qt::Key_Y);
    EXPECT_TRUE(vorel::hostLocked(body, 1));

    OutputRecorder output;
    clickButton("Lock");
    EXPECT_EQ(output.texts(HCommandMessage::kInfo),
              std::vector<std::string>{"This joint has already been locked."});
    EXPECT_EQ(storedJointNames(), std::vector<std::string>{path(1)});

    clickButton("UnLock");
    EXPECT_FALSE(vorel::hostLocked(body, 1));
    EXPECT_TRUE(storedJointNames().empty());
    EXPECT_TRUE(editable(2, 1));
}

TEST_F(LockOperations, InfluenceLockedInTheHostIsRecordedButNotStored) {
    ASSERT_TRUE(vorel::run("setAttr " + path(0) + ".lockInfluenceWeights 1"));
    OutputRecorder output;
    table->selectColumn(0);
    clickButton("Lock");
    EXPECT_EQ(output.texts(HCommandMessage::kInfo),
              std::vector<std::string>{"This joint has already been locked."});
    EXPECT_FALSE(editable(1, 0));
    EXPECT_TRUE(storedJointNames().empty());
}

TEST_F(LockOperations, RowsBeforeASelectedShapeRowAreLockedAndNoneAfterIt) {
    QItemSelectionModel* selection = table->selectionModel();
    selection->select(model->index(2, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->select(model->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    selection->select(model->index(3, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    OutputRecorder output;
    clickButton("Lock");
    EXPECT_EQ(
        output.texts(HCommandMessage::kInfo),
        std::vector<std::string>{
            "A shape row is selected for locking. Please only select vertex row for locking."});
    EXPECT_TRUE(storedVertexLock(1));
    EXPECT_FALSE(storedVertexLock(2));
    EXPECT_FALSE(editable(2, 0));
    EXPECT_TRUE(editable(3, 0));
}

TEST_F(LockOperations, UnlockingOneCellOfALockedRowLocksTheRestCellByCell) {
    table->selectRow(2);
    clickButton("Lock");
    ASSERT_TRUE(storedVertexLock(1));
    selectCells({{2, 1}});
    clickButton("UnLock");
    EXPECT_FALSE(storedVertexLock(1));
    EXPECT_EQ(storedCellLocks(1), (std::vector<std::string>{path(0), path(2)}));
    EXPECT_TRUE(editable(2, 1));
    EXPECT_FALSE(editable(2, 0));
    EXPECT_FALSE(editable(2, 2));
}

TEST_F(LockOperations, UnlockingOneCellOfALockedColumnLocksTheRestOfTheColumn) {
    table->selectColumn(2);
    clickButton("Lock");
    selectCells({{3, 2}});
    clickButton("UnLock");
    EXPECT_FALSE(vorel::hostLocked(body, 2));
    EXPECT_TRUE(storedJointNames().empty());
    EXPECT_TRUE(editable(3, 2));
    for (int row : {1, 2, 4})
        EXPECT_FALSE(editable(row, 2)) << row;
    EXPECT_EQ(storedCellLocks(0), std::vector<std::string>{path(2)});
    EXPECT_TRUE(storedCellLocks(2).empty());
}

TEST_F(LockOperations, ContextMenuLocksCellsOnceAndUnlocksThem) {
    selectCells({{1, 0}, {3, 2}});
    triggerMenuAction("Lock");
    triggerMenuAction("Lock");
    EXPECT_EQ(storedCellLocks(0), std::vector<std::string>{path(0)});
    EXPECT_EQ(storedCellLocks(2), std::vector<std::string>{path(2)});
    EXPECT_FALSE(editable(1, 0));

    triggerMenuAction("Unlock");
    EXPECT_TRUE(storedCellLocks(0).empty());
    EXPECT_TRUE(editable(1, 0));
    OutputRecorder output;
    triggerMenuAction("Unlock");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (std::vector<std::string>{"The selected cell is not in the locked list.",
                                        "The selected cell is not in the locked list."}));
}

TEST_F(LockOperations, UnlockAllAndItsKeyboardUndoBringEveryLockBack) {
    lockColumnRowAndCell();

    clickButton("UnLock All");
    EXPECT_FALSE(vorel::hostLocked(body, 0));
    EXPECT_FALSE(storedVertexLock(3));
    EXPECT_TRUE(storedCellLocks(1).empty());
    EXPECT_TRUE(editable(2, 1));

    table->setFocus();
    pressKeys(Qt::Key_Z);
    EXPECT_TRUE(vorel::hostLocked(body, 0));
    EXPECT_EQ(storedJointNames(), std::vector<std::string>{path(0)});
    EXPECT_TRUE(storedVertexLock(3));
    EXPECT_EQ(storedCellLocks(1), std::vector<std::string>{path(1)});
    EXPECT_FALSE(editable(2, 1));

    pressKeys(Qt::Key_Y);
    EXPECT_FALSE(vorel::hostLocked(body, 0));
    EXPECT_TRUE(editable(4, 1));
}

TEST_F(LockOperations, HostUndoAndRedoOfAColumnLockAreFollowedByTheTable) {
    table->selectColumn(1);
    clickButton("Lock");
    ASSERT_TRUE(vorel::run("undo"));
    EXPECT_FALSE(vorel::hostLocked(body, 1));
    EXPECT_TRUE(storedJointNames().empty());
    EXPECT_TRUE(editable(2, 1));
    EXPECT_FALSE(columnHeader(1, Qt::BackgroundRole).isValid());

    ASSERT_TRUE(vorel::run("redo"));
    EXPECT_TRUE(vorel::hostLocked(body, 1));
    EXPECT_EQ(storedJointNames(), std::vector<std::string>{path(1)});
    EXPECT_FALSE(editable(2, 1));

    // The undo of an unlock locks the column again, in the table and for the next load.
    clickButton("UnLock");
    ASSERT_TRUE(vorel::run("undo"));
    selectAndLoad("body");
    EXPECT_TRUE(vorel::hostLocked(body, 1));
    EXPECT_FALSE(editable(2, 1));
    // Edits after a host undo of the lock move the column like any other.
    ASSERT_TRUE(vorel::run("undo"));
    selectCells({{2, 1}});
    typeIntoCell({2, 1}, "0.5");
    EXPECT_EQ(vorel::weightsOf(body, 1)[1], 0.5);
}

TEST_F(LockOperations, EmptyRequestsAreReported) {
    OutputRecorder output;
    selectCells({});
    clickButton("Lock");
    clickButton("UnLock");
    clickButton("UnLock All");
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (std::vector<std::string>{
                  "There is nothing to lock. Please select joint column or vertex row to lock.",
                  "There is nothing to unlock. Please select locked joint column or vertex row "
                  "to unlock.",
                  "There is nothing to unlock."}));
}

// Locks are only worth setting if they outlive the session: each file format that stores them
// must give the reopened scene's table the same locked column, row and cell.
TEST_F(LockOperations, LocksSurviveSavingAndOpeningTheSceneAgain) {
    lockColumnRowAndCell();

    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    for (const char* name : {"locks.vscene", "locks.glb"}) {
        SCOPED_TRACE(name);
        const std::string file = folder.filePath(name).toStdString();
        ASSERT_TRUE(vorel::run("file -ea \"" + file + "\""));
        ASSERT_TRUE(vorel::run("file -f -new"));
        ASSERT_TRUE(vorel::run("file -f -o \"" + file + "\""));
        selectAndLoad("body");
        ASSERT_EQ(model->rowCount(), 5);

        for (int row = 1; row < 5; ++row)
            EXPECT_FALSE(editable(row, 0)) << "locked column, row " << row;
        for (int column = 0; column < 3; ++column)
            EXPECT_FALSE(editable(4, column)) << "locked row, column " << column;
        EXPECT_FALSE(editable(2, 1));
        EXPECT_TRUE(editable(2, 2));
        EXPECT_TRUE(editable(3, 1));
    }
}

TEST_F(LockOperations, ColumnLockOutlastsTheTemporaryLocksOfEdits) {
    // A locked cell of the locked column: typing into its row locks that influence for the
    // write, and must leave the column's own lock on afterwards.
    lockCell({1, 2});
    table->selectColumn(2);
    clickButton("Lock");
    typeIntoCell({1, 0}, "0.2");
    EXPECT_TRUE(vorel::hostLocked(body, 2));
    const double locked = vorel::weightsOf(body, 1)[2];
    typeIntoCell({2, 0}, "0.1");
    EXPECT_EQ(vorel::weightsOf(body, 1)[2], locked);

    // A column drag locks every locked column for its write.
    clickButton("UnLock All");
    table->selectColumn(1);
    clickButton("Lock");
    const std::vector<double> before = vorel::weightsOf(body, 0);
    table->selectColumn(0);
    vorel::release(vorel::WindowControls(window).valueSlider, 400);
    EXPECT_NE(vorel::weightsOf(body, 0)[0], before[0]);
    EXPECT_EQ(vorel::weightsOf(body, 0)[1], before[1]);
    EXPECT_TRUE(vorel::hostLocked(body, 1));
}
