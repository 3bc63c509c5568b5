#include "scene/MeshData.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace runtime {

HStatus MeshData::validate(const MeshGeometry& geometry) {
    for (const HPoint& p : geometry.points)
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
            return HStatus(HS::kInvalidParameter, "A vertex position is not a finite number.");
    size_t total = 0;
    for (int size : geometry.polygonSizes) {
        if (size < 3)
            return HStatus(HS::kInvalidParameter, "A polygon has fewer than 3 vertices.");
        total += static_cast<size_t>(size);
    }
    if (total != geometry.polygonVertices.size())
        return HStatus(HS::kInvalidParameter,
                       "The polygon sizes do not add up to the number of polygon vertices.");
    for (int vertex : geometry.polygonVertices)
        if (vertex < 0 || static_cast<size_t>(vertex) >= geometry.points.size())
            return HStatus(HS::kInvalidParameter,
                           "Polygon vertex index " + std::to_string(vertex) + " is out of range.");
    return HS::kSuccess;
}

HStatus MeshData::setGeometry(MeshGeometry geometry) {
    HStatus status = validate(geometry);
    if (!status)
        return status;
    m_geometry = std::move(geometry);
    m_polygonStarts.resize(m_geometry.polygonSizes.size() + 1);
    m_polygonStarts[0] = 0;
    for (size_t i = 0; i < m_geometry.polygonSizes.size(); ++i)
        m_polygonStarts[i + 1] = m_polygonStarts[i] + m_geometry.polygonSizes[i];
    m_cacheValid = false;
    return HS::kSuccess;
}

HStatus MeshData::setPoints(std::vector<HPoint> points) {
    if (points.size() != m_geometry.points.size())
        return HStatus(HS::kInvalidParameter, "The number of vertices must stay the same.");
    MeshGeometry check;
    check.points = points;
    HStatus status = validate(check);
    if (status)
        m_geometry.points = std::move(points);
    return status;
}

HStatus MeshData::setPoint(unsigned vertex, const HPoint& position) {
    if (vertex >= vertexCount())
        return HStatus(HS::kInvalidParameter, "Vertex index out of range.");
    if (!std::isfinite(position.x) || !std::isfinite(position.y) || !std::isfinite(position.z))
        return HStatus(HS::kInvalidParameter, "A vertex position is not a finite number.");
    m_geometry.points[vertex] = position;
    return HS::kSuccess;
}

IndexRange MeshData::polygon(unsigned index) const {
    const int* data = m_geometry.polygonVertices.data();
    return {data + m_polygonStarts[index], data + m_polygonStarts[index + 1]};
}

const std::vector<std::pair<int, int>>& MeshData::edges() const {
    buildTopologyCache();
    return m_edges;
}

IndexRange MeshData::neighbours(unsigned vertex) const {
    buildTopologyCache();
    const int* data = m_neighbours.data();
    return {data + m_neighbourStarts[vertex], data + m_neighbourStarts[vertex + 1]};
}

void MeshData::buildTopologyCache() const {
    if (m_cacheValid)
        return;
    // Every polygon side as (low, high, order of appearance); sorting groups equal edges.
    struct Side {
        int low, high;
        size_t order;
    };
    std::vector<Side> sides;
    sides.reserve(m_geometry.polygonVertices.size());
    for (unsigned p = 0; p < polygonCount(); ++p) {
        IndexRange vertices = polygon(p);
        for (size_t i = 0; i < vertices.size(); ++i) {
            int a = vertices[i], b = vertices[(i + 1) % vertices.size()];
            if (a != b)
                sides.push_back({std::min(a, b), std::max(a, b), sides.size()});
        }
    }
    std::sort(sides.begin(), sides.end(), [](const Side& x, const Side& y) {
        return x.low != y.low     ? x.low < y.low
               : x.high != y.high ? x.high < y.high
                                  : x.order < y.order;
    });
    std::vector<Side> unique;
    for (const Side& side : sides)
        if (unique.empty() || unique.back().low != side.low || unique.back().high != side.high)
            unique.push_back(side);

    // Neighbours in compressed rows: count, then fill, then sort each row.
    unsigned count = vertexCount();
    m_neighbourStarts.assign(count + 1, 0);
    for (const Side& side : unique) {
        ++m_neighbourStarts[static_cast<size_t>(side.low) + 1];
        ++m_neighbourStarts[static_cast<size_t>(side.high) + 1];
    }
    for (unsigned v = 0; v < count; ++v)
        m_neighbourStarts[v + 1] += m_neighbourStarts[v];
    m_neighbours.assign(static_cast<size_t>(m_neighbourStarts[count]), 0);
    std::vector<int> fill(m_neighbourStarts.begin(), m_neighbourStarts.end() - 1);
    for (const Side& side : unique) {
        m_neighbours[static_cast<size_t>(fill[static_cast<size_t>(side.low)]++)] = side.high;
        m_neighbours[static_cast<size_t>(fill[static_cast<size_t>(side.high)]++)] = side.low;
    }
    for (unsigned v = 0; v < count; ++v)
        std::sort(m_neighbours.begin() + m_neighbourStarts[v],
                  m_neighbours.begin() + m_neighbourStarts[v + 1]);

    std::sort(unique.begin(), unique.end(),
              [](const Side& x, const Side& y) { return x.order < y.order; });
    m_edges.clear();
    m_edges.reserve(unique.size());
    for (const Side& side : unique)
        m_edges.emplace_back(side.low, side.high);
    m_cacheValid = true;
}

} // namespace runtime
