#include "setCellDataCmd.h"

setCellDataCmd::setCellDataCmd(vorelWindow* window, weightTableModel* model)
    : windowEditCommand<setCellDataCmd>(window, model) {}

setCellDataCmd::~setCellDataCmd() = default;

HStatus setCellDataCmd::doIt(const HArgList&) {
    return HS::kSuccess;
}

HStatus setCellDataCmd::undoIt() {
    return HS::kSuccess;
}

HStatus setCellDataCmd::redoIt() {
    return HS::kSuccess;
}

bool setCellDataCmd::isUndoable() const {
    return true;
}
