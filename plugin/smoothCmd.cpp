#include "smoothCmd.h"

smoothCmd::smoothCmd(vorelWindow* window, weightTableModel* model)
    : windowEditCommand<smoothCmd>(window, model) {}

smoothCmd::~smoothCmd() = default;

HStatus smoothCmd::doIt(const HArgList&) {
    return HS::kSuccess;
}

HStatus smoothCmd::undoIt() {
    return HS::kSuccess;
}

HStatus smoothCmd::redoIt() {
    return HS::kSuccess;
}

bool smoothCmd::isUndoable() const {
    return true;
}
