#include "scene/VertexWeightRecord.h"

#include <cassert>

namespace runtime {

void VertexWeightRecord::keep(const SkinWeights& weights, unsigned vertex) {
    assert(vertex < weights.vertexCount());
    if (m_seen.size() < weights.vertexCount())
        m_seen.resize(weights.vertexCount(), false);
    if (m_seen[vertex])
        return;
    m_seen[vertex] = true;
    unsigned slot = size();
    m_vertices.push_back(vertex);
    m_kept.setVertexCount(slot + 1);
    m_kept.assign(slot, weights.influences(vertex), weights.weights(vertex),
                  weights.entryCount(vertex));
}

void VertexWeightRecord::swap(SkinWeights& weights) {
    std::vector<SkinWeights::Influence> influences;
    std::vector<double> values;
    for (unsigned slot = 0; slot < size(); ++slot) {
        unsigned vertex = m_vertices[slot];
        assert(vertex < weights.vertexCount());
        unsigned count = weights.entryCount(vertex);
        influences.assign(weights.influences(vertex), weights.influences(vertex) + count);
        values.assign(weights.weights(vertex), weights.weights(vertex) + count);
        weights.assign(vertex, m_kept.influences(slot), m_kept.weights(slot),
                       m_kept.entryCount(slot));
        m_kept.assign(slot, influences.data(), values.data(), count);
    }
}

} // namespace runtime
