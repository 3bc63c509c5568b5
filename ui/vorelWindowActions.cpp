// The slots of the window's controls: each reads its control, checks the input, calls one
// model operation and records itself as the control last used.
//
// Sliders hold integers: the value slider counts 10^decimalPlaces units per 1.0, opacity and
// flood value 10000, the required weight difference 1000, the iterations one per pass. A value
// becomes a position by truncation toward zero.
#include "HGlobal.h"
#include "vorelWindow.h"
#include "weightTableModel.h"
#include "weightTableView.h"

#include <QComboBox>
#include <QGroupBox>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <cmath>

namespace {

const int kOpacityScale = 10000;
const int kFloodScale = 10000;
const int kWeightDifferenceScale = 1000;

const char* const kNothingSelected =
    "There is no cell selected for value change. Please select cell to change its value.";
const char* const kNoValidCell = "There is no cell with valid data to be set.";
const char* const kOpacityRange = "Opacity number should be between 0.0 and 1.0.";
const char* const kFloodIndexRange = "Flood operation box value is out of range.";

enum FloodOperation { kSmoothSkinWeights = 0, kPaintSmooth = 1, kReplace = 2 };

int truncated(double value) {
    return static_cast<int>(std::trunc(value));
}

} // namespace

int vorelWindow::valueScale() const {
    return static_cast<int>(std::lround(std::pow(10.0, decimalPlaces)));
}

QString vorelWindow::formatValue(double value) const {
    return QString::number(value, 'f', decimalPlaces);
}

QModelIndexList vorelWindow::selectedCells() const {
    return tableView->selectionModel()->selectedIndexes();
}

bool vorelWindow::anySelectedCellHasText() const {
    for (const QModelIndex& index : selectedCells())
        if (!index.data(Qt::DisplayRole).toString().isEmpty())
            return true;
    return false;
}

void vorelWindow::setPrecisionEdit() {
    const QString text = precisionEdit->text();
    const int point = text.indexOf('.');
    const int one = text.indexOf('1');
    // More than eight places would take the value slider's range past what it can hold.
    if (text.isEmpty() || point == -1 || one == -1 || one < point || one - point > 8) {
        HGlobal::displayError(
            "The precision number is not set up correctly. Please use the 0.XXXX1 format.");
        return;
    }
    // Only the first "1" counts: 0.0101 is two places.
    const int places = one - point;
    previousDecimalPlaces = tableModel->getPrecision();
    tableModel->cacheFullPrecisionWeights();
    tableModel->snapshotWeightRows();
    tableModel->setPrecision(places);
    decimalPlaces = places;
    lastUsedControl = precisionEdit;
    finishPrecisionChange();
}

void vorelWindow::applyPrecision() {
    tableModel->applyPrecision();
    lastUsedControl = roundButton;
}

bool vorelWindow::readMaxInfluenceBox(int& maximum) const {
    bool ok = false;
    maximum = maxInfluenceEdit->text().toInt(&ok, 10);
    if (!ok || maximum < 1) {
        HGlobal::displayError("Can not set maximum influence with this number.");
        return false;
    }
    return true;
}

void vorelWindow::setMaxValue() {
    int maximum = 0;
    if (!readMaxInfluenceBox(maximum))
        return;
    previousMaxInfluence = tableModel->getMaxInfluences();
    tableModel->setMaxValue(maximum);
    lastUsedControl = maxInfluenceEdit;
}

void vorelWindow::applyMaxInfluence() {
    tableModel->applyMaxInfluence();
    lastUsedControl = applyInfluenceButton;
}

