// Pasting text into the table (Ctrl+V): the text's columns map by joint name or from the
// current cell, its rows by "SHAPE.vtx[N]" or from the current cell (one row fills every
// selected row), and the values become one "vorelCmd -paste" run. Every value is checked
// before anything is written.
#include "HGlobal.h"
#include "HQtUtil.h"
#include "pastedText.h"
#include "weightTableModel.h"

#include <QHash>
#include <QSet>

namespace {

const char* const kValueOutOfRange = "The value entered has to be between 0.0 and 1.0.";

} // namespace

bool weightTableModel::pasteColumns(const pastedText::Block& block, int currentColumn,
                                    QList<int>& columns) const {
    const int width = block.values.isEmpty() ? 0 : block.values.first().size();
    if (block.columnNames.isEmpty()) {
        for (int f = 0; f < width; ++f)
            columns.append(currentColumn + f < columnCount() ? currentColumn + f : -1);
        return true;
    }
    QString unknown;
    bool anyKnown = false;
    for (const QString& name : block.columnNames) {
        const int column = influenceColumnOfName(name);
        columns.append(column);
        anyKnown = anyKnown || column >= 0;
        if (column < 0 && !name.isEmpty() && unknown.isEmpty())
            unknown = name;
    }
    // A first line without one joint's name is not a header but text that is not a number.
    if (!anyKnown) {
        HGlobal::displayError(kValueOutOfRange);
        return false;
    }
    if (!unknown.isEmpty()) {
        HGlobal::displayError(
            QString("Unknown joint \"%1\" in the pasted text.").arg(unknown).toUtf8().constData());
        return false;
    }
    return true;
}

int weightTableModel::influenceColumnOfName(const QString& name) const {
    for (unsigned c = 0; c < influenceNames.length(); ++c)
        if (HQtUtil::toQString(influenceNames[c]) == name)
            return static_cast<int>(c);
    return -1;
}

bool weightTableModel::pasteRows(const pastedText::Block& block, const QModelIndex& current,
                                 QList<int>& rows) const {
    if (!block.rowNames.isEmpty()) {
        const QHash<QString, int> named = rowsByPastedName();
        for (const QString& name : block.rowNames) {
            const int row = named.value(name, -1);
            if (row < 0) {
                HGlobal::displayError(
                    QString("The row \"%1\" is not in the table.").arg(name).toUtf8().constData());
                return false;
            }
            rows.append(row);
        }
        return true;
    }
    // One line over several selected vertex rows fills each of them.
    if (block.values.size() == 1) {
        QSet<int> selected;
        for (const QModelIndex& index : selectedIndexes())
            if (weightRows::isVertexRow(weightRows.value(index.row())))
                selected.insert(index.row());
        if (selected.size() > 1) {
            rows = QList<int>(selected.begin(), selected.end());
            std::sort(rows.begin(), rows.end());
            return true;
        }
    }
    // Otherwise the lines go to the vertex rows from the current cell's down, past header rows.
    int row = current.isValid() ? current.row() : 0;
    for (int line = 0; line < block.values.size(); ++line) {
        while (row < weightRows.size() && !weightRows::isVertexRow(weightRows[row]))
            ++row;
        rows.append(row < weightRows.size() ? row : -1);
        ++row;
    }
    return true;
}

QHash<QString, int> weightTableModel::rowsByPastedName() const {
    // "SHAPE.vtx[N]" names one row; "vtx[N]" the first loaded shape's that has it.
    QHash<QString, int> rows;
    QString shape;
    for (int r = 0; r < weightRows.size(); ++r) {
        const QString name = HQtUtil::toQString(rowNames[static_cast<unsigned>(r)]);
        if (!weightRows::isVertexRow(weightRows[r])) {
            shape = name;
            continue;
        }
        rows.insert(shape + '.' + name, r);
        if (!rows.contains(name))
            rows.insert(name, r);
    }
    return rows;
}

void weightTableModel::pasteText(const QString& text, const QModelIndex& current) {
    if (weightRows.isEmpty()) {
        HGlobal::displayError("There is no weight list displayed in the window.");
        return;
    }
    const pastedText::Block block = pastedText::read(text);
    QList<int> columns;
    QList<int> rows;
    if (block.values.isEmpty()) {
        if (!block.columnNames.isEmpty())
            HGlobal::displayError(kValueOutOfRange);
        return;
    }
    if (!pasteColumns(block, current.isValid() ? current.column() : 0, columns) ||
        !pasteRows(block, current, rows))
        return;
    QModelIndexList cells;
    QList<double> values;
    const QSet<int> lockedRowSet(lockedRows.begin(), lockedRows.end());
    int lockedSkipped = 0;
    int scaledRows = 0;
    for (int line = 0; line < rows.size(); ++line) {
        const QStringList& fields = block.values[rows.size() == block.values.size() ? line : 0];
        const int row = rows[line];
        const int firstCell = cells.size();
        for (int f = 0; f < fields.size() && f < columns.size(); ++f) {
            if (fields[f].isEmpty())
                continue;
            double value = 0.0;
            if (!pastedText::readNumber(fields[f], value) || !(value >= 0.0 && value <= 1.0)) {
                HGlobal::displayError(kValueOutOfRange);
                return;
            }
            const int column = columns[f];
            if (row < 0 || column < 0 ||
                weightRows[row].value(column + 1, weightRows::kMissingInfluence) ==
                    weightRows::kMissingInfluence)
                continue;
            if (lockedRowSet.contains(row) || lockedColumns.contains(column) ||
                isLockedCell(row, column)) {
                ++lockedSkipped;
                continue;
            }
            cells.append(index(row, column));
            values.append(value);
        }
        scaledRows += fitPastedRow(row, cells.mid(firstCell), values, firstCell) ? 1 : 0;
    }
    if (lockedSkipped > 0)
        HGlobal::displayInfo(QString("%1 locked cells were left as they were.")
                                 .arg(lockedSkipped)
                                 .toUtf8()
                                 .constData());
    if (scaledRows > 0)
        HGlobal::displayInfo(QString("The pasted values of %1 rows were scaled to sum to one.")
                                 .arg(scaledRows)
                                 .toUtf8()
                                 .constData());
    if (cells.isEmpty())
        return;
    pendingPaste = cellValuesRequest(cells, values);
    snapshotWeightRows();
    HGlobal::executeCommand("vorelCmd -paste", true, true);
    setUpColumn();
}

bool weightTableModel::fitPastedRow(int row, const QModelIndexList& rowCells, QList<double>& values,
                                    int first) const {
    double pasted = 0.0;
    for (int i = 0; i < rowCells.size(); ++i)
        pasted += values[first + i];
    // The weights the row's locks hold stay; the pasted values share what is left.
    double locked = 0.0;
    const WeightRow& weights = weightRows[row];
    for (int column = 0; column + 1 < weights.size(); ++column)
        if (weights[column + 1] > 0.0 &&
            (lockedColumns.contains(column) || isLockedCell(row, column)))
            locked += weights[column + 1];
    const double room = std::max(0.0, 1.0 - locked);
    if (pasted <= room + weightRows::normalisedTolerance(precision) * 0.5 || pasted <= 0.0)
        return false;
    for (int i = 0; i < rowCells.size(); ++i)
        values[first + i] *= room / pasted;
    return true;
}
