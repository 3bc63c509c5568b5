// Setting one influence column of one shape to a value: every vertex of the shape of the
// topmost row that has the influence gets the value, renormalised by the host.
#include "HGlobal.h"
#include "weightTableModel.h"

using namespace weightRows;

void weightTableModel::replaceValue(double value) {
    if (weightRows.isEmpty()) {
        HGlobal::displayError("There is no weight list displayed in the window.");
        return;
    }
    snapshotWeightRows();
    const double flood = value < 0.0 ? 0.0 : qMin(value, 1.0);

    pendingFlood = FloodRequest();
    const QModelIndexList columns = selectedColumns();
    if (columns.isEmpty()) {
        HGlobal::displayInfo("No joint has been selected for flood operation. Please select a "
                             "joint column first, then click on replace button.");
        return;
    }
    if (columns.size() > 1) {
        HGlobal::displayInfo("You can only do floor operation on one joint. Please select only "
                             "one joint column");
        return;
    }
    const int column = columns.first().column();
    bool columnLocked = lockedColumns.contains(column);
    for (const QList<int>& cell : lockedCells)
        columnLocked = columnLocked || (cell.size() == 2 && cell[1] == column);
    if (columnLocked) {
        HGlobal::displayInfo("This joint column has some locked cells. Please unlock those cells.");
        return;
    }

    int firstRow = 0;
    for (int row = 0; row < weightRows.size(); ++row) {
        if (column + 1 < weightRows[row].size() && weightRows[row][column + 1] >= 0.0) {
            firstRow = row;
            break;
        }
    }
    const int shape = static_cast<int>(weightRows[firstRow][0]);
    // A column without any vertex row (only shape header rows loaded) has nothing to flood.
    if (shape < 0)
        return;
    pendingFlood.pendingShapes.append(shape);
    pendingFlood.pendingColumn = column;
    pendingFlood.floodValue = flood;
    HGlobal::executeCommand("vorelCmd -replace", true, true);

    QModelIndexList cells;
    for (int row = firstRow; row < weightRows.size(); ++row)
        if (isVertexRow(weightRows[row]) && static_cast<int>(weightRows[row][0]) == shape)
            cells.append(index(row, column));
    refreshVertexCells(cells);
    setUpColumn();
}