void vorelWindow::setAbsoluteMode(bool absMode) {
    previousAbsoluteMode = absoluteMode;
    absoluteMode = absMode;
    const int scale = valueScale();
    valueSlider->setRange(absoluteMode ? 0 : -scale, scale);
    valueSlider->setTickInterval(scale);

    const QModelIndexList selected = selectedCells();
    if (selected.size() > 1) {
        valueSlider->setValue(0);
        if (absoluteMode) {
            valueEdit->clear();
        } else {
            valueEdit->setText("0.0");
            shownValue = 0.0;
        }
    } else if (selected.size() == 1) {
        const QModelIndex cell = selected.first();
        const double value = cell.data(Qt::DisplayRole).toDouble();
        tableModel->setTopRightValue(value);
        if (cell.data(Qt::DisplayRole).toString().isEmpty()) {
            valueSlider->setValue(0);
            valueEdit->clear();
        } else {
            showValue(value, true);
        }
    }
    lastUsedControl = valueGroup;
}

void vorelWindow::sliderChanged(int value) {
    const double shown = value / std::pow(10.0, decimalPlaces);
    for (const QModelIndex& index : selectedCells()) {
        if (!index.data(Qt::DisplayRole).toString().isEmpty()) {
            valueEdit->setText(formatValue(shown));
            return;
        }
    }
}

bool vorelWindow::checkValueTargets() {
    if (selectedCells().isEmpty()) {
        HGlobal::displayWarning(kNothingSelected);
        valueSlider->setValue(0);
        valueSlider->repaint();
        valueEdit->clear();
        return false;
    }
    if (!anySelectedCellHasText()) {
        HGlobal::displayWarning(kNoValidCell);
        return false;
    }
    return true;
}

void vorelWindow::sliderReleased() {
    if (!checkValueTargets())
        return;
    tableModel->dragCells(valueSlider->value() / std::pow(10.0, decimalPlaces), absoluteMode);
}

void vorelWindow::valueEditChanged() {
    if (valueSlider->value() != valueScale() * shownValue)
        shownValue = valueSlider->value() * std::pow(0.1, decimalPlaces);
    const double value = valueEdit->text().toDouble();
    if (!checkValueTargets())
        return;
    tableModel->dragCells(value, absoluteMode);
}

// The four small lines: an edit box sets its slider (when the slider does not show that number
// already), a released slider writes its number into the box through the box's own editing,
// so that the box's undo sees it. Each keeps the position it had before, for Ctrl+Z.
void vorelWindow::editToSlider(const ValueLine& line, int scale, int& savedValue) {
    savedValue = line.slider->value();
    const double value = line.edit->text().toDouble();
    if (line.slider->value() * (1.0 / scale) != value)
        line.slider->setValue(truncated(value * scale));
    lastUsedControl = line.edit;
}

void vorelWindow::sliderToEdit(const ValueLine& line, int scale, int& savedValue) {
    savedValue = truncated(line.edit->text().toDouble() * scale);
    const QString text = formatValue(line.slider->value() * (1.0 / scale));
    if (line.edit->text() != text) {
        line.edit->selectAll();
        line.edit->insert(text);
    }
    lastUsedControl = line.slider;
}

void vorelWindow::opacityEditChanged() {
    editToSlider(opacityLine, kOpacityScale, opacitySavedValue);
}

void vorelWindow::opacitySliderChanged() {
    sliderToEdit(opacityLine, kOpacityScale, opacitySavedValue);
}

void vorelWindow::floodEditChanged() {
    editToSlider(floodValueLine, kFloodScale, floodSavedValue);
}

void vorelWindow::floodSliderChanged() {
    sliderToEdit(floodValueLine, kFloodScale, floodSavedValue);
}

void vorelWindow::requiredWeightDifferenceEditChanged() {
    editToSlider(requiredWeightDifferenceLine, kWeightDifferenceScale,
                 requiredWeightDifferenceSavedValue);
}

void vorelWindow::requiredWeightDifferenceSliderChanged() {
    sliderToEdit(requiredWeightDifferenceLine, kWeightDifferenceScale,
                 requiredWeightDifferenceSavedValue);
}

