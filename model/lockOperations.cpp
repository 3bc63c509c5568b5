// Locking and unlocking influences, vertices and cells from the table's selection. Each lock
// changes three things together: the model's lock list, the scene (the influence's
// ".lockInfluenceWeights" and the lock attributes stored on the skin clusters) and the table's
// colours.
#include "HFnDependencyNode.h"
#include "HFnStringArrayData.h"
#include "HGlobal.h"
#include "HPlug.h"
#include "HQtUtil.h"
#include "HStringArray.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QItemSelectionModel>

using namespace weightRows;

namespace {

const char* const kJointLocked = "This joint has already been locked.";
const char* const kShapeRowLock =
    "A shape row is selected for locking. Please only select vertex row for locking.";
const char* const kShapeRowUnlock =
    "A shape row is selected for unlocking. Please select the vertex row to unlock.";
const char* const kNothingToUnlock = "There is nothing to unlock.";
const char* const kNothingSelectedToUnlock =
    "There is nothing to unlock. Please select locked joint column or vertex row to unlock.";
const char* const kShapeInLockedRows = "A shape was mistakenly added into locked vertices array.";

// Adds `path` to, or takes it out of, the cluster's "lockedJointNames".
void editJointNames(const HObject& cluster, const HString& path, bool add) {
    HPlug plug = HFnDependencyNode(cluster).findPlug("lockedJointNames", true);
    HObject data;
    plug.getValue(data);
    const HStringArray names = data.isNull() ? HStringArray() : HFnStringArrayData(data).array();
    HStringArray kept;
    for (unsigned i = 0; i < names.length(); ++i)
        if (!(names[i] == path))
            kept.append(names[i]);
    if (add)
        kept.append(path);
    plug.setValue(HFnStringArrayData().create(kept));
}

// The influences locked on one vertex: element `vertex` of "lockedCellIndices".
HPlug cellLockPlug(const HObject& cluster, int vertex) {
    HFnDependencyNode node(cluster);
    HPlug joints = node.findPlug("lockedLocalJoints", true);
    joints.selectAncestorLogicalIndex(static_cast<unsigned>(vertex),
                                      node.attribute("lockedCellIndices"));
    return joints;
}

HString lockCommand(const HString& subject, const char* suffix) {
    return HString("setAttr ") + subject + suffix;
}

// True, after the message, when the selection holds nothing.
bool reportEmpty(const weightTableModel::SelectionSplit& split, const char* message) {
    if (!split.columns.isEmpty() || !split.rows.isEmpty() || !split.cells.isEmpty())
        return false;
    HGlobal::displayError(message);
    return true;
}

const char* const kNothingSelectedToLock =
    "There is nothing to lock. Please select joint column or vertex row to lock.";

} // namespace

weightTableModel::SelectionSplit weightTableModel::splitSelection() const {
    SelectionSplit split;
    if (!tableSelection)
        return split;
    QItemSelectionModel* selection = tableSelection;
    for (const QModelIndex& column : selection->selectedColumns())
        split.columns.append(column.column());
    for (const QModelIndex& row : selection->selectedRows())
        split.rows.append(row.row());
    for (const QModelIndex& cell : selection->selectedIndexes())
        if (!split.columns.contains(cell.column()) && !split.rows.contains(cell.row()))
            split.cells.append(cell);
    return split;
}

bool weightTableModel::isShapeRow(int row) const {
    return row < 0 || row >= weightRows.size() || !isVertexRow(weightRows.at(row));
}

bool weightTableModel::vertexOfLockRow(int row, HObject& cluster, int& vertex) const {
    if (isShapeRow(row) || !vertexIndexOfRowName(headerData(row, Qt::Vertical).toString(), vertex))
        return false;
    const int shape = loadedShapeOfRow(row);
    if (shape == -1)
        return false;
    cluster = skinClusters[static_cast<unsigned>(shape)];
    return true;
}

HString weightTableModel::influencePathOfColumn(int column) const {
    if (column < 0 || static_cast<unsigned>(column) >= influencePaths.length())
        return HString();
    return influencePaths[static_cast<unsigned>(column)].fullPathName();
}

