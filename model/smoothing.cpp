// Smoothing, carried out by the host: the skin-cluster smoothing of the selected vertices (or
// of every vertex of every loaded cluster when nothing is selected), or the paint tool's
// smoothing of one influence over the selected cells. The model checks the selection and the
// locks, prepares the command text or the hand-over members, runs "vorelCmd" and reads the
// touched rows back.
#include "HFnDagNode.h"
#include "HFnDependencyNode.h"
#include "HGlobal.h"
#include "weightTableModel.h"

#include <initializer_list>

using namespace weightRows;

namespace {

const char* const kNoWeightList = "There is no weight list created yet.";

// "skinCluster -e -sw 0.1 -swi 5 -omi 1 cluster1;", numbers as the host writes them.
HString smoothingCommand(double difference, int iterations, const HObject& cluster) {
    HString differenceText, iterationsText;
    differenceText.set(difference);
    iterationsText.set(static_cast<double>(iterations));
    return HString("skinCluster") + " -e -sw " + differenceText + " -swi " + iterationsText +
           " -omi 1 " + HFnDependencyNode(cluster).name() + ";";
}

} // namespace

void weightTableModel::applySmoothSkinWeights(double value, int numIter) {
    if (weightRows.isEmpty()) {
        HGlobal::displayInfo(kNoWeightList);
        return;
    }
    snapshotWeightRows();
    const QModelIndexList rows = selectedRows();
    const QModelIndexList cells = selectedIndexes();
    pendingWeightSmoothing = WeightSmoothingRequest();
    pendingWeightSmoothing.pendingCells = cells;
    for (const QModelIndex& cell : cells) {
        const int shape = static_cast<int>(weightRows[cell.row()][0]);
        if (shape != -1 && !pendingWeightSmoothing.pendingShapes.contains(shape))
            pendingWeightSmoothing.pendingShapes.append(shape);
    }

    if (cells.isEmpty() && rows.isEmpty()) {
        for (unsigned i = 0; i < skinClusters.length(); ++i) {
            smoothSkinWeightsMode = true;
            pendingWeightSmoothing.pendingSmoothCommand =
                smoothingCommand(value, numIter, skinClusters[i]);
            HGlobal::executeCommand("vorelCmd -smoothSkinWeights", true, true);
        }
        QModelIndexList vertices;
        for (int row = 0; row < weightRows.size(); ++row)
            if (isVertexRow(weightRows[row]))
                vertices.append(index(row, 0));
        refreshVertexCells(vertices);
        smoothSkinWeightsMode = false;
        return;
    }

    const int shape = smoothedShape(cells, rows);
    if (shape < 0)
        return;

    const HString transform =
        HFnDagNode(shapePaths[static_cast<unsigned>(shape)].transform()).name();
    HString selection("select -r ");
    for (const QModelIndexList* list : {&cells, &rows})
        for (const QModelIndex& index : *list)
            if (isVertexRow(weightRows[index.row()]))
                selection += transform + "." + rowNames[static_cast<unsigned>(index.row())] + " ";
    selection += ";";

    // The command's own selection must not reload the table.
    const bool wasAutoUpdate = autoUpdate;
    autoUpdate = false;
    smoothSkinWeightsMode = true;
    pendingWeightSmoothing.pendingSmoothCommand =
        selection + smoothingCommand(value, numIter, skinClusters[static_cast<unsigned>(shape)]);
    HGlobal::executeCommand("vorelCmd -smoothSkinWeights", true, true);
    autoUpdate = wasAutoUpdate;

    refreshVertexCells(cells + rows);
    smoothSkinWeightsMode = false;
}

int weightTableModel::smoothedShape(const QModelIndexList& cells,
                                    const QModelIndexList& rows) const {
    int shape = -1;
    // The shape of the first vertex row found; every other selected row must belong to it.
    auto checkSameShape = [&](const QModelIndexList& list, bool search) {
        for (const QModelIndex& index : list) {
            if (index.row() < 0 || index.row() >= weightRows.size()) {
                HGlobal::displayError("The selected cell row number is invalid.");
                return false;
            }
            if (search && shape == -1 && isVertexRow(weightRows[index.row()]))
                shape = static_cast<int>(weightRows[index.row()][0]);
        }
        for (const QModelIndex& index : list) {
            if (weightRows[index.row()][0] != shape) {
                HGlobal::displayError(
                    "The vertices are not on the same skinCluster. You can only smooth vertices "
                    "on the same SkinCluster one at a time. Please only select vertices on the "
                    "same shape.");
                return false;
            }
        }
        return true;
    };
    if (!checkSameShape(cells, true))
        return -1;
    if (!rows.isEmpty() && !checkSameShape(rows, shape == -1))
        return -1;
    if (shape == -1) {
        HGlobal::displayError("There is no valid vertex cell selected for smoothing.");
        return -1;
    }
    if (shape >= static_cast<int>(shapePaths.length())) {
        HGlobal::displayError("Can not find valid shape for smoothing.");
        return -1;
    }
    return shape;
}

void weightTableModel::applySkinPaintSmooth(double value) {
    if (weightRows.isEmpty()) {
        HGlobal::displayInfo(kNoWeightList);
        return;
    }
    snapshotWeightRows();
    const QModelIndexList cells = selectedIndexes();
    const QModelIndexList columns = selectedColumns();
    int column = cells.isEmpty() ? -1 : cells.first().column();
    if (columns.isEmpty()) {
        for (const QModelIndex& cell : cells) {
            if (cell.column() != column) {
                HGlobal::displayInfo("Please select cells under same joint.");
                return;
            }
        }
        if (column == -1) {
            HGlobal::displayInfo("No joint has been selected for Smooth Operation. Please select "
                                 "a joint, or select cells under same joint");
            return;
        }
    } else {
        column = columns.first().column();
    }
    if (lockedColumns.contains(column)) {
        HGlobal::displayInfo("This joint has been locked. Please unlock the joint to do smooth.");
        return;
    }

    QModelIndexList kept;
    QList<int> lockColumns;
    for (const QModelIndex& cell : cells) {
        if (isLockedCell(cell.row(), cell.column()) || lockedRows.contains(cell.row()))
            continue;
        kept.append(cell);
        // The row's other locked cells keep their weights while the tool paints.
        for (const QList<int>& locked : lockedCells)
            if (locked.size() == 2 && locked[0] == cell.row() && !lockColumns.contains(locked[1]))
                lockColumns.append(locked[1]);
    }
    QModelIndexList painted;
    QList<int> shapes;
    for (const QModelIndex& cell : kept) {
        if (cell.column() != column || weightRows[cell.row()][column + 1] < 0.0)
            continue;
        painted.append(cell);
        const int shape = static_cast<int>(weightRows[cell.row()][0]);
        if (shape != -1 && !shapes.contains(shape))
            shapes.append(shape);
    }
    if (shapes.isEmpty() || kept.isEmpty())
        return;

    skinPaintSmoothMode = true;
    pendingPaintSmoothing.paintSmoothOpacity = value;
    pendingPaintSmoothing.pendingLockColumns = lockColumns;
    pendingPaintSmoothing.pendingCells = kept;
    pendingPaintSmoothing.pendingShapes = shapes;
    pendingPaintSmoothing.pendingColumn = column;
    HGlobal::executeCommand("vorelCmd -skinPaintSmooth", true, true);
    refreshVertexCells(painted);
    setUpColumn();
    skinPaintSmoothMode = false;
}
