// The maximum number of influences per vertex, and limiting rows to it.
#include "weightTableModel.h"

void weightTableModel::setMaxValue(int) {}

void weightTableModel::applyMaxInfluence() {}

void weightTableModel::limitRows(QList<int>&) {}
