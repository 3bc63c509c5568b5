#include "scene/VertexWeightRecord.h"

#include <cassert>

namespace runtime {

namespace {

void copyVertex(const SkinWeights& from, unsigned fromVertex, SkinWeights& to, unsigned toVertex) {
    to.assign(toVertex, from.influences(fromVertex), from.weights(fromVertex),
              from.entryCount(fromVertex));
}

} // namespace

void VertexWeightRecord::keep(const SkinWeights& weights, unsigned vertex) {
    assert(vertex < weights.vertexCount());
    if (m_seen.size() < weights.vertexCount())
        m_seen.resize(weights.vertexCount(), false);
    if (m_seen[vertex])
        return;
    m_seen[vertex] = true;
    unsigned slot = size();
    m_vertices.push_back(vertex);
    m_before.setVertexCount(slot + 1);
    copyVertex(weights, vertex, m_before, slot);
}

void VertexWeightRecord::reserve(unsigned vertices, std::size_t weights) {
    m_vertices.reserve(m_vertices.size() + vertices);
    m_before.reserveEntries(m_before.entryTotal() + weights);
}

void VertexWeightRecord::restoreBefore(SkinWeights& weights) {
    bool firstTime = !m_hasAfter;
    m_hasAfter = true;
    if (firstTime)
        m_after.setVertexCount(size());
    for (unsigned slot = 0; slot < size(); ++slot) {
        assert(m_vertices[slot] < weights.vertexCount());
        if (firstTime)
            copyVertex(weights, m_vertices[slot], m_after, slot);
        copyVertex(m_before, slot, weights, m_vertices[slot]);
    }
}

void VertexWeightRecord::restoreAfter(SkinWeights& weights) {
    if (!m_hasAfter)
        return;
    for (unsigned slot = 0; slot < size(); ++slot)
        copyVertex(m_after, slot, weights, m_vertices[slot]);
}

} // namespace runtime
