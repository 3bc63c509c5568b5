// Typed cell values and operator entries ("+=", "-=", "*=", "/="), handed to "vorelCmd -setData"
// for every selected cell, then read back from the scene.
#include "HGlobal.h"
#include "weightTableModel.h"

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

bool weightTableModel::setData(const QModelIndex& editedIndex, const QVariant& value, int role) {
    if (role != Qt::EditRole)
        return true;
    pendingValues.clear();
    pendingCells.clear();
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
                pendingValues.append(weight);
                pendingCells.append(cell);
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
            pendingValues.append(result);
            pendingCells.append(cell);
        }
    }
    HGlobal::executeCommand("vorelCmd -setData", true, true);
    for (const QModelIndex& cell : selected)
        updateWeightListAtIndex(cell);
    if (editedIndex.isValid() && editedIndex.row() < weightRows.size() &&
        editedIndex.column() + 1 < weightRows.at(editedIndex.row()).size())
        topRightValue = weightRows.at(editedIndex.row()).at(editedIndex.column() + 1);
    setUpColumn();
    return true;
}
