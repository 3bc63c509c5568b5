#include "weightTableView.h"

weightTableView::weightTableView(QWidget* parent) : QTableView(parent) {}

weightTableView::~weightTableView() = default;
