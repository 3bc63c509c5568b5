// VertexWeightRecord: the weights that some vertices of a skin cluster had before an edit and
// after it, so that the edit can be undone and redone bit for bit.
//
// An edit calls keep() for each vertex before it changes it; only the first call for a vertex
// stores anything, so a vertex changed several times is kept as it was at the start. Once the
// edit is done, restoreBefore() writes the kept weights back, after reading the kept
// vertices' current weights as the state after the edit (the first time only: later calls
// find the scene as the edit left it, or as a new run of the same edit left it).
// restoreAfter() writes that state again. Both set absolute states, so restoreBefore() twice
// in a row still ends at the state before the edit. The record stores only the kept vertices'
// non-zero weights (SkinWeights) and their indices. A vertex index beyond the weights is a
// programming error.
#pragma once

#include "scene/SkinWeights.h"

#include <vector>

namespace runtime {

class VertexWeightRecord {
public:
    void keep(const SkinWeights& weights, unsigned vertex);
    // Makes room for keeping this many vertices with this many weights in all, so that an edit
    // of a whole cluster does not grow the record step by step.
    void reserve(unsigned vertices, std::size_t weights);
    bool empty() const { return m_vertices.empty(); }
    unsigned size() const { return static_cast<unsigned>(m_vertices.size()); }
    // The kept vertices, in the order they were first kept.
    const std::vector<unsigned>& vertices() const { return m_vertices; }

    void restoreBefore(SkinWeights& weights);
    void restoreAfter(SkinWeights& weights);

private:
    std::vector<unsigned> m_vertices;
    std::vector<bool> m_seen;
    SkinWeights m_before;
    SkinWeights m_after;
    bool m_hasAfter = false;
};

} // namespace runtime
