#include "shapeWritesCmd.h"

#include "HFnDagNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"
#include "weightWriting.h"

using namespace commandModelAccess;

bool shapeWritesCmd::startWrite(const weightTableModel& model, unsigned shape,
                                const QVector<int>& shapeRows, ShapeWrite& write) const {
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray paths = model.getShapePaths();
    WriteTarget& target = write.target;
    target.cluster = clusters[shape];
    target.shape = paths[shape];
    target.component =
        weightWriting::wholeShapeComponent(paths[shape], model.getShapeComponents()[shape]);
    target.influenceCount = influenceCount(target.cluster);
    HIntArray vertices;
    HFnSingleIndexedComponent(target.component).getElements(vertices);
    if (static_cast<unsigned>(shapeRows.size()) != vertices.length())
        return false;
    for (int j = 0; j < shapeRows.size(); ++j)
        target.rows.append(
            WrittenRow{shapeRows[j], static_cast<int>(shape), vertices[static_cast<unsigned>(j)]});
    return true;
}

bool shapeWritesCmd::prepareRound(weightTableModel& model) {
    tableModel = &model;
    shapeWrites.clear();
    const WeightRows rows = model.getWeightRows();
    const unsigned shapes = model.getShapePaths().length();
    const QVector<QVector<int>> rowsOfShape = weightRows::vertexRowsByShape(rows, shapes);
    for (unsigned shape = 0; shape < shapes; ++shape) {
        ShapeWrite write;
        bool found = startWrite(model, shape, rowsOfShape[static_cast<int>(shape)], write);
        // Rounding writes the weights as they are, outside the normalisation guard.
        write.target.normalisationGuard = false;
        const QVector<int> columns = clusterColumns(model, write.target.cluster).columnOfInfluence;
        const int count = columns.size();
        write.influences = allInfluences(static_cast<unsigned>(count));
        const QVector<WrittenRow>& shapeRows = write.target.rows;
        write.values.setLength(found ? static_cast<unsigned>(shapeRows.size() * count) : 0);
        // The values written are the table's, as rounded.
        for (int j = 0; found && j < shapeRows.size(); ++j) {
            const WeightRow& row = rows.at(shapeRows[j].row);
            for (int k = 0; found && k < count; ++k) {
                found = columns[k] >= 0 && columns[k] + 1 < row.size();
                if (found)
                    write.values[static_cast<unsigned>(j * count + k)] = row.at(columns[k] + 1);
            }
        }
        if (!found) {
            // Nothing is written when some vertex has no row to take its weights from.
            shapeWrites.clear();
            reportNotSetUp();
            return false;
        }
        shapeWrites.append(write);
    }
    return true;
}

bool shapeWritesCmd::prepareFlood(weightTableModel& model) {
    tableModel = &model;
    shapeWrites.clear();
    const FloodRequest& request = model.getPendingFlood();
    const QList<int>& shapes = request.pendingShapes;
    const HString influence = columnName(model, request.pendingColumn);
    const QVector<QVector<int>> rowsOfShape =
        weightRows::vertexRowsByShape(model.getWeightRows(), model.getShapePaths().length());
    for (int shape : shapes) {
        if (shape < 0 || static_cast<unsigned>(shape) >= model.getShapePaths().length())
            continue;
        ShapeWrite write;
        // The whole shape is written even when the table does not show each of its vertices;
        // the table then reads all of its rows again.
        if (!startWrite(model, static_cast<unsigned>(shape), rowsOfShape[shape], write))
            write.target.rows = {WrittenRow()};
        write.oneValue = true;
        // An influence the cluster lacks gives -1: that shape's write fails with the host's status.
        write.influence =
            static_cast<unsigned>(model.influenceIndexByName(write.target.cluster, influence));
        write.value = request.floodValue;
        shapeWrites.append(write);
    }
    return !shapeWrites.isEmpty();
}

bool shapeWritesCmd::prepareColumnDrag(weightTableModel& model) {
    tableModel = &model;
    shapeWrites.clear();
    const ColumnDragRequest& request = model.getPendingColumnDrag();
    const int column = request.pendingColumn;
    const HDagPathArray influencePaths = model.getInfluencePaths();
    if (column < 0 || static_cast<unsigned>(column) >= influencePaths.length())
        return false;
    HStatus status;
    HFnDagNode influenceNode(influencePaths[static_cast<unsigned>(column)], &status);
    if (!status)
        return false;
    const HString influence = influenceNode.name();
    // Locked influences keep their weights; these locks stay out of the undo queue.
    const QList<HString> lockedInfluences =
        influencePathNames(influencePaths, model.getLockedColumns());
    const WeightRows rows = model.getWeightRows();
    const unsigned shapes = model.getShapePaths().length();
    const QVector<QVector<int>> rowsOfShape = weightRows::vertexRowsByShape(rows, shapes);
    for (unsigned shape = 0; shape < shapes; ++shape) {
        const int k = model.influenceIndexByName(model.getSkinClusters()[shape], influence);
        // A shape that is not bound to the influence keeps its weights.
        if (k == -1)
            continue;
        ShapeWrite write;
        if (!startWrite(model, shape, rowsOfShape[static_cast<int>(shape)], write)) {
            // Nothing is written when some vertex has no row to move from.
            shapeWrites.clear();
            reportNotSetUp();
            return false;
        }
        write.target.lockedInfluences = lockedInfluences;
        write.influences.append(k);
        const QVector<WrittenRow>& shapeRows = write.target.rows;
        write.values.setLength(static_cast<unsigned>(shapeRows.size()));
        for (int j = 0; j < shapeRows.size(); ++j) {
            const WeightRow& row = rows.at(shapeRows[j].row);
            const double shown = column + 1 < row.size() ? row.at(column + 1) : 0.0;
            write.values[static_cast<unsigned>(j)] = qBound(
                0.0, request.sliderAbsolute ? request.sliderValue : shown + request.sliderDelta,
                1.0);
        }
        shapeWrites.append(write);
    }
    return static_cast<bool>(status);
}

HStatus shapeWritesCmd::writeShapes() {
    HStatus status;
    for (const ShapeWrite& write : qAsConst(shapeWrites))
        status = writeTarget(write.target, [&write](HFnSkinCluster& cluster, HDoubleArray* old) {
            const WriteTarget& target = write.target;
            return write.oneValue ? cluster.setWeights(target.shape, target.component,
                                                       write.influence, write.value, true, old)
                                  : cluster.setWeights(target.shape, target.component,
                                                       write.influences, write.values, true, old);
        });
    return status;
}

HStatus shapeWritesCmd::redoIt() {
    return writeAndRefresh(tableModel, [this]() { return writeShapes(); });
}

HStatus shapeWritesCmd::undoIt() {
    // The undo of whole shapes leaves the hidden columns as they are.
    return restoreAndRefresh(tableModel, false);
}
