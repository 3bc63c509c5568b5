// Locking and unlocking influences, vertices and cells from the table's selection.
#include "weightTableModel.h"

void weightTableModel::lockSelected() {}

void weightTableModel::unlockSelected() {}

void weightTableModel::unlockAll() {}

void weightTableModel::newLockSelected() {}

void weightTableModel::newUnlockSelected() {}

void weightTableModel::newUnlockAll() {}

void weightTableModel::lockCell() {}

void weightTableModel::unlockCell() {}

void weightTableModel::relockReleased() {}
