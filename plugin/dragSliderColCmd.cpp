#include "dragSliderColCmd.h"

dragSliderColCmd::dragSliderColCmd(vorelWindow* window, weightTableModel* model)
    : windowEditCommand<dragSliderColCmd>(window, model) {}

dragSliderColCmd::~dragSliderColCmd() = default;

HStatus dragSliderColCmd::doIt(const HArgList&) {
    return HS::kSuccess;
}

HStatus dragSliderColCmd::undoIt() {
    return HS::kSuccess;
}

HStatus dragSliderColCmd::redoIt() {
    return HS::kSuccess;
}

bool dragSliderColCmd::isUndoable() const {
    return true;
}
