// The table after an edit follows the scene row by row: the vertex rows the edit wrote, and the
// rows changed since the table last followed the scene (read back with an edited cell, which
// rounds differently), are read again exactly as rebuildWeightRows reads every row, and the
// shape header rows lose their marks as in a rebuild. So the table ends as a rebuild would leave
// it, at the cost of the rows written.
//
// Where the rows cannot be trusted to match a rebuild (the table was restored from a copy, the
// precision changed, a written row no longer holds its vertex, or a row gains or loses every
// weight and so moves where the rebuild stops correcting), the whole table is rebuilt instead.
#include "HGlobal.h"
#include "HQtUtil.h"
#include "weightTableModel.h"

#include <algorithm>
#include <vector>

using namespace weightRows;
using weightRounding::Correction;

namespace {

bool hasPositiveWeight(const WeightRow& row) {
    for (int i = 1; i < row.size(); ++i)
        if (row.at(i) > 0.0)
            return true;
    return false;
}

} // namespace

void weightTableModel::followScene() {
    rowsFollowScene = true;
    rowsToReread.clear();
}

void weightTableModel::markForReread(int row) {
    if (!rowsFollowScene)
        return;
    // Past one read per row, a rebuild costs less than the list.
    if (rowsToReread.size() >= static_cast<size_t>(weightRows.size()))
        rowsFollowScene = false;
    else
        rowsToReread.push_back(row);
}

bool weightTableModel::writtenRowHolds(const WrittenRow& written,
                                       std::vector<char>& shapeHolds) const {
    if (written.row < 0 || written.row >= weightRows.size() ||
        static_cast<unsigned>(written.row) >= rowNames.length() || written.shape < 0 ||
        loadedShapeOfRow(written.row) != written.shape)
        return false;
    // The shape at that index is the one written (looked at once per shape).
    char& holds = shapeHolds[static_cast<size_t>(written.shape)];
    if (holds == 0)
        holds = shapePaths[static_cast<unsigned>(written.shape)] == written.shapePath ? 1 : 2;
    if (holds != 1)
        return false;
    int vertex = 0;
    return vertexOfRow(written.row, vertex) && vertex == written.vertex;
}

void weightTableModel::refreshWrittenRows(const QVector<WrittenRow>& written) {
    // Past half the table, reading it whole in one pass costs less than finding the rows.
    if (!rowsFollowScene || influencePaths.length() == 0 ||
        written.size() + static_cast<int>(rowsToReread.size()) > weightRows.size() / 2) {
        rebuildWeightRows();
        return;
    }
    std::vector<int> rows(rowsToReread.begin(), rowsToReread.end());
    std::vector<char> shapeHolds(shapePaths.length(), 0);
    for (const WrittenRow& entry : written) {
        if (!writtenRowHolds(entry, shapeHolds)) {
            rebuildWeightRows();
            return;
        }
        rows.push_back(entry.row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());

    // Read every row first: the table changes only when none of them asks for a rebuild.
    const QVector<int> rowList(rows.begin(), rows.end());
    std::vector<ShapeColumns> columnsOfShape(shapePaths.length());
    std::vector<WeightRow> readRows(rows.size());
    std::vector<Correction> results(rows.size(), Correction::kDone);
    const bool complete =
        readRowWeights(rowList, [&](int position, const double* weights, unsigned count) {
            const int row = rowList[position];
            const unsigned shape = static_cast<unsigned>(loadedShapeOfRow(row));
            ShapeColumns& columns = columnsOfShape[shape];
            if (columns.rowTemplate.isEmpty())
                columns = shapeColumns(shape);
            WeightRow fresh = columns.rowTemplate;
            results[position] =
                fillDisplayRow(fresh, columns, weights, count, row < uncorrectedFrom);
            readRows[position] = fresh;
        });
    if (!complete) {
        rebuildWeightRows();
        return;
    }
    for (size_t i = 0; i < rows.size(); ++i) {
        const int row = rows[i];
        // Where the rebuild stops correcting depends on which rows have no weight.
        const bool stopsHere = results[i] == Correction::kNoPositiveWeight ||
                               (row == uncorrectedFrom && !hasPositiveWeight(readRows[i]));
        if (stopsHere != (row == uncorrectedFrom) || results[i] == Correction::kTooShort ||
            results[i] == Correction::kNotFound) {
            rebuildWeightRows();
            return;
        }
    }
    // What the rebuild says of the rows it stops correcting at, it says on every rebuild.
    if (uncorrectedFrom != kCorrectedThroughout)
        reportCorrection(Correction::kNoPositiveWeight);

    int first = weightRows.size(), last = -1;
    for (size_t i = 0; i < rows.size(); ++i) {
        const int row = rows[i];
        if (weightRows.at(row) != readRows[i]) {
            weightRows[row] = readRows[i];
            first = qMin(first, row);
            last = qMax(last, row);
        }
    }
    // The rebuild shows every shape without its mark.
    for (unsigned s = 0; s < shapePaths.length(); ++s) {
        const int header = rowOfShapeIndex(static_cast<int>(s));
        if (header >= 0 && weightRows.at(header).at(0) != kShapeRow) {
            weightRows[header][0] = kShapeRow;
            emit headerDataChanged(Qt::Vertical, header, header);
        }
    }
    followScene();
    if (last == -1)
        return;
    emit dataChanged(index(first, 0), index(last, columnCount() - 1));
    emit headerDataChanged(Qt::Vertical, first, last);
}
