// Typed cell values and operator entries ("+=", "-=", "*=", "/="), handed to "vorelCmd -setData".
#include "weightTableModel.h"

bool weightTableModel::setData(const QModelIndex&, const QVariant&, int) {
    return false;
}
