#include "smoothingCmd.h"

#include "HFnSingleIndexedComponent.h"
#include "HGlobal.h"
#include "HIntArray.h"
#include "HQtUtil.h"
#include "commandModelAccess.h"
#include "weightTableModel.h"

using commandModelAccess::columnName;

namespace {

bool refuseUnprepared() {
    commandModelAccess::reportNotSetUp();
    return false;
}

// The active selection with components of its own, which later selections cannot change.
HSelectionList selectionCopy() {
    HSelectionList active;
    HGlobal::getActiveSelectionList(active);
    HSelectionList copy;
    for (unsigned i = 0; i < active.length(); ++i) {
        HDagPath path;
        HObject component;
        if (!active.getDagPath(i, path, component)) {
            HObject node;
            active.getDependNode(i, node);
            copy.add(node);
        } else if (component.isNull()) {
            copy.add(path);
        } else {
            HIntArray vertices;
            HFnSingleIndexedComponent(component).getElements(vertices);
            HFnSingleIndexedComponent elements;
            const HObject own = elements.create(component.apiType());
            elements.addElements(vertices);
            copy.add(path, own);
        }
    }
    return copy;
}

} // namespace

bool smoothingCmd::preparePaint(weightTableModel& model) {
    tableModel = &model;
    painting = true;
    paintRequest = PaintSmoothRequest();
    paintedRows.clear();
    if (!model.getSkinPaintSmoothMode())
        return refuseUnprepared();
    const PaintSmoothingRequest& request = model.getPendingPaintSmoothing();
    const int column = request.pendingColumn;
    const QModelIndexList& requested = request.pendingCells;
    const QList<int>& shapes = request.pendingShapes;
    const WeightRows rows = model.getWeightRows();
    const HObjectArray clusters = model.getSkinClusters();
    const HDagPathArray paths = model.getShapePaths();
    paintRequest.influence = columnName(model, column);
    paintRequest.opacity = request.paintSmoothOpacity;
    for (int lockColumn : request.pendingLockColumns)
        paintRequest.lockInfluences.append(columnName(model, lockColumn));
    // Only cells of the smoothed column with a weight, on one of the handed-over shapes.
    for (const QModelIndex& cell : requested) {
        const int r = cell.row();
        if (cell.column() != column || r < 0 || r >= rows.size())
            continue;
        const WeightRow& row = rows.at(r);
        const int shape = weightRows::shapeOfRow(row, paths.length());
        if (shape == -1 || column + 1 >= row.size() || row.at(column + 1) < 0.0 ||
            !shapes.contains(shape))
            continue;
        PaintSmoothVertex vertex;
        vertex.skinCluster = clusters[static_cast<unsigned>(shape)];
        vertex.shapePath = paths[static_cast<unsigned>(shape)];
        vertex.rowName = HQtUtil::toHString(model.headerData(r, Qt::Vertical).toString());
        WrittenRow written{r, shape, -1};
        weightRows::vertexIndexOfRowName(HQtUtil::toQString(vertex.rowName), written.vertex);
        // A shape handed over twice paints its vertex twice, as the list says.
        for (int handed : shapes)
            if (handed == shape) {
                paintRequest.vertices.append(vertex);
                paintedRows.append(written);
            }
    }
    return true;
}

bool smoothingCmd::prepareWeightSmoothing(weightTableModel& model) {
    tableModel = &model;
    painting = false;
    if (!model.getSmoothSkinWeightsMode())
        return refuseUnprepared();
    smoothCommand = model.getPendingWeightSmoothing().pendingSmoothCommand;
    handedCells = !model.getPendingWeightSmoothing().pendingCells.isEmpty();
    smoothSelection = selectionCopy();
    return true;
}

HStatus smoothingCmd::paint() {
    if (paintRequest.vertices.isEmpty())
        return HS::kFailure;
    RecordedVertices recorded;
    const HStatus status = runPaintSmoothSequence(paintRequest, recorded);
    for (int i = 0; i < recorded.components.size() && i < paintRequest.vertices.size(); ++i) {
        writtenWeights::Entry entry;
        entry.cluster = paintRequest.vertices[i].skinCluster;
        entry.shape = paintRequest.vertices[i].shapePath;
        entry.component = recorded.components[i];
        entry.influenceCount = static_cast<unsigned>(recorded.influenceCounts.value(i));
        entry.oldWeights = recorded.weights.value(i);
        entry.rows.append(paintedRows[i]);
        written.append(std::move(entry));
    }
    return status;
}

HStatus smoothingCmd::smoothWeights() {
    // The handed-over cells are no values to write: the cell step says so, and the smoothing
    // still runs.
    if (handedCells)
        commandModelAccess::reportNotSetUp();
    written.markRowsUnknown();
    if (smoothCommand.length() == 0) {
        HGlobal::displayError("Smooth skin weights command is not properly setup.");
        return HS::kFailure;
    }
    // A redo smooths under the selection the first run had, whatever was selected since.
    if (smoothedOnce)
        HGlobal::setActiveSelectionList(smoothSelection, HGlobal::kReplaceList);
    smoothedOnce = true;
    return HGlobal::executeCommand(smoothCommand, false, true);
}

HStatus smoothingCmd::redoIt() {
    return writeAndRefresh(tableModel, [this]() { return painting ? paint() : smoothWeights(); });
}

HStatus smoothingCmd::undoIt() {
    return restoreAndRefresh(tableModel);
}
