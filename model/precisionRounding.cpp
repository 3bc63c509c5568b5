// The display precision, and writing the rounded weights into the scene.
#include "weightTableModel.h"

void weightTableModel::setPrecision(int) {}

void weightTableModel::applyPrecision() {}
