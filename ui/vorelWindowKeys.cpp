// The window's key filter: Ctrl+Z and Ctrl+Y undo and redo the last control once, each in its
// own way, and the keys that start a number or an operator entry open editors on every
// selected cell of the focused table.
#include "vorelWindow.h"
#include "weightColumnHeaderView.h"
#include "weightTableModel.h"
#include "weightTableView.h"

#include <QApplication>
#include <QGroupBox>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <cmath>

namespace {

bool startsAnEntry(const QKeyEvent* event) {
    const int key = event->key();
    return (key >= Qt::Key_0 && key <= Qt::Key_9) || key == Qt::Key_Asterisk ||
           key == Qt::Key_Plus || key == Qt::Key_Minus || key == Qt::Key_Period ||
           key == Qt::Key_Slash || key == Qt::Key_Equal ||
           (key == Qt::Key_Enter && (event->modifiers() & Qt::KeypadModifier));
}

void setSliderQuietly(QSlider* slider, int value) {
    const QSignalBlocker blocker(slider);
    slider->setValue(value);
}

QString precisionText(int places) {
    return QString::number(std::pow(0.1, places), 'g', 6);
}

} // namespace

bool vorelWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    QKeyEvent* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() == Qt::ControlModifier && key->key() == Qt::Key_Z) {
        lastUndoneControl = lastUsedControl;
        return undoLastControl();
    }
    if (key->modifiers() == Qt::ControlModifier && key->key() == Qt::Key_Y) {
        lastUsedControl = lastUndoneControl;
        return redoLastControl();
    }
    if (handleSpreadsheetKey(watched, key))
        return true;
    if (startsAnEntry(key) && QApplication::focusWidget() == tableView &&
        tableView->selectionModel()->hasSelection()) {
        tableModel->snapshotWeightRows();
        // The view edits one cell at a time and the entry goes to every selected cell, so the
        // first cell that takes an editor is enough; asking for more would only fail.
        for (const QModelIndex& index : tableView->selectionModel()->selectedIndexes()) {
            if (!(index.flags() & Qt::ItemIsEditable))
                continue;
            tableView->edit(index);
            if (tableView->indexWidget(index))
                break;
        }
        return true;
    }
    return false;
}

// One line of the flood and smoothing row: the box shows the saved position times `scale`
// (an integer when the scale is 0) and the slider moves there.
void vorelWindow::restoreLine(const ValueLine& line, int position, double scale, int& redo) {
    redo = line.slider->value();
    line.edit->setText(scale == 0.0 ? QString::number(position)
                                    : QString::number(position * scale, 'f', decimalPlaces));
    if (line.slider->value() != position)
        setSliderQuietly(line.slider, position);
}

void vorelWindow::redoLine(const ValueLine& line, int position, double scale, int sliderPosition) {
    line.edit->setText(scale == 0.0 ? QString::number(position)
                                    : QString::number(position * scale, 'f', decimalPlaces));
    if (line.slider->value() != sliderPosition)
        setSliderQuietly(line.slider, sliderPosition);
    lastUsedControl = line.edit;
}

bool vorelWindow::isLineControl(const ValueLine& line) const {
    return lastUsedControl == line.edit || lastUsedControl == line.slider;
}

void vorelWindow::setToggleQuietly(QPushButton* button, bool checked) {
    const QSignalBlocker blocker(button);
    button->setChecked(checked);
}

bool vorelWindow::undoLastControl() {
    QObject* control = lastUsedControl;
    if (!control)
        return false;
    if (control == maxInfluenceEdit) {
        maxInfluenceEdit->setText(QString::number(previousMaxInfluence));
        redoMaxInfluence = tableModel->getMaxInfluences();
        tableModel->undoMaxInfluence();
    } else if (control == applyInfluenceButton || control == applyFloodButton ||
               control == tableView) {
        tableModel->restoreUndoRowsAndRefresh();
    } else if (control == loadComponentButton) {
        tableModel->restoreUndoLoad();
    } else if (control == precisionEdit) {
        precisionEdit->setText(precisionText(previousDecimalPlaces));
        redoDecimalPlaces = tableModel->getPrecision();
        decimalPlaces = previousDecimalPlaces;
        tableModel->undoPrecision();
        tableModel->restoreUndoRowsAndRefresh();
        finishPrecisionChange();
    } else if (control == roundButton) {
        tableModel->undoApplyPrecision();
    } else if (isLineControl(opacityLine)) {
        restoreLine(opacityLine, opacitySavedValue, 0.0001, opacityRedoValue);
    } else if (isLineControl(floodValueLine)) {
        restoreLine(floodValueLine, floodSavedValue, 0.0001, floodRedoValue);
    } else if (isLineControl(requiredWeightDifferenceLine)) {
        restoreLine(requiredWeightDifferenceLine, requiredWeightDifferenceSavedValue, 0.001,
                    requiredWeightDifferenceRedoValue);
    } else if (isLineControl(smoothingIterationsLine)) {
        restoreLine(smoothingIterationsLine, smoothingIterationsSavedValue, 0.0,
                    smoothingIterationsRedoValue);
    } else if (control == filterButton) {
        filterRedo = filterButton->isChecked();
        setToggleQuietly(filterButton, !filterRedo);
        tableModel->toggleFilter(!filterRedo);
    } else if (control == highlightButton) {
        highlightRedo = highlightButton->isChecked();
        setToggleQuietly(highlightButton, !highlightRedo);
        tableModel->toggleHilight(!highlightRedo);
    } else if (control == lockButton) {
        tableModel->newUnlockSelected();
    } else if (control == unlockButton) {
        tableModel->newLockSelected();
    } else if (control == unlockAllButton) {
        tableModel->relockReleased();
    } else if (control == valueGroup) {
        setAbsoluteMode(previousAbsoluteMode);
    } else if (control == valueEdit || control == valueSlider) {
        showValueForStep();
        tableModel->restoreUndoRowsAndRefresh();
    } else {
        return false;
    }
    return true;
}

