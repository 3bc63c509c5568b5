#include "ColorRamp.h"

#include <algorithm>
#include <cmath>

namespace app::viewport {

const std::array<QVector3D, kRampStops>& rampStops() {
    // Dark blue through cyan, green and yellow to red: the hot end is the joint's own vertices.
    static const std::array<QVector3D, kRampStops> stops{{
        {0.05f, 0.07f, 0.35f},
        {0.00f, 0.55f, 0.85f},
        {0.15f, 0.80f, 0.25f},
        {1.00f, 0.85f, 0.00f},
        {0.90f, 0.10f, 0.05f},
    }};
    return stops;
}

QVector3D rampColour(float weight) {
    float position = std::clamp(weight, 0.0f, 1.0f) * (kRampStops - 1);
    int lower = std::min(static_cast<int>(std::floor(position)), kRampStops - 2);
    float t = position - lower;
    return rampStops()[lower] * (1.0f - t) + rampStops()[lower + 1] * t;
}

QVector3D unnormalisedColour() {
    return {1.0f, 0.0f, 1.0f};
}

QVector3D plainColour() {
    return {0.62f, 0.63f, 0.66f};
}

QColor toQColor(const QVector3D& colour) {
    return QColor::fromRgbF(colour.x(), colour.y(), colour.z());
}

} // namespace app::viewport
