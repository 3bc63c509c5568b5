// MeshData: the geometry a mesh node carries: vertex positions (object space), polygons as
// lists of vertex indices, and what follows from them: the edges and each vertex's edge
// neighbours.
//
// Edges and neighbours are derived on first use after the polygons change and cached, so a
// per-vertex question costs only that vertex's neighbours. setGeometry() checks its input
// (polygon sizes, vertex indices in range) and leaves the mesh unchanged when it fails.
#pragma once

#include "HPoint.h"
#include "HStatus.h"
#include "scene/NodeType.h"

#include <utility>
#include <vector>

namespace runtime {

// A read-only run of ints inside a mesh's arrays.
struct IndexRange {
    const int* first = nullptr;
    const int* last = nullptr;
    const int* begin() const { return first; }
    const int* end() const { return last; }
    size_t size() const { return static_cast<size_t>(last - first); }
    int operator[](size_t i) const { return first[i]; }
};

// Everything a mesh's shape is made of; generators and file readers build one of these.
struct MeshGeometry {
    std::vector<HPoint> points;
    // Number of vertices of each polygon (3 or more).
    std::vector<int> polygonSizes;
    // The polygons' vertex indices, one polygon after the other.
    std::vector<int> polygonVertices;
};

class MeshData : public NodePayload {
public:
    static HStatus validate(const MeshGeometry& geometry);

    HStatus setGeometry(MeshGeometry geometry);
    // Moves the vertices; the count must stay the same.
    HStatus setPoints(std::vector<HPoint> points);
    // Fails for a vertex index out of range.
    HStatus setPoint(unsigned vertex, const HPoint& position);

    unsigned vertexCount() const { return static_cast<unsigned>(m_geometry.points.size()); }
    const HPoint& point(unsigned vertex) const { return m_geometry.points[vertex]; }
    const std::vector<HPoint>& points() const { return m_geometry.points; }
    const MeshGeometry& geometry() const { return m_geometry; }

    unsigned polygonCount() const { return static_cast<unsigned>(m_geometry.polygonSizes.size()); }
    IndexRange polygon(unsigned index) const;

    // Each edge once, as (lower vertex, higher vertex), in order of first appearance.
    const std::vector<std::pair<int, int>>& edges() const;
    unsigned edgeCount() const { return static_cast<unsigned>(edges().size()); }
    // The vertices that share an edge with vertex, ascending.
    IndexRange neighbours(unsigned vertex) const;

private:
    void buildTopologyCache() const;

    MeshGeometry m_geometry;
    std::vector<int> m_polygonStarts;
    mutable bool m_cacheValid = false;
    mutable std::vector<std::pair<int, int>> m_edges;
    mutable std::vector<int> m_neighbourStarts;
    mutable std::vector<int> m_neighbours;
};

} // namespace runtime
