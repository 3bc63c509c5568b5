// The table's own undo and redo copies of the weight list, headers and loaded shapes, the
// unrounded weights from which the display is rounded again when the precision changes, and
// the rebuild of the list from the scene after every command.
//
// Copies share rows (the rows are implicitly shared vectors), and both the rebuild and the
// cache keep the rows that did not change, so that each undo copy and each command holds only
// what its edit changed.
//
// Each copy remembers the row names of the table it was taken from (as one number): a copy of
// another table is never shown beside the current shapes or written into them; a table undo
// that finds one behaves as with an empty copy.
#include "HDagPathArray.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "weightRounding.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <vector>

using namespace weightRows;
using weightRounding::Correction;

namespace {

const char* const kRestoreFailed = "There is a problem with restoring weight data.";
const char* const kNoBottomRight =
    "Nothing to undo, there is something wrong with getting the bottomRight Index!";

// Appends `row`, or the row of `reuse` at the same position when that one is equal.
void appendReusing(WeightRows& rows, const WeightRow& row, const WeightRows& reuse) {
    const int position = rows.size();
    if (position < reuse.size() && reuse.at(position) == row)
        rows.append(reuse.at(position));
    else
        rows.append(row);
}

} // namespace

void weightTableModel::snapshotWeightRows() {
    keepRows(undoTable);
}

void weightTableModel::keepRows(TableCopy& copy) const {
    // Rows are shared, not copied: the copy stays as it is while the table's rows detach on
    // their next change.
    copy.weightRows = weightRows;
    copy.rowsKey = rowNamesKey;
}

void weightTableModel::keepTable(TableCopy& copy) const {
    copy.rowNames = rowNames;
    copy.influenceNames = influenceNames;
    copy.influenceColors = influenceColors;
    copy.skinClusters = skinClusters;
    copy.shapePaths = shapePaths;
    copy.shapeComponents = shapeComponents;
    copy.influencePaths = influencePaths;
    copy.influenceColumns = influenceColumns;
    keepRows(copy);
}

void weightTableModel::updateRowNamesKey() {
    // FNV-1a over every name and its end.
    quint64 key = 14695981039346656037ull;
    const auto mix = [&key](unsigned char byte) {
        key ^= byte;
        key *= 1099511628211ull;
    };
    for (unsigned i = 0; i < rowNames.length(); ++i) {
        const HString& name = rowNames[i];
        const char* text = name.asChar();
        for (unsigned c = 0; c < name.length(); ++c)
            mix(static_cast<unsigned char>(text[c]));
        mix(0);
    }
    rowNamesKey = key;
}

bool weightTableModel::matchesTable(const WeightRows& rows, quint64 rowsKey) const {
    return !rows.isEmpty() && rowsKey == rowNamesKey &&
           static_cast<unsigned>(rows.size()) == rowNames.length();
}

void weightTableModel::forgetTableCopies() {
    redoTable = TableCopy();
    fullPrecisionRows.clear();
    pendingRoundedRows.clear();
    releasedColumns.clear();
    releasedRows.clear();
    releasedCells.clear();
}

void weightTableModel::forgetUndoCopies() {
    undoTable = TableCopy();
}

weightTableModel::ShapeColumns weightTableModel::shapeColumns(unsigned shape) const {
    ShapeColumns columns;
    HDagPathArray influences;
    HFnSkinCluster(skinClusters[shape]).influenceObjects(influences);
    columns.elementOf.resize(influences.length());
    for (unsigned k = 0; k < influences.length(); ++k)
        columns.elementOf[k] = columnOfInfluence(influences[k]) + 1;
    columns.rowTemplate =
        WeightRow(static_cast<int>(influencePaths.length()) + 1, kMissingInfluence);
    columns.rowTemplate[0] = static_cast<double>(shape);
    // Columns that follow the influence order (one shape, or the first of several) allow the
    // one-pass fill; other layouts take the general steps, with the same result.
    columns.ordered = !columns.elementOf.empty();
    for (size_t k = 0; k < columns.elementOf.size(); ++k)
        columns.ordered = columns.ordered && columns.elementOf[k] > 0 &&
                          (k == 0 || columns.elementOf[k] > columns.elementOf[k - 1]);
    return columns;
}

Correction weightTableModel::fillDisplayRow(WeightRow& row, const ShapeColumns& columns,
                                            const double* weights, unsigned count,
                                            bool correct) const {
    double* cells = row.data();
    const unsigned used = std::min<unsigned>(count, columns.elementOf.size());
    const double tolerance = weightRounding::lastWeightTolerance(precision);
    if (columns.ordered)
        return weightRounding::fillRoundedRow(cells, row.size(), columns.elementOf.data(), weights,
                                              used, precision, tolerance, correct);
    for (unsigned k = 0; k < used; ++k)
        if (columns.elementOf[k] > 0)
            cells[columns.elementOf[k]] = weights[k];
    weightRounding::roundPositiveWeights(row, precision);
    return correct ? weightRounding::absorbIntoLastWeight(row, tolerance) : Correction::kDone;
}

