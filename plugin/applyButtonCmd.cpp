#include "applyButtonCmd.h"

applyButtonCmd::applyButtonCmd(vorelWindow* window, weightTableModel* model)
    : windowEditCommand<applyButtonCmd>(window, model) {}

applyButtonCmd::~applyButtonCmd() = default;

HStatus applyButtonCmd::doIt(const HArgList&) {
    return HS::kSuccess;
}

HStatus applyButtonCmd::undoIt() {
    return HS::kSuccess;
}

HStatus applyButtonCmd::redoIt() {
    return HS::kSuccess;
}

bool applyButtonCmd::isUndoable() const {
    return true;
}
