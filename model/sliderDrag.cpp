// The value slider's drag of the selected cells or of a whole influence column.
#include "weightTableModel.h"

void weightTableModel::dragCells(double, bool) {}

void weightTableModel::dragColumn(double, bool) {}
