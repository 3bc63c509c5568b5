// The display precision, and writing the rounded weights into the scene. The display is
// rounded again from the unrounded weights read from the scene, so lowering and raising the
// precision never loses digits; only "Round" writes rounded weights back.
#include "HGlobal.h"
#include "weightRounding.h"
#include "weightTableModel.h"

using namespace weightRows;

void weightTableModel::setPrecision(int precisionNum) {
    if (precisionNum < 1) {
        HGlobal::displayError("The precision value is not set up correctly.");
        return;
    }
    // Unrounded weights of another table are none for this one.
    if (!matchesTable(fullPrecisionRows, fullPrecisionKey)) {
        HGlobal::displayError("There is no weight list data.");
        return;
    }
    if (hasLocks()) {
        HGlobal::displayError(
            "There is locked joint or vertex, please unlock all and then set precision.");
        return;
    }
    lastPrecision = precision;
    precision = precisionNum;
    // Rounded from the unrounded copy, without the rebuild's tolerance.
    rowsFollowScene = false;

    const int rows = qMin(weightRows.size(), fullPrecisionRows.size());
    for (int r = 0; r < rows; ++r) {
        const WeightRow& unrounded = fullPrecisionRows[r];
        WeightRow& shown = weightRows[r];
        const int end = qMin(unrounded.size(), shown.size());
        for (int j = 1; j < end; ++j)
            if (unrounded[j] > 0.0)
                shown[j] = roundToPrecision(unrounded[j], precision);
    }

    // Unlike the rounding after a load there is no tolerance: the last positive cell always
    // takes the remainder, since the unrounded vertex was what the scene holds. No lock can
    // exist here, so every weight may take it.
    for (WeightRow& row : weightRows) {
        if (!isVertexRow(row))
            continue;
        if (row.size() < 2) {
            HGlobal::displayError("This row doesn't have more than 2 columns.");
            continue;
        }
        double sumBeforeLast = 0.0;
        int lastPosition = -1;
        for (int i = 1; i < row.size(); ++i) {
            if (row[i] <= 0.0)
                continue;
            if (lastPosition != -1)
                sumBeforeLast += row[lastPosition];
            lastPosition = i;
        }
        if (lastPosition == -1) {
            HGlobal::displayError("There is something wrong accessing weight data.");
            return;
        }
        weightRounding::giveRemainder(row.data(), row.size(), lastPosition, sumBeforeLast,
                                      [](int) { return false; });
    }
    emit layoutChanged();
}

void weightTableModel::applyPrecision() {
    pendingRoundedRows = weightRows;
    pendingRoundedKey = rowNamesKey;
    HGlobal::executeCommand("vorelCmd -round", true, true);
}
