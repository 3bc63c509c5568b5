// Smoothing through the host's skin-cluster smoothing or its paint tool.
#include "weightTableModel.h"

void weightTableModel::applySmoothSkinWeights(double, int) {}

void weightTableModel::applySkinPaintSmooth(double) {}
