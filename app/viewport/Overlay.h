// Overlay: what the viewport paints over the 3D picture with QPainter: the heat map's legend
// (the ramp from 0 to 1, the influence's name, and the colour of vertices whose weights do
// not sum to one while they are shown) and the rectangle being dragged to select.
#pragma once

#include <QRect>
#include <QString>

class QPainter;

namespace app::viewport {

// Bottom right of area; nothing when influence is empty.
void paintLegend(QPainter& painter, const QRect& area, const QString& influence,
                 bool showUnnormalised);
void paintSelectionRectangle(QPainter& painter, const QRect& rectangle);

} // namespace app::viewport
