// The value slider's drag of the selected cells or of a whole influence column. The slider
// value is absolute (every target gets it) or the total offset since the drag began, measured
// on the reference cell: the topmost of the kept cells.
#include "HGlobal.h"
#include "weightTableModel.h"

#include <QHash>
#include <QItemSelectionModel>

using namespace weightRows;

namespace {

const char* const kNoWeightList = "There is no weight list displayed in the window.";
const char* const kLockedJoint = "Can not set weight on this joint, since it is locked.";

double clampWeight(double value) {
    return value < 0.0 ? 0.0 : (value > 1.0 ? 1.0 : value);
}

} // namespace

QModelIndexList weightTableModel::selectedColumns() const {
    if (!tableSelection)
        return QModelIndexList();
    return tableSelection->selectedColumns(0);
}

void weightTableModel::dragCells(double value, bool absolute) {
    if (weightRows.isEmpty()) {
        HGlobal::displayError(kNoWeightList);
        return;
    }
    const QModelIndexList selected = selectedIndexes();
    const QModelIndexList columns = selectedColumns();
    if (!columns.isEmpty()) {
        int column = -1;
        for (const QModelIndex& index : columns)
            column = qMax(column, index.column());
        bool inColumn = true;
        for (const QModelIndex& index : selected)
            inColumn = inColumn && index.column() == column;
        if (inColumn) {
            dragColumn(value, absolute);
            return;
        }
    }

    bool anyEligible = false;
    // One cell per row, the rightmost; rows keep the order in which they were first met.
    QModelIndexList kept;
    QHash<int, int> keptOfRow;
    for (const QModelIndex& index : selected) {
        const int row = index.row(), column = index.column();
        if (lockedColumns.contains(column) || lockedRows.contains(row) ||
            isLockedCell(row, column) || (filterOn && zeroColumns.contains(column)))
            continue;
        anyEligible = true;
        if (weightRows[row][column + 1] < 0.0)
            continue;
        auto found = keptOfRow.constFind(row);
        if (found == keptOfRow.constEnd()) {
            keptOfRow.insert(row, kept.size());
            kept.append(index);
        } else if (kept[*found].column() < column) {
            kept[*found] = index;
        }
    }
    if (!anyEligible)
        return;
    if (kept.isEmpty()) {
        HGlobal::displayError("There is no cell with valid data");
        return;
    }

    QModelIndex reference = kept.first();
    for (const QModelIndex& index : kept)
        if (index.row() < reference.row())
            reference = index;
    const double before = weightRows[reference.row()][reference.column() + 1];
    const double delta = value - (before - topRightValue);

    snapshotWeightRows();
    QList<double> values;
    for (const QModelIndex& index : kept)
        values.append(
            clampWeight(absolute ? value : weightRows[index.row()][index.column() + 1] + delta));
    pendingCellValues = cellValuesRequest(kept, values);
    HGlobal::executeCommand("vorelCmd -dragSlider", true, true);

    refreshVertexCells(kept);
    emit topRightCellDataChanged(weightRows[reference.row()][reference.column() + 1], before,
                                 topRightValue);
    setUpColumn();
}

void weightTableModel::dragColumn(double value, bool absolute) {
    int column = 0;
    const QModelIndexList columns = selectedColumns();
    if (!columns.isEmpty()) {
        column = columns.first().column();
        for (const QModelIndex& index : columns)
            column = qMax(column, index.column());
    }
    // Any locked vertex blocks the whole column, and says so in the words of a locked joint.
    if (lockedColumns.contains(column) || !lockedRows.isEmpty()) {
        HGlobal::displayInfo(kLockedJoint);
        return;
    }
    if (!lockedCells.isEmpty())
        return;

    int referenceRow = -1;
    for (int row = 0; row < weightRows.size() && referenceRow == -1; ++row)
        if (column + 1 < weightRows[row].size() && weightRows[row][column + 1] >= 0.0)
            referenceRow = row;
    const double before = referenceRow == -1 ? 0.0 : weightRows[referenceRow][column + 1];
    pendingColumnDrag.sliderDelta = value - (before - topRightValue);

    snapshotWeightRows();
    pendingColumnDrag.pendingColumn = column;
    pendingColumnDrag.sliderValue = value;
    pendingColumnDrag.sliderAbsolute = absolute;
    HGlobal::executeCommand("vorelCmd -dragSliderColumn", true, true);

    QModelIndexList cells;
    for (int row = 0; row < weightRows.size(); ++row)
        if (isVertexRow(weightRows[row]))
            cells.append(index(row, column));
    refreshVertexCells(cells);
    const double after = referenceRow == -1 ? 0.0 : weightRows[referenceRow][column + 1];
    emit topRightCellDataChanged(after, before, topRightValue);
    setUpColumn();
}
