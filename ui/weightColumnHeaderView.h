// weightColumnHeaderView: the table's column header, with labels drawn rotated to read bottom
// to top, so that many influence columns stay narrow while their names stay whole. Installed
// on the table by the window, which deletes it; cannot fail.
#pragma once

#include <QHeaderView>

class weightColumnHeaderView : public QHeaderView {
    Q_OBJECT

public:
    explicit weightColumnHeaderView(Qt::Orientation orientation, QWidget* parent = nullptr);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    QSize sectionSizeFromContents(int logicalIndex) const override;
};
