// SkinAttributes: what the vertex shader needs per vertex of a skinned mesh, kept on the CPU
// beside the buffers it is uploaded to, and which vertices changed since the last upload.
//
// Each vertex gets kSkinSlots (influence, weight) slots for deforming: its largest weights,
// as stored; the shader divides by their sum, so that a vertex whose weights do not sum to one
// keeps its place while the heat map and the sum check show the fault. The heat map reads its
// own channel: the exact weight of the current influence and whether the vertex's weights sum
// to one, from all of its weights however many there are.
//
// updateVertices() and setHeatInfluence() change only what they must and remember it;
// takeChanges() hands the uploader the runs of vertices to send and forgets them. Vertex
// indices beyond the weights are a programming error.
#pragma once

#include "scene/SkinWeights.h"

#include <cstdint>
#include <vector>

namespace app::viewport {

constexpr unsigned kSkinSlots = 8;

struct SkinSlots {
    std::uint16_t influences[kSkinSlots];
    float weights[kSkinSlots];
};

struct VertexPaint {
    float heat;         // weight of the current influence
    float unnormalised; // 1 when the weights do not sum to one
};

// A run of vertices [first, first + count).
struct VertexRun {
    unsigned first;
    unsigned count;
};

struct SkinChanges {
    bool allSlots = false;
    bool allPaint = false;
    // Runs whose slots and paint changed (empty when everything did).
    std::vector<VertexRun> runs;

    bool empty() const { return !allSlots && !allPaint && runs.empty(); }
};

class SkinAttributes {
public:
    // Everything, from the weights; influence -1 is none.
    void build(const runtime::SkinWeights& weights, int heatInfluence);
    void updateVertices(const runtime::SkinWeights& weights, const std::vector<unsigned>& vertices);
    void setHeatInfluence(const runtime::SkinWeights& weights, int influence);
    int heatInfluence() const { return m_heatInfluence; }

    unsigned vertexCount() const { return static_cast<unsigned>(m_skinSlots.size()); }
    const std::vector<SkinSlots>& skinSlots() const { return m_skinSlots; }
    const std::vector<VertexPaint>& paint() const { return m_paint; }

    SkinChanges takeChanges();

    // Sorted vertex indices as runs; indices closer than `gap` share a run, since one larger
    // upload costs less than many small ones.
    static std::vector<VertexRun> runsOf(std::vector<unsigned> vertices, unsigned gap);

private:
    void fillSlots(const runtime::SkinWeights& weights, unsigned vertex);
    void fillPaint(const runtime::SkinWeights& weights, unsigned vertex);

    std::vector<SkinSlots> m_skinSlots;
    std::vector<VertexPaint> m_paint;
    int m_heatInfluence = -1;
    SkinChanges m_pending;
    std::vector<unsigned> m_changedVertices;
};

} // namespace app::viewport
