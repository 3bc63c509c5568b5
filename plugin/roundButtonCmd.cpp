#include "roundButtonCmd.h"

roundButtonCmd::roundButtonCmd(vorelWindow* window, weightTableModel* model)
    : windowEditCommand<roundButtonCmd>(window, model) {}

roundButtonCmd::~roundButtonCmd() = default;

HStatus roundButtonCmd::doIt(const HArgList&) {
    return HS::kSuccess;
}

HStatus roundButtonCmd::undoIt() {
    return HS::kSuccess;
}

HStatus roundButtonCmd::redoIt() {
    return HS::kSuccess;
}

bool roundButtonCmd::isUndoable() const {
    return true;
}
