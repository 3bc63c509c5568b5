// What the views ask of the model: sizes, texts, colours, flags; the hiding of columns without
// weight; and the hilite mode that mirrors table selections into the scene.
//
// Colours carry the table's signals: red for a vertex that does not sum to one, yellow for a
// vertex over the influence limit, gray for locks, dark cyan for weights that show at the
// current precision, and each influence's own colour across the shape header rows.
#include "HFnDagNode.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "weightTableModel.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QSet>

using namespace weightRows;

namespace {

const char* const kNoWeightList = "There is no weight list displayed in the window.";

} // namespace

int weightTableModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid() || weightRows.isEmpty())
        return 0;
    return weightRows.size();
}

int weightTableModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return static_cast<int>(influenceNames.length());
}

QVariant weightTableModel::data(const QModelIndex& index, int role) const {
    if (weightRows.isEmpty() || !index.isValid() || index.row() >= weightRows.size())
        return QVariant();
    const WeightRow& cells = weightRows[index.row()];
    if (index.column() + 1 >= cells.size())
        return QVariant();
    const double value = cells[index.column() + 1];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (value == kMissingInfluence || value == kHeaderCell)
            return QString();
        return QString::number(value, 'f', precision);
    case Qt::BackgroundRole:
        return cellBackground(index.row(), index.column(), value);
    case Qt::ForegroundRole:
        return cellForeground(index.row(), index.column(), value);
    default:
        return QVariant();
    }
}

QVariant weightTableModel::cellBackground(int row, int column, double value) const {
    if (value == kHeaderCell)
        return column < influenceColors.size() ? QVariant(influenceColors[column]) : QVariant();
    if (hasLocks() &&
        (lockedColumns.contains(column) || lockedRows.contains(row) || isLockedCell(row, column)))
        return QColor(Qt::gray);
    // Weights that round to zero at the current precision stay unpainted.
    if (value >= normalisedTolerance(precision) * 0.5)
        return QColor(Qt::darkCyan);
    return QVariant();
}

QVariant weightTableModel::cellForeground(int row, int column, double value) const {
    if (value == kHeaderCell)
        return QVariant();
    if (!isNormalised(weightSum(weightRows[row]), precision))
        return QColor(Qt::red);
    if (isLockedCell(row, column) || lockedColumns.contains(column) || lockedRows.contains(row))
        return QColor(Qt::black);
    return QVariant();
}

QVariant weightTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (weightRows.isEmpty() || section < 0)
        return QVariant();
    const bool horizontal = orientation == Qt::Horizontal;
    if (role == Qt::DisplayRole) {
        const HStringArray& names = horizontal ? influenceNames : rowNames;
        if (static_cast<unsigned>(section) >= names.length())
            return QVariant();
        return HQtUtil::toQString(names[static_cast<unsigned>(section)]);
    }
    if (role != Qt::BackgroundRole && role != Qt::ForegroundRole)
        return QVariant();
    if (horizontal) {
        if (!lockedColumns.contains(section))
            return QVariant();
        return QColor(role == Qt::BackgroundRole ? Qt::gray : Qt::black);
    }
    if (section >= weightRows.size())
        return QVariant();
    return verticalHeaderColor(section, role);
}

QVariant weightTableModel::verticalHeaderColor(int section, int role) const {
    const WeightRow& row = weightRows[section];
    const bool overLimit = positiveCount(section) > maxInfluences;
    if (role == Qt::ForegroundRole)
        return overLimit || lockedRows.contains(section) ? QVariant(QColor(Qt::black)) : QVariant();
    if (row[0] == kUnnormalisedShapeRow)
        return QColor(Qt::red);
    if (!isVertexRow(row))
        return QVariant();
    if (!isNormalised(weightSum(row), precision))
        return QColor(Qt::red);
    if (overLimit)
        return QColor(Qt::yellow);
    if (lockedRows.contains(section))
        return QColor(Qt::gray);
    return QVariant();
}

int weightTableModel::positiveCount(int row) const {
    const WeightRow& cells = weightRows[row];
    int count = 0;
    for (int i = 1; i < cells.size(); ++i)
        if (cells[i] > 0.0)
            ++count;
    return count;
}

Qt::ItemFlags weightTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    const int row = index.row(), column = index.column();
    if (isLockedCell(row, column) || lockedRows.contains(row) || lockedColumns.contains(column))
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled;
}

bool weightTableModel::hasLocks() const {
    // A stored joint lock whose influence is no column of this table (-1) locks nothing.
    for (int column : lockedColumns)
        if (column >= 0)
            return true;
    return !lockedRows.isEmpty() || !lockedCells.isEmpty();
}

bool weightTableModel::isLockedCell(int row, int column) const {
    return lockedCellSet.contains(qMakePair(row, column));
}

void weightTableModel::addLockedCell(int row, int column) {
    lockedCells.append(QList<int>{row, column});
    lockedCellSet.insert(qMakePair(row, column));
}

void weightTableModel::removeLockedCell(int row, int column) {
    if (lockedCellSet.remove(qMakePair(row, column)))
        lockedCells.removeAll(QList<int>{row, column});
}

