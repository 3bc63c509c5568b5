// What the table does as a spreadsheet: Ctrl+C copies the selection as tab-separated text,
// Ctrl+V pastes such text (or a spreadsheet's) as one edit, the row query box shows only the vertex
// rows that match its query, and Ctrl+A then selects the shown rows only. Hidden rows stay loaded;
// edits treat them as any other row.
#include "vorelWindow.h"
#include "weightTableModel.h"
#include "weightTableView.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>

QHBoxLayout* vorelWindow::createRowQueryRow() {
    rowQueryEdit = new QLineEdit();
    rowQueryEdit->setObjectName("rowQueryEdit");
    rowQueryEdit->setPlaceholderText("Show rows: influences > 4 or (unnormalised and not locked)");
    connect(rowQueryEdit, &QLineEdit::returnPressed, this, &vorelWindow::applyRowQuery);
    // A new table shows every row; the query that was applied picks from it again.
    connect(tableModel, &QAbstractItemModel::modelReset, this, &vorelWindow::reapplyRowQuery);
    connect(tableModel, &QAbstractItemModel::layoutChanged, this, &vorelWindow::reapplyRowQuery);
    QHBoxLayout* row = new QHBoxLayout();
    row->addWidget(rowQueryEdit);
    return row;
}

void vorelWindow::applyRowQuery() {
    appliedRowQuery = rowQueryEdit->text().trimmed();
    reapplyRowQuery();
}

void vorelWindow::reapplyRowQuery() {
    QVector<bool> shown;
    if (appliedRowQuery.isEmpty() || !tableModel->rowsMatchingQuery(appliedRowQuery, shown)) {
        // A query that cannot be read hides nothing.
        appliedRowQuery.clear();
        shown.fill(true, tableModel->rowCount());
    }
    // A header that paints finds each changed section's place on screen, which walks every
    // section before it; quiet, it only records the sizes, and the view lays its rows out once.
    QHeaderView* rows = tableView->verticalHeader();
    rows->setUpdatesEnabled(false);
    for (int r = 0; r < shown.size(); ++r)
        if (rows->isSectionHidden(r) == shown[r])
            tableView->setRowHidden(r, !shown[r]);
    rows->setUpdatesEnabled(true);
    tableView->viewport()->update();
}

bool vorelWindow::handleSpreadsheetKey(QObject* watched, const QKeyEvent* key) {
    if (watched != tableView)
        return false;
    if (key->matches(QKeySequence::Copy)) {
        copySelection();
        return true;
    }
    if (key->matches(QKeySequence::Paste)) {
        tableModel->pasteText(QApplication::clipboard()->text(), tableView->currentIndex());
        // Ctrl+Z in the window takes a paste back as it does a typed entry.
        lastUsedControl = tableView;
        return true;
    }
    if (key->matches(QKeySequence::SelectAll) && !appliedRowQuery.isEmpty()) {
        selectShownRows();
        return true;
    }
    return false;
}

void vorelWindow::copySelection() {
    QVector<bool> hiddenRows(tableModel->rowCount());
    QVector<bool> hiddenColumns(tableModel->columnCount());
    for (int r = 0; r < hiddenRows.size(); ++r)
        hiddenRows[r] = tableView->isRowHidden(r);
    for (int c = 0; c < hiddenColumns.size(); ++c)
        hiddenColumns[c] = tableView->isColumnHidden(c);
    const QByteArray text =
        tableModel->copiedText(tableView->selectionModel()->selection(), hiddenRows, hiddenColumns);
    if (text.isEmpty())
        return;
    // Handed over as UTF-8 bytes: a whole table is tens of megabytes of text.
    QMimeData* data = new QMimeData();
    data->setData("text/plain", text);
    QApplication::clipboard()->setMimeData(data);
}

void vorelWindow::selectShownRows() {
    const int last = tableModel->columnCount() - 1;
    QItemSelection shown;
    int start = -1;
    const int rows = tableModel->rowCount();
    for (int r = 0; r <= rows; ++r) {
        const bool visible = r < rows && !tableView->isRowHidden(r);
        if (visible && start < 0)
            start = r;
        if (!visible && start >= 0) {
            shown.select(tableModel->index(start, 0), tableModel->index(r - 1, last));
            start = -1;
        }
    }
    tableView->selectionModel()->select(shown, QItemSelectionModel::ClearAndSelect);
}
