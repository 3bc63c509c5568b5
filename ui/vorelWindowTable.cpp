// Working the table directly: cell, row and column selection, the context menu, clicks on the
// window itself, and the value controls that follow the selection. The keyboard undo and redo
// are in vorelWindowKeys.cpp.
#include "HGlobal.h"
#include "HSelectionList.h"
#include "vorelWindow.h"
#include "weightColumnHeaderView.h"
#include "weightTableModel.h"
#include "weightTableView.h"

#include <QAction>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QSet>
#include <QSignalBlocker>
#include <QSlider>
#include <cmath>

void vorelWindow::showContextMenu(const QPoint& pos) {
    const QPoint global = tableView->viewport()->mapToGlobal(pos);
    // One menu at a time: the previous one has closed before the next right-click.
    delete contextMenu;
    contextMenu = new QMenu();
    QAction* lockAction = new QAction("Lock", contextMenu);
    QAction* unlockAction = new QAction("Unlock", contextMenu);
    contextMenu->addAction(lockAction);
    contextMenu->addAction(unlockAction);
    contextMenu->popup(global);
    connect(lockAction, SIGNAL(triggered()), tableModel, SLOT(lockCell()));
    connect(unlockAction, SIGNAL(triggered()), tableModel, SLOT(unlockCell()));
}

void vorelWindow::showValue(double value, bool hasText) {
    const QSignalBlocker blocker(valueSlider);
    if (!hasText) {
        valueSlider->setValue(0);
        valueEdit->setText(" ");
        return;
    }
    const double scale = std::pow(10.0, decimalPlaces);
    valueSlider->setValue(absoluteMode ? static_cast<int>(scale * value) : 0);
    valueEdit->setText(absoluteMode ? QString::number(value, 'f', decimalPlaces) : "0.0");
    shownValue = absoluteMode ? value : 0.0;
}

void vorelWindow::clearValue() {
    const QSignalBlocker blocker(valueSlider);
    valueSlider->setValue(0);
    valueEdit->setText(absoluteMode ? " " : "0.0");
    if (!absoluteMode)
        shownValue = 0.0;
}

void vorelWindow::tableCellSelected(const QModelIndex& index) {
    QItemSelectionModel* selection = tableView->selectionModel();
    if (!selection->hasSelection()) {
        HGlobal::displayError("There is no cell selected.");
        return;
    }
    if (index.isValid() && index.model() == tableModel &&
        selection->selectedIndexes().size() == 1) {
        const QString text = tableModel->data(index, Qt::DisplayRole).toString();
        const double value = text.toDouble();
        tableModel->setTopRightValue(value);
        showValue(value, !text.isEmpty());
        tableModel->cellSelected(index);
    }
    lastUsedControl = tableView;
}

void vorelWindow::tableSelectionChanged(const QItemSelection&, const QItemSelection&) {
    QItemSelectionModel* selection = tableView->selectionModel();
    const QModelIndexList selected = selection->selectedIndexes();
    if (selected.size() < 2)
        return;
    // Whole rows and columns are the header clicks' business.
    for (const QModelIndex& index : selected)
        if (selection->isColumnSelected(index.column(), QModelIndex()) ||
            selection->isRowSelected(index.row(), QModelIndex()))
            return;
    clearValue();
    tableModel->multiCellSelected();
    lastUsedControl = tableView;
}

void vorelWindow::columnHeaderClicked(int section) {
    clearValue();
    tableModel->columnHeaderSelected(section);
}

void vorelWindow::rowHeaderClicked(int) {
    clearValue();
    tableModel->rowHeaderSelected();
}

void vorelWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !QWidget::mouseGrabber()) {
        tableView->clearSelection();
        tableModel->hiliteSelection(HSelectionList());
        HGlobal::executeCommand("refresh");
        const int scale = static_cast<int>(std::pow(10.0, decimalPlaces));
        {
            const QSignalBlocker blocker(valueSlider);
            valueSlider->setRange(absoluteMode ? 0 : -scale, scale);
            valueSlider->setValue(0);
        }
        valueSlider->repaint();
        valueEdit->clear();
    } else if (event->button() == Qt::RightButton && tableView->underMouse()) {
        emit customContextMenuRequested(event->pos());
    }
    QMainWindow::mousePressEvent(event);
}

void vorelWindow::resetValueControls() {
    const int scale = static_cast<int>(std::pow(10.0, decimalPlaces));
    {
        const QSignalBlocker blocker(valueSlider);
        valueSlider->setRange(absoluteMode ? 0 : -scale, scale);
    }
    valueSlider->setTickPosition(QSlider::TicksBothSides);
    valueSlider->setTickInterval(scale);
    const QModelIndexList selected = tableView->selectionModel()->selectedIndexes();
    if (selected.size() != 1) {
        clearValue();
        return;
    }
    const QModelIndex index = selected.first();
    if (!index.isValid())
        return;
    const QString text = tableModel->data(index, Qt::DisplayRole).toString();
    showValue(text.toDouble(), !text.isEmpty());
}

void vorelWindow::showEmptyColumns(const QList<int>& emptyColumns, bool hide) {
    const QSet<int> empty(emptyColumns.begin(), emptyColumns.end());
    QHeaderView* header = tableView->horizontalHeader();
    const int size = header->defaultSectionSize();
    for (int section = 0; section < header->count(); ++section) {
        if (hide && empty.contains(section)) {
            tableView->hideColumn(section);
        } else {
            header->resizeSection(section, size);
            tableView->showColumn(section);
        }
    }
}
