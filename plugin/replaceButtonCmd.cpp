#include "replaceButtonCmd.h"

replaceButtonCmd::replaceButtonCmd(vorelWindow* window, weightTableModel* model)
    : windowEditCommand<replaceButtonCmd>(window, model) {}

replaceButtonCmd::~replaceButtonCmd() = default;

HStatus replaceButtonCmd::doIt(const HArgList&) {
    return HS::kSuccess;
}

HStatus replaceButtonCmd::undoIt() {
    return HS::kSuccess;
}

HStatus replaceButtonCmd::redoIt() {
    return HS::kSuccess;
}

bool replaceButtonCmd::isUndoable() const {
    return true;
}