void weightTableModel::notifyColumnLock(int column) {
    emit dataChanged(index(0, column), index(rowCount() - 1, column));
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void weightTableModel::notifyRowLock(int row) {
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    emit headerDataChanged(Qt::Vertical, row, row);
}

void weightTableModel::lockColumn(int column, bool storeName) {
    if (lockedColumns.contains(column)) {
        HGlobal::displayInfo(kJointLocked);
        return;
    }
    lockedColumns.append(column);
    const HString path = influencePathOfColumn(column);
    if (path.length() == 0)
        return;
    int locked = 0;
    HGlobal::executeCommand(HString("getAttr ") + path + ".lockInfluenceWeights", locked, false,
                            true);
    if (locked == 1) {
        HGlobal::displayInfo(kJointLocked);
    } else {
        HGlobal::executeCommand(lockCommand(path, ".lockInfluenceWeights 1"), false, true);
        for (unsigned shape = 0; storeName && shape < skinClusters.length(); ++shape)
            editJointNames(skinClusters[shape], path, true);
        if (storeName)
            recordJointLockCommand(column, true);
    }
    notifyColumnLock(column);
}

void weightTableModel::unlockColumn(int column) {
    lockedColumns.removeAll(column);
    const HString path = influencePathOfColumn(column);
    if (path.length() != 0) {
        HGlobal::executeCommand(lockCommand(path, ".lockInfluenceWeights 0"), false, true);
        for (unsigned shape = 0; shape < skinClusters.length(); ++shape)
            editJointNames(skinClusters[shape], path, false);
        recordJointLockCommand(column, false);
        notifyColumnLock(column);
    }
}

void weightTableModel::recordJointLockCommand(int column, bool locked) {
    const HDagPath& influence = influencePaths[static_cast<unsigned>(column)];
    WrittenJointLock& written = writtenJointLocks[HQtUtil::toQString(influence.fullPathName())];
    written.influence = influence;
    written.clusters = skinClusters;
    written.locked = locked;
}

void weightTableModel::followHostLocks() {
    // The lock and unlock commands of influences are entries of the host's undo queue, but the
    // joint locks stored on the skin clusters are not: where the host's undo or redo took such
    // a command back or made it again, the stored lock is changed to match.
    for (WrittenJointLock& written : writtenJointLocks) {
        const bool locked = weightWriting::influenceLockedInHost(written.influence);
        if (locked == written.locked || written.influence.node().isNull())
            continue;
        const HString path = written.influence.fullPathName();
        for (unsigned i = 0; i < written.clusters.length(); ++i)
            if (!written.clusters[i].isNull())
                editJointNames(written.clusters[i], path, locked);
        written.locked = locked;
    }
    if (weightRows.isEmpty())
        return;
    checkLockAttr();
    const int lastColumn = columnCount() - 1;
    if (lastColumn >= 0) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, lastColumn));
        emit headerDataChanged(Qt::Horizontal, 0, lastColumn);
    }
    emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
}

bool weightTableModel::lockRow(int row) {
    HObject cluster;
    int vertex = 0;
    if (isShapeRow(row)) {
        HGlobal::displayInfo(kShapeRowLock);
        return false;
    }
    if (lockedRows.contains(row)) {
        HGlobal::displayInfo("This row has already been locked.");
        return true;
    }
    lockedRows.append(row);
    if (vertexOfLockRow(row, cluster, vertex))
        HFnDependencyNode(cluster)
            .findPlug("lockedVertexIndices", true)
            .elementByLogicalIndex(static_cast<unsigned>(vertex))
            .setBool(true);
    notifyRowLock(row);
    return true;
}

void weightTableModel::unlockRow(int row) {
    lockedRows.removeAll(row);
    HObject cluster;
    int vertex = 0;
    if (vertexOfLockRow(row, cluster, vertex))
        HFnDependencyNode(cluster)
            .findPlug("lockedVertexIndices", true)
            .elementByLogicalIndex(static_cast<unsigned>(vertex))
            .setBool(false);
    notifyRowLock(row);
}

bool weightTableModel::lockCellAt(int row, int column) {
    if (isShapeRow(row)) {
        HGlobal::displayInfo(kShapeRowLock);
        return false;
    }
    storeCellLock(row, column, influencePathOfColumn(column));
    emit dataChanged(index(row, column), index(row, column));
    return true;
}

