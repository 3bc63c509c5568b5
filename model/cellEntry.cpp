// Typed cell values and operator entries ("+=", "-=", "*=", "/="), handed to "vorelCmd -setData"
// for every selected cell, then read back from the scene; and the request that carries cell
// values to the command.
#include "HGlobal.h"
#include "HQtUtil.h"
#include "weightTableModel.h"

#include <QHash>
#include <QPair>

namespace {

double applyOperator(const QString& op, double current, double operand) {
    if (op == "+=")
        return current + operand;
    if (op == "-=")
        return current - operand;
    if (op == "*=")
        return operand * current;
    if (op == "/=")
        return current / operand;
    return 0.0;
}

} // namespace

// A typed entry goes to the selected cells that show a weight and are not locked: a locked cell
// in the selection keeps its weight as it does under every other edit.
bool weightTableModel::isEntryTarget(const QModelIndex& cell) const {
    return (flags(cell) & Qt::ItemIsEditable) && !data(cell, Qt::DisplayRole).toString().isEmpty();
}

CellValuesRequest weightTableModel::cellValuesRequest(const QModelIndexList& cells,
                                                      const QList<double>& values) const {
    CellValuesRequest request;
    request.pendingCells = cells;
    request.pendingValues = values;
    request.identities.reserve(cells.size());
    // Each shape's influence of a column is looked up once, however many cells share it.
    QHash<QPair<int, int>, int> influenceOf;
    for (const QModelIndex& cell : cells) {
        CellIdentity identity;
        identity.shape = loadedShapeOfRow(cell.row());
        if (identity.shape >= 0 &&
            !weightRows::vertexIndexOfRowName(headerData(cell.row(), Qt::Vertical).toString(),
                                              identity.vertex))
            identity.vertex = -1;
        if (identity.shape >= 0) {
            const QPair<int, int> key(identity.shape, cell.column());
            auto found = influenceOf.constFind(key);
            if (found == influenceOf.constEnd())
                found = influenceOf.insert(
                    key,
                    influenceIndexByName(
                        skinClusters[static_cast<unsigned>(identity.shape)],
                        HQtUtil::toHString(headerData(cell.column(), Qt::Horizontal).toString())));
            identity.influence = *found;
        }
        request.identities.append(identity);
    }
    return request;
}

bool weightTableModel::setData(const QModelIndex& editedIndex, const QVariant& value, int role) {
    if (role != Qt::EditRole)
        return true;
    QModelIndexList cells;
    QList<double> values;
    const QModelIndexList selected = selectedIndexes();
    QString entry = value.toString();
    const bool operatorEntry = entry.size() > 2 && entry.indexOf('=') == 1;
    if (!operatorEntry) {
        const double weight = value.toDouble();
        if (weight < 0.0 || weight > 1.0) {
            HGlobal::displayError("The value entered has to be between 0.0 and 1.0.");
            return false;
        }
        for (const QModelIndex& cell : selected)
            if (isEntryTarget(cell)) {
                values.append(weight);
                cells.append(cell);
            }
    } else {
        for (const QModelIndex& cell : selected) {
            if (!isEntryTarget(cell))
                continue;
            const double current = data(cell, Qt::DisplayRole).toDouble();
            // The operator is cut from the one entry text all cells share, so every cell after
            // the first reads its operator from what remains of the number.
            const QString op = entry.left(2);
            entry.remove(0, 2);
            double result = applyOperator(op, current, entry.toDouble());
            if (result < 0.0)
                result = 0.0;
            else if (result > 1.0)
                result = 1.0;
            values.append(result);
            cells.append(cell);
        }
    }
    pendingCellValues = cellValuesRequest(cells, values);
    HGlobal::executeCommand("vorelCmd -setData", true, true);
    for (const QModelIndex& cell : selected)
        updateWeightListAtIndex(cell);
    if (editedIndex.isValid() && editedIndex.row() < weightRows.size() &&
        editedIndex.column() + 1 < weightRows.at(editedIndex.row()).size())
        topRightValue = weightRows.at(editedIndex.row()).at(editedIndex.column() + 1);
    setUpColumn();
    return true;
}