void vorelWindow::smoothingIterationsEditChanged() {
    QLineEdit* edit = smoothingIterationsLine.edit;
    QSlider* slider = smoothingIterationsLine.slider;
    smoothingIterationsSavedValue = slider->value();
    const int iterations = edit->text().toInt(nullptr, 10);
    if (slider->value() != iterations)
        slider->setValue(iterations);
    edit->setText(QString::number(iterations));
    lastUsedControl = edit;
}

void vorelWindow::smoothingIterationsSliderChanged() {
    QLineEdit* edit = smoothingIterationsLine.edit;
    smoothingIterationsSavedValue = edit->text().toInt(nullptr, 10);
    const QString text = QString::number(smoothingIterationsLine.slider->value());
    if (edit->text() != text) {
        edit->selectAll();
        edit->insert(text);
    }
    lastUsedControl = smoothingIterationsLine.slider;
}

void vorelWindow::floodOperationBoxChanged(int index) {
    if (index < kSmoothSkinWeights || index > kReplace) {
        HGlobal::displayError(kFloodIndexRange);
        return;
    }
    const bool smoothing = index == kSmoothSkinWeights;
    opacityLine.setEnabled(!smoothing);
    floodValueLine.setEnabled(!smoothing);
    requiredWeightDifferenceLine.setEnabled(smoothing);
    smoothingIterationsLine.setEnabled(smoothing);
}

void vorelWindow::updateSliderValue(double newValue, double lastValue, double origValue) {
    const double target = absoluteMode ? newValue : newValue - origValue;
    shownValue = absoluteMode ? lastValue : lastValue - origValue;
    valueSlider->setValue(truncated(std::pow(10.0, decimalPlaces) * target));
    valueSlider->repaint();

    const QModelIndexList selected = selectedCells();
    if (selected.size() == 1 && absoluteMode) {
        const bool hasText = !selected.first().data(Qt::DisplayRole).toString().isEmpty();
        valueEdit->setText(hasText ? formatValue(target) : QString());
    } else {
        valueEdit->setText(absoluteMode ? QString(" ") : formatValue(target));
    }
}

void vorelWindow::applyFlood() {
    switch (floodOperationBox->currentIndex()) {
    case kSmoothSkinWeights:
        applySmoothSkinWeights();
        break;
    case kPaintSmooth:
        applySkinPaintSmooth();
        break;
    case kReplace:
        replaceValue();
        break;
    default:
        HGlobal::displayError(kFloodIndexRange);
    }
}

void vorelWindow::applySmoothSkinWeights() {
    bool differenceOk = false, iterationsOk = false;
    const double difference = requiredWeightDifferenceLine.edit->text().toDouble(&differenceOk);
    const int iterations = smoothingIterationsLine.edit->text().toInt(&iterationsOk, 10);
    if (!differenceOk || !iterationsOk) {
        HGlobal::displayError(
            "Required Weight Difference or Smoothing Iterations value is invalid.");
        return;
    }
    tableModel->applySmoothSkinWeights(difference, iterations);
    lastUsedControl = applyFloodButton;
}

bool vorelWindow::floodStrength(double& strength) const {
    bool opacityOk = false, valueOk = false;
    const double opacity = opacityLine.edit->text().toDouble(&opacityOk);
    const double value = floodValueLine.edit->text().toDouble(&valueOk);
    if (!opacityOk || !valueOk || opacity < 0.0 || opacity > 1.0) {
        HGlobal::displayError(kOpacityRange);
        return false;
    }
    strength = value * opacity;
    return true;
}

void vorelWindow::applySkinPaintSmooth() {
    double strength = 0.0;
    if (!floodStrength(strength))
        return;
    tableModel->applySkinPaintSmooth(strength);
    lastUsedControl = applyFloodButton;
}

void vorelWindow::replaceValue() {
    double strength = 0.0;
    if (!floodStrength(strength))
        return;
    tableModel->replaceValue(strength);
    lastUsedControl = applyFloodButton;
}

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
