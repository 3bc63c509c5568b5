#include "SkinAttributes.h"

#include "ColorRamp.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace app::viewport {

namespace {

constexpr unsigned kRunGap = 64;

} // namespace

void SkinAttributes::build(const runtime::SkinWeights& weights, int heatInfluence) {
    m_heatInfluence = heatInfluence;
    m_skinSlots.assign(weights.vertexCount(), SkinSlots{});
    m_paint.assign(weights.vertexCount(), VertexPaint{});
    for (unsigned vertex = 0; vertex < weights.vertexCount(); ++vertex) {
        fillSlots(weights, vertex);
        fillPaint(weights, vertex);
    }
    m_pending = SkinChanges{true, true, {}};
    m_changedVertices.clear();
}

void SkinAttributes::updateVertices(const runtime::SkinWeights& weights,
                                    const std::vector<unsigned>& vertices) {
    for (unsigned vertex : vertices) {
        fillSlots(weights, vertex);
        fillPaint(weights, vertex);
    }
    if (!m_pending.allSlots)
        m_changedVertices.insert(m_changedVertices.end(), vertices.begin(), vertices.end());
}

void SkinAttributes::setHeatInfluence(const runtime::SkinWeights& weights, int influence) {
    if (influence == m_heatInfluence)
        return;
    m_heatInfluence = influence;
    for (unsigned vertex = 0; vertex < m_paint.size(); ++vertex)
        fillPaint(weights, vertex);
    m_pending.allPaint = true;
}

SkinChanges SkinAttributes::takeChanges() {
    SkinChanges changes = std::move(m_pending);
    m_pending = SkinChanges{};
    if (!changes.allSlots)
        changes.runs = runsOf(std::move(m_changedVertices), kRunGap);
    m_changedVertices.clear();
    return changes;
}

std::vector<VertexRun> SkinAttributes::runsOf(std::vector<unsigned> vertices, unsigned gap) {
    std::sort(vertices.begin(), vertices.end());
    std::vector<VertexRun> runs;
    for (unsigned vertex : vertices) {
        if (!runs.empty() && vertex <= runs.back().first + runs.back().count - 1 + gap)
            runs.back().count = std::max(runs.back().count, vertex - runs.back().first + 1);
        else
            runs.push_back({vertex, 1});
    }
    return runs;
}

void SkinAttributes::fillSlots(const runtime::SkinWeights& weights, unsigned vertex) {
    SkinSlots& vertexSlots = m_skinSlots[vertex];
    vertexSlots = SkinSlots{};
    unsigned count = weights.entryCount(vertex);
    const runtime::SkinWeights::Influence* influences = weights.influences(vertex);
    const double* values = weights.weights(vertex);
    if (count <= kSkinSlots) {
        for (unsigned i = 0; i < count; ++i) {
            vertexSlots.influences[i] = influences[i];
            vertexSlots.weights[i] = static_cast<float>(values[i]);
        }
        return;
    }
    // More weights than slots: the largest ones deform.
    std::vector<unsigned> order(count);
    std::iota(order.begin(), order.end(), 0u);
    std::partial_sort(order.begin(), order.begin() + kSkinSlots, order.end(),
                      [values](unsigned a, unsigned b) { return values[a] > values[b]; });
    for (unsigned i = 0; i < kSkinSlots; ++i) {
        vertexSlots.influences[i] = influences[order[i]];
        vertexSlots.weights[i] = static_cast<float>(values[order[i]]);
    }
}

void SkinAttributes::fillPaint(const runtime::SkinWeights& weights, unsigned vertex) {
    unsigned count = weights.entryCount(vertex);
    const runtime::SkinWeights::Influence* influences = weights.influences(vertex);
    const double* values = weights.weights(vertex);
    double sum = 0.0, heat = 0.0;
    for (unsigned i = 0; i < count; ++i) {
        sum += values[i];
        if (static_cast<int>(influences[i]) == m_heatInfluence)
            heat = values[i];
    }
    m_paint[vertex] = {static_cast<float>(heat),
                       std::fabs(sum - 1.0) >= kUnnormalisedTolerance ? 1.0f : 0.0f};
}

} // namespace app::viewport
