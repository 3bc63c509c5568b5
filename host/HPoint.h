// HPoint: a position in space (world units). A plain value.
#pragma once

class HPoint {
public:
    HPoint() = default;
    HPoint(double px, double py, double pz) : x(px), y(py), z(pz) {}

    double distanceTo(const HPoint& other) const;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};
