#include "scene/NearestPoints.h"

#include "core/ParallelParts.h"

#include <cassert>
#include <limits>
#include <nanoflann.hpp>

namespace runtime {

namespace {

// The points as nanoflann reads them.
struct PointCloud {
    std::vector<HPoint> points;

    size_t kdtree_get_point_count() const { return points.size(); }
    double kdtree_get_pt(size_t index, size_t axis) const {
        const HPoint& p = points[index];
        return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
    }
    template <class Box> bool kdtree_get_bbox(Box&) const { return false; }
};

// Keeps the nearest point seen, the lower index among equally near ones. The search visits
// every leaf that may hold a point as near as the best (with a little room for the rounding
// of the tree's own distance sums), so no point at the best distance is missed.
class NearestLowestIndex {
public:
    bool addPoint(double distance, std::uint32_t index) {
        if (distance < m_best || (distance == m_best && index < m_index)) {
            m_best = distance;
            m_index = index;
        }
        return true;
    }
    double worstDist() const {
        return m_best == std::numeric_limits<double>::infinity()
                   ? m_best
                   : m_best + m_best * 1e-9 + std::numeric_limits<double>::denorm_min();
    }
    bool full() const { return true; }
    std::uint32_t index() const { return m_index; }

private:
    double m_best = std::numeric_limits<double>::infinity();
    std::uint32_t m_index = 0;
};

using KdTree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, PointCloud>,
                                                   PointCloud, 3, std::uint32_t>;

} // namespace

struct NearestPoints::Tree {
    explicit Tree(std::vector<HPoint> points)
        : cloud{std::move(points)}, index(3, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(16)) {
    }
    PointCloud cloud;
    KdTree index;
};

NearestPoints::NearestPoints(std::vector<HPoint> points)
    : m_tree(std::make_unique<Tree>(std::move(points))) {
    assert(!m_tree->cloud.points.empty());
}

NearestPoints::~NearestPoints() = default;

unsigned NearestPoints::size() const {
    return static_cast<unsigned>(m_tree->cloud.points.size());
}

unsigned NearestPoints::nearest(const HPoint& place) const {
    const double query[3] = {place.x, place.y, place.z};
    NearestLowestIndex result;
    m_tree->index.findNeighbors(result, query, nanoflann::SearchParams());
    return result.index();
}

std::vector<unsigned> NearestPoints::nearestEach(const std::vector<HPoint>& places) const {
    // Below this many places per thread, one thread answers them all.
    constexpr size_t kPlacesPerPart = 10000;
    std::vector<unsigned> found(places.size());
    runInParts(places.size(), partCount(places.size(), kPlacesPerPart),
               [&](unsigned, size_t begin, size_t end) {
                   for (size_t i = begin; i < end; ++i)
                       found[i] = nearest(places[i]);
               });
    return found;
}

} // namespace runtime