void weightTableModel::clearLockedCells() {
    lockedCells.clear();
    lockedCellSet.clear();
}

void weightTableModel::setUpColumn() {
    if (weightRows.isEmpty())
        return;
    const int elements = weightRows[0].size();
    QVector<bool> hasWeight(elements, false);
    // The scan ends as soon as every column has shown a weight, which on a real mesh is after
    // a few rows.
    int withoutWeight = elements - 1;
    for (const WeightRow& row : qAsConst(weightRows)) {
        const int end = qMin(elements, row.size());
        const double* cells = row.constData();
        for (int i = 1; i < end; ++i)
            if (cells[i] > 0.0 && !hasWeight[i]) {
                hasWeight[i] = true;
                --withoutWeight;
            }
        if (withoutWeight == 0)
            break;
    }
    zeroColumns.clear();
    for (int i = 1; i < elements; ++i)
        if (!hasWeight[i])
            zeroColumns.append(i - 1);

    emit emptyColumnsChanged(zeroColumns, filterOn);
}

void weightTableModel::toggleFilter(bool checked) {
    filterOn = checked;
    if (weightRows.isEmpty())
        HGlobal::displayError(kNoWeightList);
    else
        setUpColumn();
}

void weightTableModel::toggleHilight(bool checked) {
    hilightOn = checked;
    if (weightRows.isEmpty())
        HGlobal::displayError(kNoWeightList);
    if (!checked) {
        HGlobal::executeCommand("refresh");
        hiliteSelection(HSelectionList());
        return;
    }
    if (!tableSelection)
        return;
    const QModelIndexList columns = tableSelection->selectedColumns();
    if (!columns.isEmpty()) {
        columnHeaderSelected(columns.first().column());
        return;
    }
    QList<int> rows;
    for (const QModelIndex& index : selectedIndexes())
        if (!rows.contains(index.row()))
            rows.append(index.row());
    setSceneSelection(vertexSelection(rows));
}

HSelectionList weightTableModel::vertexSelection(const QList<int>& rows) const {
    HSelectionList list;
    for (int row : rows) {
        if (row < 0 || row >= weightRows.size() || !isVertexRow(weightRows[row]))
            continue;
        const unsigned shape = static_cast<unsigned>(weightRows[row][0]);
        if (shape >= shapePaths.length())
            continue;
        list.add(HFnDagNode(shapePaths[shape]).name() + "." + rowNames[static_cast<unsigned>(row)]);
    }
    return list;
}

QModelIndexList weightTableModel::selectedIndexes() const {
    if (!tableSelection)
        return QModelIndexList();
    return tableSelection->selectedIndexes();
}

void weightTableModel::hiliteSelection(const HSelectionList& list) {
    HGlobal::setHiliteList(list);
    setSceneSelection(list);
}

QModelIndex weightTableModel::topRightUnlockedIndex() const {
    QModelIndexList kept;
    for (const QModelIndex& index : selectedIndexes()) {
        const int row = index.row(), column = index.column();
        if (lockedColumns.contains(column) || lockedRows.contains(row) ||
            isLockedCell(row, column) || (filterOn && zeroColumns.contains(column)))
            continue;
        if (!data(index, Qt::DisplayRole).toString().isEmpty())
            kept.append(index);
    }
    int column = -1;
    for (const QModelIndex& index : kept)
        if (column == -1 || index.column() > column)
            column = index.column();
    QModelIndex topRight;
    for (const QModelIndex& index : kept)
        if (index.column() == column && (!topRight.isValid() || index.row() < topRight.row()))
            topRight = index;
    return topRight;
}

void weightTableModel::storeTopRightValue() {
    const QModelIndex topRight = topRightUnlockedIndex();
    if (topRight.isValid())
        topRightValue = weightRows[topRight.row()][topRight.column() + 1];
}

void weightTableModel::cellSelected(const QModelIndex&) {
    if (!hilightOn)
        return;
    HGlobal::setHiliteList(HSelectionList());
    QList<int> rows;
    for (const QModelIndex& index : selectedIndexes())
        rows.append(index.row());
    setSceneSelection(vertexSelection(rows));
    HGlobal::executeCommand("refresh");
}

void weightTableModel::columnHeaderSelected(int) {
    if (hilightOn && tableSelection) {
        HGlobal::setHiliteList(HSelectionList());
        for (const QModelIndex& column : tableSelection->selectedColumns()) {
            HSelectionList hilite;
            HGlobal::getHiliteList(hilite);
            hilite.add(influenceNames[static_cast<unsigned>(column.column())]);
            HGlobal::setHiliteList(hilite);
        }
    }
    storeTopRightValue();
}

void weightTableModel::rowHeaderSelected() {
    if (hilightOn && tableSelection) {
        HGlobal::setHiliteList(HSelectionList());
        QList<int> rows;
        for (const QModelIndex& row : tableSelection->selectedRows())
            rows.append(row.row());
        setSceneSelection(vertexSelection(rows));
        HGlobal::executeCommand("refresh");
    }
    storeTopRightValue();
}

void weightTableModel::multiCellSelected() {
    cellSelected(index(0, 0));
    storeTopRightValue();
}
