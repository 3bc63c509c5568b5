// The maximum number of influences per vertex, and limiting rows to it: the model chooses the
// rows, refuses those whose locks hold weight, and hands the rest to "vorelCmd -numMax", which
// drops each row's smallest weights one at a time.
#include "HGlobal.h"
#include "weightTableModel.h"
#include "weightTableView.h"

#include <QItemSelectionModel>

using namespace weightRows;

QModelIndexList weightTableModel::selectedRows() const {
    if (!tableView || !tableView->selectionModel())
        return QModelIndexList();
    return tableView->selectionModel()->selectedRows(0);
}

void weightTableModel::setMaxValue(int maxNum) {
    lastMaxInfluences = maxInfluences;
    maxInfluences = maxNum;
    // Only the row headers show the limit.
    const QModelIndexList rows = selectedRows();
    if (rows.isEmpty()) {
        // An empty table has no header to repaint.
        if (rowCount() > 0)
            emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
        return;
    }
    for (const QModelIndex& row : rows)
        emit headerDataChanged(Qt::Vertical, row.row(), row.row());
}

void weightTableModel::applyMaxInfluence() {
    if (weightRows.isEmpty()) {
        HGlobal::displayError("There is no weight list displayed in the window.");
        return;
    }
    snapshotWeightRows();
    pendingRows.clear();
    const QModelIndexList rows = selectedRows();
    if (rows.isEmpty()) {
        for (int row = 0; row < weightRows.size(); ++row)
            if (isVertexRow(weightRows[row]))
                pendingRows.append(row);
    } else {
        for (const QModelIndex& row : rows)
            if (isVertexRow(weightRows[row.row()]))
                pendingRows.append(row.row());
    }
    limitRows(pendingRows);
    setUpColumn();
}

bool weightTableModel::rowLimitIsLocked(int row) const {
    if (lockedRows.contains(row))
        return true;
    const WeightRow& weights = weightRows[row];
    auto holdsWeight = [&](int column) {
        return column >= 0 && column + 1 < weights.size() && weights[column + 1] > 0.0;
    };
    for (const QList<int>& cell : lockedCells)
        if (cell.size() == 2 && cell[0] == row && holdsWeight(cell[1]))
            return true;
    for (int column : lockedColumns)
        if (holdsWeight(column))
            return true;
    return false;
}

void weightTableModel::limitRows(QList<int>& rows) {
    // A refused row is taken out and the walk still moves on, so the row that slides into its
    // place is handed over unchecked: users rely on the rows they get, so this stays.
    if (!lockedRows.isEmpty() || !lockedCells.isEmpty() || !lockedColumns.isEmpty()) {
        for (int k = 0; k < rows.size(); ++k) {
            if (!rowLimitIsLocked(rows[k]))
                continue;
            HGlobal::displayInfo("This row is locked or has locked cell, and its number of "
                                 "influence can not be changed.");
            rows.removeAt(k);
        }
    }
    HGlobal::executeCommand("vorelCmd -numMax", true, true);

    if (rows.isEmpty())
        return;
    int first = rows.first(), last = rows.first();
    for (int row : rows) {
        first = qMin(first, row);
        last = qMax(last, row);
    }
    const int lastColumn = weightRows.isEmpty() ? -1 : weightRows[0].size() - 2;
    if (lastColumn >= 0)
        emit dataChanged(index(first, 0), index(last, lastColumn));
    emit headerDataChanged(Qt::Vertical, first, last);
}