void weightTableModel::appendSceneRows(WeightRows& rows, unsigned shape, const HObject& vertices,
                                       const WeightRows& reuse, SceneRows kind, bool& correcting) {
    const int headerRow = rows.size();
    appendReusing(rows, WeightRow(static_cast<int>(influencePaths.length()) + 1, kHeaderCell),
                  reuse);
    const ShapeColumns columns = shapeColumns(shape);
    bool unnormalised = false;
    // A row is filled in place and kept only when no equal row of `reuse` can stand for it, so
    // that reading a table again allocates only the rows that changed.
    WeightRow row;
    weightWriting::readVertexWeights(
        skinClusters[shape], shapePaths[shape], vertices,
        [&](int, const double* weights, unsigned count) {
            if (row.isDetached() && row.size() == columns.rowTemplate.size())
                std::copy(columns.rowTemplate.constBegin(), columns.rowTemplate.constEnd(),
                          row.data());
            else
                row = columns.rowTemplate;
            if (kind != SceneRows::kRoundedForDisplay) {
                double sum = 0.0;
                for (unsigned k = 0; k < count && k < columns.elementOf.size(); ++k)
                    sum += weights[k];
                unnormalised = unnormalised || !isNormalised(sum, precision);
            }
            if (kind == SceneRows::kMarkedFullPrecision) {
                double* cells = row.data();
                for (unsigned k = 0; k < count && k < columns.elementOf.size(); ++k)
                    if (columns.elementOf[k] > 0)
                        cells[columns.elementOf[k]] = weights[k];
            } else if (correcting) {
                // A vertex without weight ends the correction for every later row.
                correcting = reportCorrection(fillDisplayRow(row, columns, weights, count, true));
                if (!correcting)
                    uncorrectedFrom = rows.size();
            } else {
                fillDisplayRow(row, columns, weights, count, false);
            }
            const int position = rows.size();
            if (position < reuse.size() && reuse.at(position) == row) {
                rows.append(reuse.at(position));
            } else {
                rows.append(row);
                row = WeightRow();
            }
        });
    if (unnormalised)
        rows[headerRow][0] = kUnnormalisedShapeRow;
}

WeightRows weightTableModel::readSceneRows(const WeightRows& reuse, SceneRows kind) {
    WeightRows rows;
    rows.reserve(reuse.size());
    bool correcting = true;
    for (unsigned shape = 0; shape < shapePaths.length() && shape < skinClusters.length(); ++shape)
        appendSceneRows(rows, shape, shapeComponents[shape], reuse, kind, correcting);
    return rows;
}

void weightTableModel::cacheFullPrecisionWeights() {
    const WeightRows previous = fullPrecisionRows;
    fullPrecisionRows.clear();
    if (skinClusters.length() == 0) {
        HGlobal::displayError("There is no weight to be cached.");
        return;
    }
    if (shapePaths.length() == 0)
        return;
    fullPrecisionRows = readSceneRows(previous, SceneRows::kMarkedFullPrecision);
    fullPrecisionKey = rowNamesKey;
}

void weightTableModel::rebuildWeightRows() {
    const int previousRows = weightRows.size();
    const WeightRows previous = weightRows;
    weightRows.clear();
    uncorrectedFrom = kCorrectedThroughout;
    weightRows = readSceneRows(previous, SceneRows::kRoundedForDisplay);
    followScene();
    notifyWholeTable(previousRows);
}

void weightTableModel::markShapeRows() {
    int headerRow = -1;
    bool unnormalised = false;
    auto finishShape = [&]() {
        if (headerRow == -1)
            return;
        const double mark = unnormalised ? kUnnormalisedShapeRow : kShapeRow;
        if (weightRows.at(headerRow).at(0) != mark)
            weightRows[headerRow][0] = mark;
    };
    for (int r = 0; r < weightRows.size(); ++r) {
        const WeightRow& row = weightRows.at(r);
        if (row.isEmpty())
            continue;
        if (!isVertexRow(row)) {
            finishShape();
            headerRow = r;
            unnormalised = false;
        } else if (!isNormalised(weightSum(row), precision)) {
            unnormalised = true;
        }
    }
    finishShape();
}

void weightTableModel::finishLayoutChange() {
    // Persistent indexes (the views' selection) that fall outside the table as it now is go.
    for (const QModelIndex& index : persistentIndexList())
        if (index.row() >= rowCount() || index.column() >= columnCount())
            changePersistentIndex(index, QModelIndex());
    emit layoutChanged();
}

