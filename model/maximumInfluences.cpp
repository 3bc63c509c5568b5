// The maximum number of influences per vertex, and limiting rows to it: the model chooses the
// rows, refuses those whose locks hold weight, and hands the rest to "vorelCmd -numMax", which
// drops each row's smallest weights one at a time.
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QHash>
#include <QItemSelectionModel>
#include <QSet>

using namespace weightRows;

namespace {

// The lock check of limiting, gathered once for all rows: a row is refused when it is locked,
// or when a locked cell or locked influence of it holds weight. Where the table shows such a
// weight as 0 (too small for the precision), the weight the vertex holds decides.
class LimitLockCheck {
public:
    explicit LimitLockCheck(const weightTableModel& model)
        : model(model), rows(model.getWeightRows()), clusters(model.getSkinClusters()),
          shapes(model.getShapePaths()),
          lockedRows(model.getLockedRows().begin(), model.getLockedRows().end()) {
        for (const QList<int>& cell : model.getLockedCells())
            if (cell.size() == 2)
                lockedCells[cell[0]].append(cell[1]);
    }

    bool refuses(int row) {
        if (lockedRows.contains(row))
            return true;
        held.clear();
        for (int column : lockedCells.value(row))
            if (holdsWeight(row, column))
                return true;
        for (int column : model.getLockedColumns())
            if (holdsWeight(row, column))
                return true;
        return false;
    }

private:
    bool holdsWeight(int row, int column) {
        const WeightRow& shown = rows[row];
        if (column < 0 || column + 1 >= shown.size() || shown[column + 1] < 0.0)
            return false;
        if (shown[column + 1] > 0.0)
            return true;
        if (held.isEmpty())
            held = heldWeights(row);
        return column + 1 < held.size() && held[column + 1] > 0.0;
    }

    // The row with the weights its vertex holds in the skin cluster.
    WeightRow heldWeights(int row) {
        WeightRow weights = rows[row];
        const int shape = shapeOfRow(weights, shapes.length());
        int vertex = 0;
        if (shape == -1 ||
            !vertexIndexOfRowName(model.headerData(row, Qt::Vertical).toString(), vertex))
            return weights;
        HFnSkinCluster cluster(clusters[static_cast<unsigned>(shape)]);
        if (!columnsOfShape.contains(shape)) {
            HDagPathArray influences;
            cluster.influenceObjects(influences);
            QVector<int>& columns = columnsOfShape[shape];
            for (unsigned k = 0; k < influences.length(); ++k)
                columns.append(model.columnOfInfluence(influences[k]));
        }
        const QVector<int>& columns = columnsOfShape[shape];
        HDoubleArray values;
        unsigned count = 0;
        cluster.getWeights(shapes[static_cast<unsigned>(shape)],
                           weightWriting::singleVertexComponent(vertex), values, count);
        for (unsigned k = 0; k < count && k < values.length() && int(k) < columns.size(); ++k)
            if (columns[int(k)] >= 0 && columns[int(k)] + 1 < weights.size())
                weights[columns[int(k)] + 1] = values[k];
        return weights;
    }

    const weightTableModel& model;
    const WeightRows rows;
    const HObjectArray clusters;
    const HDagPathArray shapes;
    const QSet<int> lockedRows;
    QHash<int, QList<int>> lockedCells;
    QHash<int, QVector<int>> columnsOfShape;
    // The row being checked as its vertex holds it, read when first needed.
    WeightRow held;
};

} // namespace

QModelIndexList weightTableModel::selectedRows() const {
    if (!tableSelection)
        return QModelIndexList();
    return tableSelection->selectedRows(0);
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

void weightTableModel::limitRows(QList<int>& rows) {
    // A refused row is taken out and the walk still moves on, so the row that slides into its
    // place is handed over unchecked: users rely on the rows they get, so this stays.
    if (!lockedRows.isEmpty() || !lockedCells.isEmpty() || !lockedColumns.isEmpty()) {
        LimitLockCheck locks(*this);
        for (int k = 0; k < rows.size(); ++k) {
            if (!locks.refuses(rows[k]))
                continue;
            HGlobal::displayInfo("This row is locked or has locked cell, and its number of "
                                 "influence can not be changed.");
            rows.removeAt(k);
        }
    }
    pendingLimit = LimitRequest();
    pendingLimit.pendingRows = rows;
    pendingLimit.maxInfluences = maxInfluences;
    for (int row : rows) {
        // Rows outside the table are no rows to limit.
        if (row < 0 || row >= weightRows.size())
            continue;
        LimitedRow limited;
        limited.row = row;
        limited.shape = loadedShapeOfRow(row);
        if (!vertexOfRow(row, limited.vertex))
            limited.vertex = -1;
        limited.values = weightRows.at(row);
        pendingLimit.rows.append(limited);
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
