#include "Overlay.h"

#include "ColorRamp.h"

#include <QLinearGradient>
#include <QPainter>

namespace app::viewport {

namespace {

constexpr int kMargin = 12;
constexpr int kBarWidth = 16;
constexpr int kBarHeight = 160;
const QColor kText(0xe8, 0xe8, 0xe8);

} // namespace

void paintLegend(QPainter& painter, const QRect& area, const QString& influence,
                 bool showUnnormalised) {
    if (influence.isEmpty())
        return;
    QFontMetrics metrics(painter.font());
    int labelWidth = metrics.horizontalAdvance("0.50") + 6;
    QRect bar(area.right() - kMargin - labelWidth - kBarWidth,
              area.bottom() - kMargin - kBarHeight - (showUnnormalised ? metrics.height() + 6 : 0),
              kBarWidth, kBarHeight);
    // Weight 1 at the top.
    QLinearGradient gradient(bar.bottomLeft(), bar.topLeft());
    for (int i = 0; i < kRampStops; ++i)
        gradient.setColorAt(double(i) / (kRampStops - 1), toQColor(rampStops()[i]));
    painter.fillRect(bar, gradient);
    painter.setPen(kText);
    painter.drawRect(bar.adjusted(0, 0, -1, -1));
    for (int i = 0; i <= 4; ++i) {
        double weight = 1.0 - i * 0.25;
        int y = bar.top() + i * (bar.height() - 1) / 4;
        painter.drawLine(bar.right() + 1, y, bar.right() + 4, y);
        painter.drawText(QPoint(bar.right() + 6, y + metrics.ascent() / 2),
                         QString::number(weight, 'f', 2));
    }
    QRect title(area.left(), bar.top() - metrics.height() - 6,
                bar.right() + labelWidth - area.left(), metrics.height());
    painter.drawText(title, Qt::AlignRight | Qt::AlignVCenter, influence);
    if (showUnnormalised) {
        QRect swatch(bar.left(), bar.bottom() + 6, kBarWidth, metrics.height());
        painter.fillRect(swatch, toQColor(unnormalisedColour()));
        QRect label(area.left(), swatch.top(), swatch.left() - 6 - area.left(), swatch.height());
        painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter, "sum \u2260 1");
    }
}

void paintSelectionRectangle(QPainter& painter, const QRect& rectangle) {
    painter.setPen(QPen(kText, 1, Qt::DashLine));
    painter.setBrush(QColor(255, 255, 255, 30));
    painter.drawRect(rectangle.normalized());
}

} // namespace app::viewport