void weightTableModel::notifyWholeTable(int previousRows) {
    const int lastRow = weightRows.size() - 1;
    // A list of another length needs the views to take in the new shape first.
    if (previousRows != weightRows.size() || lastRow < 1) {
        emit layoutAboutToBeChanged();
        finishLayoutChange();
    }
    if (lastRow < 1)
        return;
    const int elements = weightRows.at(lastRow).size();
    if (elements - 1 < 0)
        HGlobal::displayError(kNoBottomRight);
    const QModelIndex topLeft = index(0, 0);
    const QModelIndex bottomRight = index(lastRow, elements - 2);
    if (topLeft.isValid() && bottomRight.isValid())
        emit dataChanged(topLeft, bottomRight);
    emit headerDataChanged(Qt::Vertical, 0, lastRow);
    // Element 0 of a row is its marker, so the last column is the row's size less two.
    if (elements >= 2)
        emit headerDataChanged(Qt::Horizontal, 0, elements - 2);
}

void weightTableModel::restoreRows(const TableCopy& restored, TableCopy& kept) {
    rowsFollowScene = false;
    const bool ours = matchesTable(restored.weightRows, restored.rowsKey);
    keepRows(kept);
    weightRows = ours ? restored.weightRows : WeightRows();
}

void weightTableModel::restoreRowsAndRefresh(const TableCopy& restored, TableCopy& kept) {
    const int previousRows = weightRows.size();
    restoreRows(restored, kept);
    refreshRestoredRows(previousRows);
}

void weightTableModel::restoreRowsLaidOut(const TableCopy& restored, TableCopy& kept) {
    emit layoutAboutToBeChanged();
    restoreRows(restored, kept);
    if (weightRows.isEmpty())
        HGlobal::displayError(kRestoreFailed);
    finishLayoutChange();
}

void weightTableModel::restoreRedoRows() {
    restoreRowsLaidOut(redoTable, undoTable);
}

void weightTableModel::restoreRedoRowsAndRefresh() {
    restoreRowsAndRefresh(redoTable, undoTable);
}

void weightTableModel::restoreUndoRows() {
    restoreRowsLaidOut(undoTable, redoTable);
}

void weightTableModel::restoreUndoRowsAndRefresh() {
    restoreRowsAndRefresh(undoTable, redoTable);
}

void weightTableModel::refreshRestoredRows(int previousRows) {
    if (weightRows.isEmpty()) {
        HGlobal::displayError(kRestoreFailed);
        if (previousRows != 0) {
            emit layoutAboutToBeChanged();
            finishLayoutChange();
        }
        return;
    }
    markShapeRows();
    notifyWholeTable(previousRows);
}

void weightTableModel::restoreLoad(const TableCopy& restored, TableCopy& kept) {
    beginResetModel();
    rowsFollowScene = false;
    keepTable(kept);
    rowNames.clear();
    // As many names as the restored list has rows, whatever the copy holds.
    for (int r = 0;
         r < restored.weightRows.size() && static_cast<unsigned>(r) < restored.rowNames.length();
         ++r)
        rowNames.append(restored.rowNames[static_cast<unsigned>(r)]);
    influenceNames = restored.influenceNames;
    influenceColors = restored.influenceColors;
    skinClusters = restored.skinClusters;
    shapePaths = restored.shapePaths;
    shapeComponents = restored.shapeComponents;
    influencePaths = restored.influencePaths;
    influenceColumns = restored.influenceColumns;
    updateRowNamesKey();
    weightRows =
        matchesTable(restored.weightRows, restored.rowsKey) ? restored.weightRows : WeightRows();
    if (weightRows.isEmpty())
        HGlobal::displayError(kRestoreFailed);
    else
        markShapeRows();
    endResetModel();
}

void weightTableModel::restoreUndoLoad() {
    restoreLoad(undoTable, redoTable);
}

void weightTableModel::restoreRedoLoad() {
    restoreLoad(redoTable, undoTable);
}

void weightTableModel::undoPrecision() {
    if (precision != lastPrecision)
        rowsFollowScene = false;
    precision = lastPrecision;
}

void weightTableModel::undoMaxInfluence() {
    maxInfluences = lastMaxInfluences;
    const int lastRow = rowCount() - 1;
    if (lastRow < 0)
        HGlobal::displayError(kNoBottomRight);
    else
        emit headerDataChanged(Qt::Vertical, 0, lastRow);
}

void weightTableModel::undoApplyPrecision() {
    writeWeightRowsToScene(fullPrecisionRows, fullPrecisionKey);
}

void weightTableModel::redoApplyPrecision() {
    writeWeightRowsToScene(pendingRoundedRows, pendingRoundedKey);
}
