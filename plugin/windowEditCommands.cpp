#include "windowEditCommands.h"

#include "HGlobal.h"
#include "weightTableModel.h"

#include <QItemSelectionModel>

HStatus replaceButtonCmd::doIt(const HArgList&) {
    return performWhen(editModel && prepareFlood(*editModel));
}

HStatus roundButtonCmd::doIt(const HArgList&) {
    return performWhen(editModel && prepareRound(*editModel));
}

HStatus applyButtonCmd::doIt(const HArgList&) {
    onItsOwn = true;
    return performWhen(editModel && prepare(editModel->getPendingLimit(), *editModel));
}

void applyButtonCmd::influenceRemoved(int row, int column) {
    if (!onItsOwn)
        return;
    const QModelIndex changed = editModel->index(row, column);
    if (changed.isValid())
        editModel->updateWeightListAtIndex(changed);
    else
        HGlobal::displayInfo("There is an error getting the mode index.");
}

HStatus dragSliderCmd::doIt(const HArgList&) {
    return performWhen(editModel &&
                       prepare(editModel->getPendingCellValues(), *editModel, Rules{false, false}));
}

HStatus dragSliderColCmd::doIt(const HArgList&) {
    return performWhen(editModel && prepareColumnDrag(*editModel));
}

HStatus setCellDataCmd::doIt(const HArgList&) {
    if (!editModel)
        return HS::kSuccess;
    QModelIndexList selected;
    if (QItemSelectionModel* selection = editModel->getTableSelection())
        selected = selection->selectedIndexes();
    const CellValuesRequest request =
        editModel->cellValuesRequest(selected, editModel->getPendingCellValues().pendingValues);
    return performWhen(prepare(request, *editModel, Rules{true, true}));
}

HStatus smoothCmd::doIt(const HArgList&) {
    if (editModel)
        preparePaint(*editModel);
    return redoIt();
}
