#include "dragSliderCmd.h"

dragSliderCmd::dragSliderCmd(vorelWindow* window, weightTableModel* model)
    : windowEditCommand<dragSliderCmd>(window, model) {}

dragSliderCmd::~dragSliderCmd() = default;

HStatus dragSliderCmd::doIt(const HArgList&) {
    return HS::kSuccess;
}

HStatus dragSliderCmd::undoIt() {
    return HS::kSuccess;
}

HStatus dragSliderCmd::redoIt() {
    return HS::kSuccess;
}

bool dragSliderCmd::isUndoable() const {
    return true;
}
