#include "weightColumnHeaderView.h"

#include <QPainter>

weightColumnHeaderView::weightColumnHeaderView(Qt::Orientation orientation, QWidget* parent)
    : QHeaderView(orientation, parent) {}

void weightColumnHeaderView::paintSection(QPainter* painter, const QRect& rect,
                                          int logicalIndex) const {
    painter->save();
    painter->translate(rect.bottomLeft());
    painter->rotate(-90.0);
    QHeaderView::paintSection(painter, QRect(0, 0, rect.height(), rect.width()), logicalIndex);
    painter->restore();
}

QSize weightColumnHeaderView::sectionSizeFromContents(int logicalIndex) const {
    return QHeaderView::sectionSizeFromContents(logicalIndex).transposed();
}
