#include "HPoint.h"

#include <cmath>

double HPoint::distanceTo(const HPoint& other) const {
    double dx = x - other.x, dy = y - other.y, dz = z - other.z;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}
