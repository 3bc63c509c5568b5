// vorelCmd's two smoothing edits. Smoothing skin weights runs the host command text the model
// prepared with undo on, so the host's undo queue keeps the smoothing inside this command's
// entry; paint smoothing records the painted vertices' weights first and writes them back in
// undoIt like any other vertex write.
#include "HFnSingleIndexedComponent.h"
#include "HGlobal.h"
#include "HIntArray.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "commandModelAccess.h"
#include "editorPointers.h"
#include "paintSmoothSequence.h"
#include "vorelCmd.h"
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

bool vorelCmd::preparePaintSmoothing() {
    if (!editorModel->getSkinPaintSmoothMode())
        return refuseUnprepared();
    const int column = editorModel->getPendingColumn();
    const QModelIndexList requested = editorModel->getPendingCells();
    const QList<int> shapes = editorModel->getPendingShapes();
    paintSmoothing = PaintSmoothRequest();
    paintSmoothing.influence = columnName(*editorModel, column);
    paintSmoothing.opacity = editorModel->getPaintSmoothOpacity();
    for (int lockColumn : editorModel->getPendingLockColumns())
        paintSmoothing.lockInfluences.append(columnName(*editorModel, lockColumn));
    cells.clear();
    // Only cells of the smoothed column with a weight, on one of the handed-over shapes.
    for (const QModelIndex& cell : requested) {
        const int r = cell.row();
        if (cell.column() != column || r < 0 || r >= weightRows.size())
            continue;
        const WeightRow& row = weightRows.at(r);
        const int shape = weightRows::shapeOfRow(row, shapePaths.length());
        if (shape == -1 || column + 1 >= row.size() || row.at(column + 1) < 0.0 ||
            !shapes.contains(shape))
            continue;
        PaintSmoothVertex vertex;
        vertex.shape = shape;
        vertex.skinCluster = skinClusters[static_cast<unsigned>(shape)];
        vertex.shapePath = shapePaths[static_cast<unsigned>(shape)];
        vertex.rowName = HQtUtil::toHString(editorModel->headerData(r, Qt::Vertical).toString());
        // A shape handed over twice paints its vertex twice, as the list says.
        for (int handed : shapes)
            if (handed == shape) {
                cells.append(cell);
                paintSmoothing.vertices.append(vertex);
            }
    }
    return true;
}

bool vorelCmd::prepareWeightSmoothing() {
    if (!editorModel->getSmoothSkinWeightsMode())
        return refuseUnprepared();
    smoothCommand = editorModel->getPendingSmoothCommand();
    cells = editorModel->getPendingCells();
    smoothSelection = selectionCopy();
    return true;
}

HStatus vorelCmd::writePaintSmoothing() {
    oldWeights.clear();
    if (cells.isEmpty() || paintSmoothing.vertices.isEmpty())
        return HS::kFailure;
    RecordedVertices recorded;
    const HStatus status = runPaintSmoothSequence(paintSmoothing, recorded);
    editComponents = recorded.components;
    editShapes = recorded.shapes;
    influenceCounts = recorded.influenceCounts;
    oldWeights = recorded.weights;
    return status;
}

HStatus vorelCmd::writeWeightSmoothing() {
    oldWeights.clear();
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
