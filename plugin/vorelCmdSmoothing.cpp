// vorelCmd's two smoothing edits. Smoothing skin weights runs the host command text the model
// prepared with undo on, so the host's undo queue keeps the smoothing inside this command's
// entry; paint smoothing records the painted vertices' weights first and writes them back in
// undoIt like any other vertex write.
#include "HGlobal.h"
#include "editorPointers.h"
#include "paintSmoothSequence.h"
#include "vorelCmd.h"
#include "weightTableModel.h"

namespace {

bool refuseUnprepared() {
    HGlobal::displayInfo("Data was not set up properly before executing this command. Please "
                         "reload data into vorel.");
    return false;
}

} // namespace

bool vorelCmd::preparePaintSmoothing() {
    if (!editorModel->getSkinPaintSmoothMode())
        return refuseUnprepared();
    smoothLockColumns = editorModel->getPendingLockColumns();
    smoothColumn = editorModel->getPendingColumn();
    smoothOpacity = editorModel->getPaintSmoothOpacity();
    const QModelIndexList requested = editorModel->getPendingCells();
    const QList<int> shapes = editorModel->getPendingShapes();
    cells.clear();
    smoothShapes.clear();
    // Only cells of the smoothed column with a weight, on one of the handed-over shapes.
    for (const QModelIndex& cell : requested) {
        const int r = cell.row();
        if (cell.column() != smoothColumn || r < 0 || r >= weightRows.size())
            continue;
        const WeightRow& row = weightRows.at(r);
        if (smoothColumn + 1 >= row.size() || row.at(smoothColumn + 1) < 0.0)
            continue;
        for (int shape : shapes)
            if (row.at(0) == static_cast<double>(shape)) {
                cells.append(cell);
                smoothShapes.append(shape);
            }
    }
    return true;
}

bool vorelCmd::prepareWeightSmoothing() {
    if (!editorModel->getSmoothSkinWeightsMode())
        return refuseUnprepared();
    smoothCommand = editorModel->getPendingSmoothCommand();
    cells = editorModel->getPendingCells();
    return true;
}

HStatus vorelCmd::writePaintSmoothing() {
    oldWeights.clear();
    if (cells.isEmpty() || smoothShapes.isEmpty())
        return HS::kFailure;
    PaintSmoothRequest request;
    request.cells = cells;
    request.shapes = smoothShapes;
    request.column = smoothColumn;
    request.opacity = smoothOpacity;
    request.lockColumns = smoothLockColumns;
    RecordedVertices recorded;
    const HStatus status = runPaintSmoothSequence(*editorModel, request, recorded);
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
    return HGlobal::executeCommand(smoothCommand, false, true);
}
