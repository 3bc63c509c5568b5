// Writing one cell through the skin cluster with the vertex kept normalised, reading a vertex
// back, and rounding the displayed weights so that each vertex row again sums to one.
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "weightRounding.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <algorithm>

using namespace weightRows;
using weightRounding::Correction;

namespace {

const char* const kTooShort = "This row doesn't have more than 2 columns.";
const char* const kBadIndex = "There is an error passing in the index.";

} // namespace

bool weightTableModel::writeNormalisedWeight(int row, int column, double value) {
    if (weightRows.isEmpty()) {
        HGlobal::displayInfo("There is no weight list created yet.");
        return false;
    }
    if (row < 1 || row >= weightRows.size())
        return false;
    const int shape = loadedShapeOfRow(row);
    if (shape < 0) {
        HGlobal::displayInfo("This is not a valid cell to edit.");
        return false;
    }
    const HObject cluster = skinClusters[static_cast<unsigned>(shape)];
    const HDagPath shapePath = shapePaths[static_cast<unsigned>(shape)];
    int vertex = 0;
    // A row name that is no vertex leaves nothing to write; that is not an error of the call.
    if (!vertexIndexOfRowName(headerData(row, Qt::Vertical).toString(), vertex))
        return true;
    const HObject component = weightWriting::singleVertexComponent(vertex);
    const HString influence = HQtUtil::toHString(headerData(column, Qt::Horizontal).toString());
    const int influenceIndex = influenceIndexByName(cluster, influence);

    // The row's other locked cells keep their weights while the host normalises this one.
    QList<HString> lockedInfluences;
    for (const QList<int>& cell : qAsConst(lockedCells))
        if (cell.size() == 2 && cell[0] == row && cell[1] != column)
            lockedInfluences.append(
                HQtUtil::toHString(headerData(cell[1], Qt::Horizontal).toString()));
    {
        weightWriting::InfluenceLockGuard locks(lockedInfluences, true);
        weightWriting::NormalisationGuard normalisation(cluster);
        HFnSkinCluster(cluster).setWeights(shapePath, component,
                                           static_cast<unsigned>(influenceIndex), value, true);
    }
    updateWeightListAtIndex(index(row, column));
    return true;
}

void weightTableModel::updateWeightListAtIndex(const QModelIndex& modelIndex) {
    if (!modelIndex.isValid() || modelIndex.row() >= weightRows.size()) {
        HGlobal::displayError(
            "The passed in index is not valid. The weight list is not updated correctly.");
        return;
    }
    const int row = modelIndex.row();
    const int editedColumn = modelIndex.column();
    const int shape = loadedShapeOfRow(row);
    if (shape < 0) {
        HGlobal::displayError(kBadIndex);
        return;
    }
    int vertex = 0;
    if (!vertexIndexOfRowName(headerData(row, Qt::Vertical).toString(), vertex)) {
        HGlobal::displayError("There is some error with parsing the vertex index value.");
        return;
    }
    HFnSkinCluster cluster(skinClusters[static_cast<unsigned>(shape)]);
    HDoubleArray weights;
    unsigned count = 0;
    cluster.getWeights(shapePaths[static_cast<unsigned>(shape)],
                       weightWriting::singleVertexComponent(vertex), weights, count);
    HDagPathArray influences;
    cluster.influenceObjects(influences);

    // Work on a copy, so that a row the read leaves as it was stays shared with the undo copies.
    const WeightRow original = weightRows[row];
    WeightRow updated = original;
    for (unsigned i = 0; i < count && i < weights.length() && i < influences.length(); ++i) {
        const int column = columnOfInfluence(influences[i]);
        if (column >= 0 && column + 1 < updated.size() && updated.at(column + 1) != weights[i])
            updated[column + 1] = weights[i];
    }
    weightRows[row] = updated;
    roundRowToPrecision(precision, row, editedColumn);
    if (weightRows[row] == original)
        weightRows[row] = original;

    double sum = 0.0;
    for (int i = 1; i < weightRows[row].size(); ++i)
        if (weightRows[row].at(i) >= 0.0)
            sum += weightRows[row].at(i);
    const int shapeRow = findShapeRow(row);
    if (shapeRow == -1) {
        HGlobal::displayError("There is problem getting shape row number.");
        return;
    }
    // The mark follows the vertex updated last, whichever vertex of the shape that was.
    const double mark = isNormalised(sum, precision) ? kShapeRow : kUnnormalisedShapeRow;
    if (weightRows[shapeRow].at(0) != mark)
        weightRows[shapeRow][0] = mark;
    emit headerDataChanged(Qt::Vertical, shapeRow, shapeRow);
    emit headerDataChanged(Qt::Vertical, row, row);
}

