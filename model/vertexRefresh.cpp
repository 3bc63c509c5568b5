// Reading many vertices back after an edit that touched whole columns or shapes. The result is
// the one updateWeightListAtIndex gives cell by cell, in the same order (a shape's mark follows
// the last of its vertices read), but the vertices are read from the skin clusters a slice at a
// time per shape, each cluster's influences and each shape's header row are looked up once,
// and the views hear of the change once. Anything unusual about a cell goes through
// updateWeightListAtIndex, in its turn, which reports it.
#include "HDoubleArray.h"
#include "HFnSkinCluster.h"
#include "HQtUtil.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <QHash>
#include <QVector>
#include <vector>

using namespace weightRows;

void weightTableModel::refreshVertexCells(const QModelIndexList& cells) {
    if (cells.isEmpty())
        return;
    // The cells read in slices, with their rows and shape header rows; the others are read one
    // by one below, in their turn.
    QVector<int> readRows;
    QVector<int> positionOfCell(cells.size(), -1);
    QVector<int> shapeRowOfCell(cells.size(), -1);
    for (int i = 0; i < cells.size(); ++i) {
        const QModelIndex& cell = cells[i];
        const int row = cell.row();
        int vertex = 0;
        if (!cell.isValid() || loadedShapeOfRow(row) < 0 ||
            static_cast<unsigned>(row) >= rowNames.length() || !vertexOfRow(row, vertex))
            continue;
        shapeRowOfCell[i] = headerRowAbove(row);
        if (shapeRowOfCell[i] == -1)
            continue;
        positionOfCell[i] = readRows.size();
        readRows.append(row);
    }

    // Per influence index of each shape, the row element holding its weight (0: no column).
    std::vector<std::vector<int>> elementsOfShape(shapePaths.length());
    QVector<bool> normalised(readRows.size());
    QVector<int> cellOfPosition(readRows.size());
    for (int i = 0; i < cells.size(); ++i)
        if (positionOfCell[i] != -1) {
            cellOfPosition[positionOfCell[i]] = i;
            normalised[positionOfCell[i]] =
                isNormalised(weightSum(weightRows.at(cells[i].row())), precision);
        }
    readRowWeights(readRows, [&](int position, const double* weights, unsigned count) {
        const int row = readRows[position];
        const unsigned shape = static_cast<unsigned>(loadedShapeOfRow(row));
        std::vector<int>& elementOf = elementsOfShape[shape];
        if (elementOf.empty())
            elementOf = shapeColumns(shape).elementOf;
        // Values the read leaves as they are keep the row shared with the undo copies.
        WeightRow values = weightRows.at(row);
        for (unsigned i = 0; i < count && i < elementOf.size(); ++i)
            if (elementOf[i] > 0 && elementOf[i] < values.size() &&
                values.at(elementOf[i]) != weights[i])
                values[elementOf[i]] = weights[i];
        if (values != weightRows.at(row))
            weightRows[row] = values;
        roundRowToPrecision(precision, row, cells[cellOfPosition[position]].column());
        normalised[position] = isNormalised(weightSum(weightRows.at(row)), precision);
    });

    int firstChanged = weightRows.size(), lastChanged = -1;
    for (int i = 0; i < cells.size(); ++i) {
        if (positionOfCell[i] == -1) {
            updateWeightListAtIndex(cells[i]);
            continue;
        }
        const int shapeRow = shapeRowOfCell[i];
        const double mark = normalised[positionOfCell[i]] ? kShapeRow : kUnnormalisedShapeRow;
        if (weightRows.at(shapeRow).at(0) != mark)
            weightRows[shapeRow][0] = mark;
        firstChanged = qMin(firstChanged, shapeRow);
        lastChanged = qMax(lastChanged, cells[i].row());
    }
    if (lastChanged != -1)
        emit headerDataChanged(Qt::Vertical, firstChanged, lastChanged);
}

bool weightTableModel::readRowWeights(const QVector<int>& rows,
                                      const RowWeightVisitor& visit) const {
    // Per shape: its distinct vertices in first-seen order. Per vertex read (a slot), the
    // positions of `rows` that show it, chained: the first, then each one's next (-1 ends).
    struct ShapeRead {
        HIntArray vertices;
        QHash<int, int> slotOfVertex;
        std::vector<int> firstPosition;
        std::vector<int> lastPosition;
    };
    std::vector<ShapeRead> reads(shapePaths.length());
    std::vector<int> nextPosition(static_cast<size_t>(rows.size()), -1);
    for (int position = 0; position < rows.size(); ++position) {
        const int row = rows[position];
        const int shape = loadedShapeOfRow(row);
        int vertex = 0;
        if (shape < 0 || !vertexOfRow(row, vertex))
            return false;
        ShapeRead& read = reads[static_cast<size_t>(shape)];
        auto slot = read.slotOfVertex.constFind(vertex);
        if (slot == read.slotOfVertex.constEnd()) {
            read.slotOfVertex.insert(vertex, static_cast<int>(read.firstPosition.size()));
            read.vertices.append(vertex);
            read.firstPosition.push_back(position);
            read.lastPosition.push_back(position);
        } else {
            int& last = read.lastPosition[static_cast<size_t>(*slot)];
            nextPosition[static_cast<size_t>(last)] = position;
            last = position;
        }
    }
    for (unsigned shape = 0; shape < shapePaths.length(); ++shape) {
        const ShapeRead& read = reads[shape];
        if (read.vertices.length() == 0)
            continue;
        const bool complete = weightWriting::readVertexWeights(
            skinClusters[shape], shapePaths[shape], read.vertices,
            [&](int slot, const double* weights, unsigned count) {
                for (int position = read.firstPosition[static_cast<size_t>(slot)]; position != -1;
                     position = nextPosition[static_cast<size_t>(position)])
                    visit(position, weights, count);
            });
        if (!complete)
            return false;
    }
    return true;
}
