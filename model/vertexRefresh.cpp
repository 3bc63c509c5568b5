// Reading many vertices back after an edit that touched whole columns or shapes. The result is
// the one updateWeightListAtIndex gives cell by cell, in the same order (a shape's mark follows
// the last of its vertices read), but each skin cluster's influences and each shape's header
// row are looked up once, and the views hear of the change once. Anything unusual about a
// cell goes through updateWeightListAtIndex, which reports it.
#include "HDoubleArray.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HQtUtil.h"
#include "weightTableModel.h"

#include <QVector>
#include <vector>

using namespace weightRows;

namespace {

// What reading back a vertex of one loaded shape needs, found once per shape.
struct ShapeReadBack {
    bool ready = false;
    HFnSkinCluster cluster;
    // Per influence index, the row element holding its weight (0: not a column).
    std::vector<int> elementOf;
};

} // namespace

void weightTableModel::refreshVertexCells(const QModelIndexList& cells) {
    if (cells.isEmpty())
        return;
    std::vector<ShapeReadBack> shapes(shapePaths.length());
    int firstChanged = weightRows.size(), lastChanged = -1;

    for (const QModelIndex& cell : cells) {
        const int row = cell.row();
        int vertex = 0;
        if (!cell.isValid() || row >= weightRows.size() || !isVertexRow(weightRows[row]) ||
            static_cast<unsigned>(weightRows[row][0]) >= shapePaths.length() ||
            !vertexIndexOfRowName(HQtUtil::toQString(rowNames[static_cast<unsigned>(row)]),
                                  vertex)) {
            updateWeightListAtIndex(cell);
            continue;
        }
        const unsigned shape = static_cast<unsigned>(weightRows[row][0]);
        ShapeReadBack& readBack = shapes[shape];
        if (!readBack.ready) {
            readBack.ready = true;
            readBack.cluster.setObject(skinClusters[shape]);
            HDagPathArray influences;
            readBack.cluster.influenceObjects(influences);
            for (unsigned i = 0; i < influences.length(); ++i)
                readBack.elementOf.push_back(columnOfInfluence(influences[i]) + 1);
        }
        const int shapeRow = headerRowAbove(row);
        if (shapeRow == -1) {
            updateWeightListAtIndex(cell);
            continue;
        }

        HFnSingleIndexedComponent single;
        HObject component = single.create(HFn::kMeshVertComponent);
        single.addElement(vertex);
        HDoubleArray weights;
        unsigned count = 0;
        readBack.cluster.getWeights(shapePaths[shape], component, weights, count);
        WeightRow& values = weightRows[row];
        for (unsigned i = 0; i < count && i < readBack.elementOf.size(); ++i)
            if (readBack.elementOf[i] > 0 && readBack.elementOf[i] < values.size())
                values[readBack.elementOf[i]] = weights[i];
        roundRowToPrecision(precision, row, cell.column());

        double sum = 0.0;
        for (int i = 1; i < weightRows[row].size(); ++i)
            if (weightRows[row][i] >= 0.0)
                sum += weightRows[row][i];
        weightRows[shapeRow][0] = std::fabs(sum - 1.0) >= normalisedTolerance(precision)
                                      ? kUnnormalisedShapeRow
                                      : kShapeRow;
        firstChanged = qMin(firstChanged, shapeRow);
        lastChanged = qMax(lastChanged, row);
    }
    if (lastChanged != -1)
        emit headerDataChanged(Qt::Vertical, firstChanged, lastChanged);
}