bool vorelWindow::redoLastControl() {
    QObject* control = lastUsedControl;
    if (!control)
        return false;
    if (control == maxInfluenceEdit) {
        previousMaxInfluence = tableModel->getMaxInfluences();
        maxInfluenceEdit->setText(QString::number(redoMaxInfluence));
        tableModel->setMaxValue(redoMaxInfluence);
    } else if (control == applyInfluenceButton || control == applyFloodButton ||
               control == tableView) {
        tableModel->restoreRedoRowsAndRefresh();
    } else if (control == loadComponentButton) {
        tableModel->restoreRedoLoad();
    } else if (control == precisionEdit) {
        previousDecimalPlaces = tableModel->getPrecision();
        precisionEdit->setText(precisionText(redoDecimalPlaces));
        decimalPlaces = redoDecimalPlaces;
        tableModel->setPrecision(redoDecimalPlaces);
        tableModel->restoreRedoRowsAndRefresh();
        finishPrecisionChange();
    } else if (control == roundButton) {
        tableModel->redoApplyPrecision();
    } else if (isLineControl(opacityLine)) {
        redoLine(opacityLine, opacityRedoValue, 0.0001, opacityRedoValue);
    } else if (isLineControl(floodValueLine)) {
        redoLine(floodValueLine, floodRedoValue, 0.0001, floodRedoValue);
    } else if (isLineControl(requiredWeightDifferenceLine)) {
        // The slider follows the flood value's redo position: the behaviour users know.
        redoLine(requiredWeightDifferenceLine, requiredWeightDifferenceRedoValue, 0.001,
                 floodRedoValue);
    } else if (isLineControl(smoothingIterationsLine)) {
        redoLine(smoothingIterationsLine, smoothingIterationsRedoValue, 0.0,
                 smoothingIterationsRedoValue);
    } else if (control == filterButton) {
        setToggleQuietly(filterButton, filterRedo);
        tableModel->toggleFilter(filterRedo);
        filterRedo = !filterRedo;
    } else if (control == highlightButton) {
        setToggleQuietly(highlightButton, highlightRedo);
        tableModel->toggleHilight(highlightRedo);
        highlightRedo = !highlightRedo;
    } else if (control == lockButton) {
        tableModel->newLockSelected();
    } else if (control == unlockButton) {
        tableModel->newUnlockSelected();
    } else if (control == unlockAllButton) {
        tableModel->newUnlockAll();
    } else if (control == valueGroup) {
        setAbsoluteMode(previousAbsoluteMode);
    } else if (control == valueEdit || control == valueSlider) {
        showValueForStep();
        tableModel->restoreRedoRowsAndRefresh();
    } else {
        return false;
    }
    return true;
}

void vorelWindow::finishPrecisionChange() {
    tableModel->setUpColumn();
    tableView->resizeColumnsToContents();
    fitControlsToText();
    resetValueControls();
}

void vorelWindow::showValueForStep() {
    lastSliderValue = valueSlider->value() * std::pow(0.1, decimalPlaces);
    const QModelIndexList selected = tableView->selectionModel()->selectedIndexes();
    if (selected.size() == 1 && absoluteMode) {
        const bool hasText =
            !tableModel->data(selected.first(), Qt::DisplayRole).toString().isEmpty();
        valueEdit->setText(hasText ? QString::number(shownValue, 'f', decimalPlaces) : QString());
    } else {
        valueEdit->setText(absoluteMode ? QString(" ")
                                        : QString::number(shownValue, 'f', decimalPlaces));
    }
    const double position = valueEdit->text().toDouble() * std::pow(10.0, decimalPlaces);
    if (valueSlider->value() != position) {
        setSliderQuietly(valueSlider, static_cast<int>(position));
        valueSlider->repaint();
    }
}
