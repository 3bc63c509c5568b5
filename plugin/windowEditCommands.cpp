#include "windowEditCommands.h"

#include "editorPointers.h"
#include "weightTableModel.h"
#include "weightTableView.h"

#include <QItemSelectionModel>

// Each redo writes with the model's reloading switched off and rebuilds the model's table from
// the scene; each undo writes the replaced weights back and rebuilds it again.

HStatus replaceButtonCmd::doIt(const HArgList&) {
    copyModel(*editModel);
    return prepareReplace(*editModel) ? redoIt() : HStatus(HS::kSuccess);
}

HStatus replaceButtonCmd::redoIt() {
    const bool autoUpdate = suspendAutoUpdate(*editModel);
    const HStatus status = writeFlood();
    refreshAfterRedo(*editModel, autoUpdate);
    return status;
}

HStatus replaceButtonCmd::undoIt() {
    const HStatus status = restoreShapes(true);
    refreshAfterUndo(*editModel, false);
    return status;
}

HStatus roundButtonCmd::doIt(const HArgList&) {
    copyModel(*editModel);
    return prepareRound(*editModel) ? redoIt() : HStatus(HS::kSuccess);
}

HStatus roundButtonCmd::redoIt() {
    const bool autoUpdate = suspendAutoUpdate(*editModel);
    // Without loaded shapes there is nothing to round; the table is only refreshed.
    const HStatus status = setComponents.isEmpty() ? HStatus(HS::kSuccess) : writeRound();
    refreshAfterRedo(*editModel, autoUpdate);
    return status;
}

HStatus roundButtonCmd::undoIt() {
    const HStatus status = restoreShapes(false);
    refreshAfterUndo(*editModel, false);
    return status;
}

HStatus applyButtonCmd::doIt(const HArgList&) {
    copyModel(*editModel);
    return prepareLimit(*editModel) ? redoIt() : HStatus(HS::kSuccess);
}

HStatus applyButtonCmd::redoIt() {
    const bool autoUpdate = suspendAutoUpdate(*editModel);
    const HStatus status =
        overLimitRows.isEmpty() ? HStatus(HS::kSuccess) : writeLimit(*editModel, true);
    refreshAfterRedo(*editModel, autoUpdate);
    return status;
}

HStatus applyButtonCmd::undoIt() {
    const HStatus status = restoreVertices();
    refreshAfterUndo(*editModel, true);
    return status;
}

HStatus dragSliderCmd::doIt(const HArgList&) {
    copyModel(*editModel);
    return prepareCells(*editModel, editModel->getPendingCells(), editModel->getPendingValues(),
                        false)
               ? redoIt()
               : HStatus(HS::kSuccess);
}

HStatus dragSliderCmd::redoIt() {
    const bool autoUpdate = suspendAutoUpdate(*editModel);
    const HStatus status = writeCells(false);
    refreshAfterRedo(*editModel, autoUpdate);
    return status;
}

HStatus dragSliderCmd::undoIt() {
    const HStatus status = restoreVertices();
    refreshAfterUndo(*editModel, true);
    return status;
}

HStatus dragSliderColCmd::doIt(const HArgList&) {
    copyModel(*editModel);
    prepareColumnDrag(*editModel);
    return redoIt();
}

HStatus dragSliderColCmd::redoIt() {
    const bool autoUpdate = suspendAutoUpdate(*editModel);
    // A column no loaded shape is bound to has nothing to write; the table is only refreshed.
    const HStatus status = columnInfluences.isEmpty() ? HStatus(HS::kSuccess) : writeColumn();
    refreshAfterRedo(*editModel, autoUpdate);
    return status;
}

HStatus dragSliderColCmd::undoIt() {
    const HStatus status = restoreShapes(true);
    refreshAfterUndo(*editModel, false);
    return status;
}

HStatus setCellDataCmd::doIt(const HArgList&) {
    copyModel(*editModel);
    // The cells are the table's current selection, not the model's hand-over list.
    QModelIndexList selected;
    if (weightTableView* view = editModel->getTableView())
        selected = view->selectionModel()->selectedIndexes();
    return prepareCells(*editModel, selected, editModel->getPendingValues(), true)
               ? redoIt()
               : HStatus(HS::kSuccess);
}

HStatus setCellDataCmd::redoIt() {
    const bool autoUpdate = suspendAutoUpdate(*editModel);
    const HStatus status = writeCells(true);
    refreshAfterRedo(*editModel, autoUpdate);
    return status;
}

HStatus setCellDataCmd::undoIt() {
    const HStatus status = restoreVertices();
    refreshAfterUndo(*editModel, true);
    return status;
}

HStatus smoothCmd::doIt(const HArgList&) {
    stroke.prepare(*editorModel);
    return redoIt();
}

HStatus smoothCmd::redoIt() {
    return stroke.paint(*editorModel);
}

HStatus smoothCmd::undoIt() {
    return stroke.restore();
}
