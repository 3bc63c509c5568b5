// Writing one cell through the skin cluster with the vertex kept normalised, reading a vertex
// back, and rounding the displayed weights so that each vertex row again sums to one.
#include "HGlobal.h"
#include "weightTableModel.h"

using namespace weightRows;

bool weightTableModel::writeNormalisedWeight(int, int, double) {
    return false;
}

void weightTableModel::updateWeightListAtIndex(const QModelIndex&) {}

void weightTableModel::roundRowToPrecision(int, int, int) {}

void weightTableModel::roundAllRowsToPrecision() {
    // Header rows hold no weights; leaving them alone keeps rows shared with the undo copy.
    for (WeightRow& row : weightRows) {
        if (!isVertexRow(row))
            continue;
        double* cells = row.data();
        for (int i = 1; i < row.size(); ++i)
            if (cells[i] > 0.0)
                cells[i] = roundToPrecision(cells[i], precision);
    }

    // Rounding leaves each vertex a little off one; the last positive cell takes that
    // remainder, unless the row is off by more than rounding explains and really is not
    // normalised.
    const double tolerance = roundToPrecision(
        std::pow(10.0, -precision) + std::pow(10.0, -(precision + 1)), precision + 1);
    for (WeightRow& row : weightRows) {
        if (!isVertexRow(row))
            continue;
        if (row.size() < 2) {
            HGlobal::displayError("This row doesn't have more than 2 columns.");
            continue;
        }
        double sumBeforeLast = 0.0;
        double last = 0.0;
        int lastPosition = -1;
        for (int i = 1; i < row.size(); ++i) {
            if (row[i] <= 0.0)
                continue;
            if (lastPosition != -1)
                sumBeforeLast += last;
            last = row[i];
            lastPosition = i;
        }
        if (lastPosition == -1) {
            HGlobal::displayError("There is something wrong accessing weight data.");
            return;
        }
        const double total = sumBeforeLast + last;
        if (total > 1.0 - tolerance && total < 1.0 + tolerance)
            row[lastPosition] = 1.0 - sumBeforeLast;
    }
}

int weightTableModel::findShapeRow(int) {
    return -1;
}