void weightTableModel::storeCellLock(int row, int column, const HString& path) {
    HObject cluster;
    int vertex = 0;
    if (vertexOfLockRow(row, cluster, vertex) && path.length() != 0) {
        HPlug joints = cellLockPlug(cluster, vertex);
        bool present = false;
        const unsigned count = joints.numElements();
        for (unsigned j = 0; j < count && !present; ++j)
            present = joints[j].asString() == path;
        if (!present)
            joints.elementByLogicalIndex(count).setString(path);
    }
    if (!isLockedCell(row, column))
        addLockedCell(row, column);
}

void weightTableModel::unlockCellAt(int row, int column) {
    removeLockedCell(row, column);
    releaseStoredCellLock(row, column);
}

void weightTableModel::releaseStoredCellLock(int row, int column) {
    HObject cluster;
    int vertex = 0;
    const HString path = influencePathOfColumn(column);
    if (vertexOfLockRow(row, cluster, vertex) && path.length() != 0) {
        // Array elements cannot be taken out; an emptied element names no influence.
        HPlug joints = cellLockPlug(cluster, vertex);
        for (unsigned j = 0; j < joints.numElements(); ++j)
            if (joints[j].asString() == path)
                joints[j].setString(HString());
    }
    emit dataChanged(index(row, column), index(row, column));
}

bool weightTableModel::unlockOneCell(int row, int column) {
    if (isLockedCell(row, column)) {
        unlockCellAt(row, column);
        return true;
    }
    // Unlocking one cell of a locked row or column keeps the rest of it locked, cell by cell.
    if (lockedRows.contains(row)) {
        unlockRow(row);
        for (int c = 0; c < columnCount(); ++c)
            if (c != column)
                lockCellAt(row, c);
        return true;
    }
    if (lockedColumns.contains(column)) {
        unlockColumn(column);
        // A column holds a cell per vertex: its path is found, and the views told, once.
        const HString path = influencePathOfColumn(column);
        for (int r = 0; r < weightRows.size(); ++r)
            if (r != row && !isShapeRow(r))
                storeCellLock(r, column, path);
        if (rowCount() > 0)
            emit dataChanged(index(0, column), index(rowCount() - 1, column));
        return true;
    }
    return false;
}

void weightTableModel::newLockSelected() {
    const SelectionSplit split = splitSelection();
    if (reportEmpty(split, kNothingSelectedToLock))
        return;
    for (int column : split.columns)
        lockColumn(column, true);
    for (int row : split.rows)
        if (!lockRow(row))
            return;
    for (const QModelIndex& cell : split.cells)
        if (!lockCellAt(cell.row(), cell.column()))
            return;
}

void weightTableModel::newUnlockSelected() {
    const SelectionSplit split = splitSelection();
    if (reportEmpty(split, kNothingSelectedToUnlock))
        return;
    for (int column : split.columns)
        if (lockedColumns.contains(column))
            unlockColumn(column);
    for (int row : split.rows) {
        if (isShapeRow(row)) {
            HGlobal::displayInfo(kShapeRowUnlock);
            return;
        }
        if (lockedRows.contains(row))
            unlockRow(row);
    }
    for (const QModelIndex& cell : split.cells)
        unlockOneCell(cell.row(), cell.column());
}

void weightTableModel::newUnlockAll() {
    releasedColumns = lockedColumns;
    releasedRows = lockedRows;
    releasedCells = lockedCells;
    if (lockedColumns.isEmpty() && lockedRows.isEmpty() && lockedCells.isEmpty()) {
        HGlobal::displayError(kNothingToUnlock);
        return;
    }
    for (int column : QList<int>(lockedColumns))
        unlockColumn(column);
    lockedColumns.clear();
    for (int row : QList<int>(lockedRows)) {
        if (isShapeRow(row))
            HGlobal::displayError(kShapeInLockedRows);
        else
            unlockRow(row);
    }
    lockedRows.clear();
    for (const QList<int>& cell : QList<QList<int>>(lockedCells)) {
        if (cell.size() != 2)
            continue;
        if (isShapeRow(cell[0])) {
            HGlobal::displayInfo(kShapeRowLock);
            return;
        }
        releaseStoredCellLock(cell[0], cell[1]);
    }
    clearLockedCells();
}

