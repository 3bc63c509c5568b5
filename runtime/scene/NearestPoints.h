// NearestPoints: which of a fixed set of points lies nearest to a place, for matching the
// vertices of two meshes by position. A k-d tree (nanoflann) over the points makes each
// question cost about the logarithm of their number.
//
// Of points at the same distance the one of the lower index wins, also between points that
// lie on top of each other, so answers do not depend on how the tree was built. The set must
// not be empty; the points are copied.
#pragma once

#include "HPoint.h"

#include <memory>
#include <vector>

namespace runtime {

class NearestPoints {
public:
    explicit NearestPoints(std::vector<HPoint> points);
    ~NearestPoints();
    NearestPoints(const NearestPoints&) = delete;
    NearestPoints& operator=(const NearestPoints&) = delete;

    unsigned size() const;
    // The index of the point nearest to place.
    unsigned nearest(const HPoint& place) const;
    // nearest() of each place, the many places of a large mesh on threads of their own.
    std::vector<unsigned> nearestEach(const std::vector<HPoint>& places) const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_tree;
};

} // namespace runtime