void weightTableModel::roundRowToPrecision(int precisionNum, int row, int editedColumn) {
    if (precisionNum != precision)
        rowsFollowScene = false;
    precision = precisionNum;
    if (row < 0) {
        HGlobal::displayError("The passed-in row number is negative.");
        return;
    }
    if (row >= weightRows.size())
        return;
    if (weightRows[row].at(0) < 0.0) {
        HGlobal::displayError("You can't set precision on shape row.");
        return;
    }
    // The row now differs from what a rebuild would show: the next refresh reads it again.
    markForReread(row);
    WeightRow& cells = weightRows[row];
    weightRounding::roundPositiveWeights(cells, precision);
    const Correction result =
        weightRounding::absorbIntoFreeWeight(cells, editedColumn, [&](int column) {
            return lockedColumns.contains(column) || isLockedCell(row, column);
        });
    if (result == Correction::kTooShort)
        HGlobal::displayError(kTooShort);
    else if (result == Correction::kNotFound)
        HGlobal::displayError("Could not find proper cell to deduct weight.");

    const int elements = weightRows[row].size();
    if (elements - 1 < 0) {
        HGlobal::displayError("There is something wrong with getting the bottomRight Index!");
        return;
    }
    emit dataChanged(index(row, 0), index(row, elements - 2));
}

void weightTableModel::roundAllRowsToPrecision() {
    // Iterating by index keeps rows that rounding leaves alone shared with the undo copies.
    for (int r = 0; r < weightRows.size(); ++r)
        if (isVertexRow(weightRows.at(r)))
            weightRounding::roundPositiveWeights(weightRows[r], precision);
    const double tolerance = weightRounding::lastWeightTolerance(precision);
    uncorrectedFrom = kCorrectedThroughout;
    for (int r = 0; r < weightRows.size(); ++r) {
        if (!isVertexRow(weightRows.at(r)))
            continue;
        if (!reportCorrection(weightRounding::absorbIntoLastWeight(weightRows[r], tolerance))) {
            uncorrectedFrom = r;
            return;
        }
    }
}

bool weightTableModel::reportCorrection(Correction result) const {
    switch (result) {
    case Correction::kTooShort:
        HGlobal::displayError(kTooShort);
        return true;
    case Correction::kNoPositiveWeight:
        HGlobal::displayError("There is something wrong accessing weight data.");
        return false;
    case Correction::kNotFound:
        HGlobal::displayError("There is something wrong getting last index.");
        return true;
    case Correction::kDone:
        break;
    }
    return true;
}

int weightTableModel::findShapeRow(int row) {
    if (loadedShapeOfRow(row) < 0) {
        HGlobal::displayError(kBadIndex);
        return -1;
    }
    return headerRowAbove(row);
}

const QVector<int>& weightTableModel::listHeaderRows() const {
    // Listed once per table layout (the row names and count), since a walk over a large shape
    // costs a read per row.
    const quint64 layout = rowNamesKey ^ static_cast<quint64>(weightRows.size());
    if (headerRowsLayout != layout || headerRows.isEmpty()) {
        headerRows.clear();
        for (int r = 0; r < weightRows.size(); ++r)
            if (!isVertexRow(weightRows.at(r)))
                headerRows.append(r);
        headerRowsLayout = layout;
    }
    return headerRows;
}

int weightTableModel::rowOfShapeIndex(int shape) const {
    const QVector<int>& headers = listHeaderRows();
    if (shape < 0 || shape >= headers.size())
        return -1;
    const int header = headers.at(shape);
    if (header < weightRows.size() && !isVertexRow(weightRows.at(header)))
        return header;
    int seen = 0;
    for (int row = 0; row < weightRows.size(); ++row)
        if (!isVertexRow(weightRows.at(row)) && seen++ == shape)
            return row;
    return -1;
}

int weightTableModel::headerRowAbove(int row) const {
    // A vertex row follows its shape's header row: the nearest header row above it is the
    // shape's, whatever the shape is called by now.
    const QVector<int>& headerRows = listHeaderRows();
    auto above = std::upper_bound(headerRows.constBegin(), headerRows.constEnd(), row);
    if (above != headerRows.constBegin()) {
        const int header = *(above - 1);
        if (header < weightRows.size() && !isVertexRow(weightRows.at(header)))
            return header;
    }
    // The list no longer fits the rows: walk.
    for (int r = qMin(row, weightRows.size() - 1); r >= 0; --r)
        if (!isVertexRow(weightRows.at(r)))
            return r;
    return -1;
}
