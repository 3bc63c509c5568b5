#include "shapeWritesCmd.h"

#include "HFnDagNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <memory>

using namespace commandModelAccess;

bool shapeWritesCmd::startWrite(const weightTableModel& model, unsigned shape,
                                const QVector<int>& shapeRows, ShapeWrite& write) const {
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray paths = model.getShapePaths();
    write.cluster = clusters[shape];
    write.shape = paths[shape];
    write.component =
        weightWriting::wholeShapeComponent(paths[shape], model.getShapeComponents()[shape]);
    write.influenceCount = influenceCount(write.cluster);
    HIntArray vertices;
    HFnSingleIndexedComponent(write.component).getElements(vertices);
    if (static_cast<unsigned>(shapeRows.size()) != vertices.length())
        return false;
    for (int j = 0; j < shapeRows.size(); ++j)
        write.rows.append(
            WrittenRow{shapeRows[j], static_cast<int>(shape), vertices[static_cast<unsigned>(j)]});
    return true;
}

bool shapeWritesCmd::prepareRound(weightTableModel& model) {
    tableModel = &model;
    shapeWrites.clear();
    normalisationGuard = false;
    const WeightRows rows = model.getWeightRows();
    const unsigned shapes = model.getShapePaths().length();
    const QVector<QVector<int>> rowsOfShape = weightRows::vertexRowsByShape(rows, shapes);
    for (unsigned shape = 0; shape < shapes; ++shape) {
        ShapeWrite write;
        bool found = startWrite(model, shape, rowsOfShape[static_cast<int>(shape)], write);
        const QVector<int> columns = clusterColumns(model, write.cluster).columnOfInfluence;
        const int count = columns.size();
        write.influences = allInfluences(static_cast<unsigned>(count));
        write.values.setLength(found ? static_cast<unsigned>(write.rows.size() * count) : 0);
        // The values written are the table's, as rounded.
        for (int j = 0; found && j < write.rows.size(); ++j) {
            const WeightRow& row = rows.at(write.rows[j].row);
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
    normalisationGuard = true;
    const QList<int> shapes = model.getPendingShapes();
    const HString influence = columnName(model, model.getPendingColumn());
    const QVector<QVector<int>> rowsOfShape =
        weightRows::vertexRowsByShape(model.getWeightRows(), model.getShapePaths().length());
    for (int shape : shapes) {
        if (shape < 0 || static_cast<unsigned>(shape) >= model.getShapePaths().length())
            continue;
        ShapeWrite write;
        // The whole shape is written even when the table does not show each of its vertices;
        // the table then reads all of its rows again.
        if (!startWrite(model, static_cast<unsigned>(shape), rowsOfShape[shape], write))
            write.rows = {WrittenRow()};
        write.oneValue = true;
        // An influence the cluster lacks gives -1: that shape's write fails with the host's status.
        write.influence =
            static_cast<unsigned>(model.influenceIndexByName(write.cluster, influence));
        write.value = model.getFloodValue();
        shapeWrites.append(write);
    }
    return !shapeWrites.isEmpty();
}

bool shapeWritesCmd::prepareColumnDrag(weightTableModel& model) {
    tableModel = &model;
    shapeWrites.clear();
    normalisationGuard = true;
    const int column = model.getPendingColumn();
    const HDagPathArray influencePaths = model.getInfluencePaths();
    if (column < 0 || static_cast<unsigned>(column) >= influencePaths.length())
        return false;
    HStatus status;
    HFnDagNode influenceNode(influencePaths[static_cast<unsigned>(column)], &status);
    if (!status)
        return false;
    const HString influence = influenceNode.name();
    lockedInfluences = influencePathNames(influencePaths, model.getLockedColumns());
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
        write.influences.append(k);
        write.values.setLength(static_cast<unsigned>(write.rows.size()));
        for (int j = 0; j < write.rows.size(); ++j) {
            const WeightRow& row = rows.at(write.rows[j].row);
            const double shown = column + 1 < row.size() ? row.at(column + 1) : 0.0;
            write.values[static_cast<unsigned>(j)] = qBound(
                0.0,
                model.getSliderAbsolute() ? model.getSliderValue() : shown + model.getSliderDelta(),
                1.0);
        }
        shapeWrites.append(write);
    }
    return static_cast<bool>(status);
}

HStatus shapeWritesCmd::writeShapes() {
    HStatus status;
    for (const ShapeWrite& write : qAsConst(shapeWrites)) {
        writtenWeights::Entry entry;
        {
            // Locked influences keep their weights; these locks stay out of the undo queue.
            weightWriting::InfluenceLockGuard locks(lockedInfluences, false);
            std::unique_ptr<weightWriting::NormalisationGuard> normalisation;
            if (normalisationGuard)
                normalisation.reset(new weightWriting::NormalisationGuard(write.cluster));
            HFnSkinCluster cluster(write.cluster);
            status = write.oneValue
                         ? cluster.setWeights(write.shape, write.component, write.influence,
                                              write.value, true, &entry.oldWeights)
                         : cluster.setWeights(write.shape, write.component, write.influences,
                                              write.values, true, &entry.oldWeights);
        }
        entry.cluster = write.cluster;
        entry.shape = write.shape;
        entry.component = write.component;
        entry.influenceCount = write.influenceCount;
        entry.normalisationGuard = normalisationGuard;
        entry.rows = write.rows;
        written.append(std::move(entry));
    }
    return status;
}

HStatus shapeWritesCmd::redoIt() {
    return writeAndRefresh(tableModel, [this]() { return writeShapes(); });
}

HStatus shapeWritesCmd::undoIt() {
    // The undo of whole shapes leaves the hidden columns as they are.
    return restoreAndRefresh(tableModel, false);
}