void weightTableModel::relockReleased() {
    for (const QList<int>& cell : QList<QList<int>>(releasedCells))
        if (cell.size() == 2 && !lockCellAt(cell[0], cell[1]))
            return;
    for (int column : QList<int>(releasedColumns))
        lockColumn(column, true);
    for (int row : QList<int>(releasedRows))
        if (!lockRow(row))
            return;
}

void weightTableModel::lockCell() {
    for (const QModelIndex& cell : selectedIndexes())
        if (!lockCellAt(cell.row(), cell.column()))
            return;
}

void weightTableModel::unlockCell() {
    for (const QModelIndex& cell : selectedIndexes()) {
        if (isShapeRow(cell.row())) {
            HGlobal::displayInfo(kShapeRowLock);
            return;
        }
        if (!unlockOneCell(cell.row(), cell.column()))
            HGlobal::displayError("The selected cell is not in the locked list.");
    }
}

// The older operations lock vertices through the skin cluster's own per-vertex lock and keep
// no stored lock attributes; no control uses them.

HString weightTableModel::vertexLockPlugName(int row) const {
    HObject cluster;
    int vertex = 0;
    if (!vertexOfLockRow(row, cluster, vertex))
        return HString();
    HString number;
    number.set(static_cast<double>(vertex));
    return HFnDependencyNode(cluster).name() + ".lockVertex[" + number + "]";
}

void weightTableModel::lockSelected() {
    const SelectionSplit split = splitSelection();
    if (reportEmpty(split, kNothingSelectedToLock))
        return;
    for (int column : split.columns)
        lockColumn(column, false);
    for (int row : split.rows) {
        if (isShapeRow(row)) {
            HGlobal::displayInfo(kShapeRowLock);
            return;
        }
        const HString plug = vertexLockPlugName(row);
        int locked = 0;
        HGlobal::executeCommand(HString("getAttr ") + plug, locked, false, true);
        if (locked == 1) {
            HGlobal::displayInfo("This vertex has already been locked.");
            continue;
        }
        HGlobal::executeCommand(lockCommand(plug, " 1"), false, true);
        if (!lockedRows.contains(row))
            lockedRows.append(row);
        notifyRowLock(row);
    }
}

void weightTableModel::unlockSelected() {
    const SelectionSplit split = splitSelection();
    if (reportEmpty(split, kNothingSelectedToUnlock))
        return;
    for (int column : split.columns) {
        if (!lockedColumns.contains(column)) {
            HGlobal::displayError("The selected joint is not in the locked list.");
            continue;
        }
        lockedColumns.removeAll(column);
        HGlobal::executeCommand(
            lockCommand(influencePathOfColumn(column), ".lockInfluenceWeights 0"), false, true);
        notifyColumnLock(column);
    }
    for (int row : split.rows) {
        if (isShapeRow(row)) {
            HGlobal::displayInfo(kShapeRowUnlock);
            return;
        }
        if (!lockedRows.contains(row)) {
            HGlobal::displayError("The selected vertex is not in the locked list.");
            continue;
        }
        lockedRows.removeAll(row);
        HGlobal::executeCommand(lockCommand(vertexLockPlugName(row), " 0"), false, true);
        notifyRowLock(row);
    }
}

void weightTableModel::unlockAll() {
    if (lockedColumns.isEmpty() && lockedRows.isEmpty()) {
        HGlobal::displayError(kNothingToUnlock);
        return;
    }
    for (int column : QList<int>(lockedColumns)) {
        const HString path = influencePathOfColumn(column);
        if (path.length() != 0)
            HGlobal::executeCommand(lockCommand(path, ".lockInfluenceWeights 0"), false, true);
    }
    for (int row : QList<int>(lockedRows)) {
        if (isShapeRow(row))
            HGlobal::displayError(kShapeInLockedRows);
        else
            HGlobal::executeCommand(lockCommand(vertexLockPlugName(row), " 0"), false, true);
    }
    lockedColumns.clear();
    lockedRows.clear();
}
