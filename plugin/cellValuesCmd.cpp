#include "cellValuesCmd.h"

#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QHash>

using namespace commandModelAccess;

bool cellValuesCmd::prepare(const CellValuesRequest& request, weightTableModel& model,
                            Rules rules) {
    cellWrites.clear();
    tableModel = &model;
    const QModelIndexList& cells = request.pendingCells;
    if (cells.isEmpty() || request.identities.size() != cells.size() ||
        request.pendingValues.size() < cells.size())
        return false;
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray shapes = model.getShapePaths();
    const HDagPathArray influences = model.getInfluencePaths();
    // The columns of each row's locked cells, which keep their weights while a cell is written.
    QHash<int, QList<int>> lockedColumnsOfRow;
    for (const QList<int>& cell : model.getLockedCells())
        if (cell.size() == 2)
            lockedColumnsOfRow[cell[0]].append(cell[1]);
    QHash<unsigned, unsigned> countOfShape;

    for (int i = 0; i < cells.size(); ++i) {
        const int row = cells[i].row();
        const int column = cells[i].column();
        const CellIdentity& identity = request.identities[i];
        if (row < 0 && rules.reportRowNumbers) {
            HGlobal::displayInfo("There is an error getting row number");
            return false;
        }
        if (identity.shape < 0 || static_cast<unsigned>(identity.shape) >= shapes.length()) {
            HGlobal::displayInfo("This is not a valid cell to edit.");
            return false;
        }
        if (identity.vertex < 0) {
            HGlobal::displayInfo("There is something wrong accessing the vertex number.");
            return false;
        }
        if (identity.influence < 0) {
            HGlobal::displayInfo("There is something wrong getting the joint index.");
            return false;
        }
        const unsigned shape = static_cast<unsigned>(identity.shape);
        if (!countOfShape.contains(shape))
            countOfShape.insert(shape, influenceCount(clusters[shape]));
        CellWrite write;
        write.target.cluster = clusters[shape];
        write.target.shape = shapes[shape];
        write.target.component = weightWriting::singleVertexComponent(identity.vertex);
        write.target.influenceCount = countOfShape.value(shape);
        write.target.recordLocks = rules.recordLocks;
        write.influence = static_cast<unsigned>(identity.influence);
        write.value = request.pendingValues[i];
        QList<int> lockColumns;
        for (int locked : lockedColumnsOfRow.value(row))
            if (locked != column)
                lockColumns.append(locked);
        write.target.lockedInfluences = influencePathNames(influences, lockColumns);
        write.target.rows.append(WrittenRow{row, identity.shape, identity.vertex});
        cellWrites.append(write);
    }
    return true;
}

HStatus cellValuesCmd::writeCells() {
    HStatus status;
    for (const CellWrite& cell : qAsConst(cellWrites))
        status = writeTarget(cell.target, [&cell](HFnSkinCluster& cluster, HDoubleArray* old) {
            return cluster.setWeights(cell.target.shape, cell.target.component, cell.influence,
                                      cell.value, true, old);
        });
    return status;
}

HStatus cellValuesCmd::redoIt() {
    return writeAndRefresh(tableModel, [this]() { return writeCells(); });
}

HStatus cellValuesCmd::undoIt() {
    return restoreAndRefresh(tableModel);
}
