// Setting one influence column of one shape to a value.
#include "weightTableModel.h"

void weightTableModel::replaceValue(double) {}
