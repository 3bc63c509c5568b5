// ColorRamp: the colours the viewport paints meshes with: the heat map's ramp from weight 0
// (bottom) to weight 1 (top), the colour of vertices whose weights do not sum to one, and the
// plain colour of meshes without a heat map. The shaders receive the same stops, so the
// picture, the legend and the tests agree on every colour.
#pragma once

#include <QColor>
#include <QVector3D>
#include <array>

namespace app::viewport {

constexpr int kRampStops = 5;
// Evenly spaced stops: stop i is the colour of weight i / (kRampStops - 1).
const std::array<QVector3D, kRampStops>& rampStops();
// The ramp at weight (clamped to [0, 1]), interpolated linearly between stops.
QVector3D rampColour(float weight);
QVector3D unnormalisedColour();
QVector3D plainColour();

// Sums that differ from one by at least this much count as not summing to one, the same
// vertices the weight table shows in red at three decimals.
constexpr double kUnnormalisedTolerance = 0.001;

QColor toQColor(const QVector3D& colour);

} // namespace app::viewport
