#include "pastedValuesCmd.h"

#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QHash>

using namespace commandModelAccess;

bool pastedValuesCmd::prepare(weightTableModel& model) {
    tableModel = &model;
    rowWrites.clear();
    const QModelIndexList pasted = model.getPendingCells();
    const QList<double> values = model.getPendingValues();
    const WeightRows rows = model.getWeightRows();
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray paths = model.getShapePaths();
    const HDagPathArray influences = model.getInfluencePaths();
    // The columns of each row's locked cells, which keep their weights while a row is written.
    QHash<int, QList<int>> lockedCellColumns;
    for (const QList<int>& cell : model.getLockedCells())
        if (cell.size() == 2)
            lockedCellColumns[cell[0]].append(cell[1]);
    QHash<int, int> writeOfRow;
    for (int i = 0; i < pasted.size() && i < values.size(); ++i) {
        const int r = pasted[i].row();
        const int shape =
            r >= 0 && r < rows.size() ? weightRows::shapeOfRow(rows.at(r), paths.length()) : -1;
        int vertex = 0;
        if (shape == -1 || !vertexOfRow(model, r, vertex)) {
            HGlobal::displayInfo("This is not a valid cell to edit.");
            rowWrites.clear();
            return false;
        }
        const HObject& cluster = clusters[static_cast<unsigned>(shape)];
        const int influence =
            model.influenceIndexByName(cluster, columnName(model, pasted[i].column()));
        if (influence == -1) {
            HGlobal::displayInfo("There is something wrong getting the joint index.");
            rowWrites.clear();
            return false;
        }
        int write = writeOfRow.value(r, -1);
        if (write == -1) {
            write = rowWrites.size();
            writeOfRow.insert(r, write);
            RowWrite row;
            row.target.cluster = cluster;
            row.target.shape = paths[static_cast<unsigned>(shape)];
            row.target.component = weightWriting::singleVertexComponent(vertex);
            row.target.influenceCount = influenceCount(cluster);
            row.target.lockedInfluences =
                influencePathNames(influences, lockedCellColumns.value(r));
            row.target.rows.append(WrittenRow{r, shape, vertex});
            rowWrites.append(row);
        }
        rowWrites[write].influences.append(influence);
        rowWrites[write].values.append(values[i]);
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
