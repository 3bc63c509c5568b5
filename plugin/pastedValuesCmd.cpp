#include "pastedValuesCmd.h"

#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QHash>

using namespace commandModelAccess;

bool pastedValuesCmd::prepare(const CellValuesRequest& request, weightTableModel& model) {
    tableModel = &model;
    rowWrites.clear();
    const QModelIndexList& pasted = request.pendingCells;
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray paths = model.getShapePaths();
    const HDagPathArray influences = model.getInfluencePaths();
    // The columns of each row's locked cells, which keep their weights while a row is written.
    QHash<int, QList<int>> lockedCellColumns;
    for (const QList<int>& cell : model.getLockedCells())
        if (cell.size() == 2)
            lockedCellColumns[cell[0]].append(cell[1]);
    QHash<int, int> writeOfRow;
    for (int i = 0;
         i < pasted.size() && i < request.pendingValues.size() && i < request.identities.size();
         ++i) {
        const int r = pasted[i].row();
        const CellIdentity& identity = request.identities[i];
        if (identity.shape < 0 || static_cast<unsigned>(identity.shape) >= paths.length() ||
            identity.vertex < 0) {
            HGlobal::displayInfo("This is not a valid cell to edit.");
            rowWrites.clear();
            return false;
        }
        if (identity.influence < 0) {
            HGlobal::displayInfo("There is something wrong getting the joint index.");
            rowWrites.clear();
            return false;
        }
        int write = writeOfRow.value(r, -1);
        if (write == -1) {
            write = rowWrites.size();
            writeOfRow.insert(r, write);
            const unsigned shape = static_cast<unsigned>(identity.shape);
            RowWrite row;
            row.target.cluster = clusters[shape];
            row.target.shape = paths[shape];
            row.target.component = weightWriting::singleVertexComponent(identity.vertex);
            row.target.influenceCount = influenceCount(clusters[shape]);
            row.target.lockedInfluences =
                influencePathNames(influences, lockedCellColumns.value(r));
            row.target.rows.append(WrittenRow(r, identity.shape, identity.vertex));
            rowWrites.append(row);
        }
        rowWrites[write].influences.append(identity.influence);
        rowWrites[write].values.append(request.pendingValues[i]);
    }
    return !rowWrites.isEmpty();
}

HStatus pastedValuesCmd::writeRows() {
    HStatus status;
    for (const RowWrite& row : qAsConst(rowWrites))
        status = writeTarget(row.target, [&row](HFnSkinCluster& cluster, HDoubleArray* old) {
            return cluster.setWeights(row.target.shape, row.target.component, row.influences,
                                      row.values, true, old);
        });
    return status;
}

HStatus pastedValuesCmd::redoIt() {
    return writeAndRefresh(tableModel, [this]() { return writeRows(); });
}

HStatus pastedValuesCmd::undoIt() {
    return restoreAndRefresh(tableModel);
}
