// SkinWeights: the weights of a skin cluster, stored compactly: per vertex only its non-zero
// weights, as (influence index, weight) pairs sorted by influence, in two shared pools (2 bytes
// per influence index, 8 per weight) plus 8 bytes per vertex. A million vertices with 8
// weights each take about 88 MB.
//
// Reading or writing one vertex costs time in proportion to that vertex's own weights: each
// vertex owns a block of the pools with room to spare; a vertex that outgrows its block moves
// to a new one at the end and leaves the old block for a later vertex of the same size. When
// more than half of the pools is left over, they are compacted. Weights are exact doubles; a
// weight of zero is simply absent. Indexing past the vertex count is a programming error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace runtime {

class SkinWeights {
public:
    using Influence = std::uint16_t;
    static constexpr unsigned kMaxInfluences = 65535;

    SkinWeights() = default;
    explicit SkinWeights(unsigned vertexCount);

    unsigned vertexCount() const { return static_cast<unsigned>(m_slots.size()); }
    // New vertices have no weights; weights of removed vertices are dropped.
    void setVertexCount(unsigned count);

    // The vertex's non-zero weights, influences ascending.
    unsigned entryCount(unsigned vertex) const { return m_slots[vertex].count; }
    const Influence* influences(unsigned vertex) const;
    const double* weights(unsigned vertex) const;
    double weight(unsigned vertex, unsigned influence) const;
    // Writes the weights of influences 0 .. influenceCount-1 to dense (absent ones as 0).
    void readDense(unsigned vertex, double* dense, unsigned influenceCount) const;
    // Writes only the vertex's non-zero weights into dense, for a dense that holds zeros.
    void scatter(unsigned vertex, double* dense, unsigned influenceCount) const;

    void setWeight(unsigned vertex, unsigned influence, double value);
    // Replaces the vertex's weights with the non-zero values of dense.
    void assignDense(unsigned vertex, const double* dense, unsigned influenceCount);
    // Replaces the vertex's weights; influences need not be sorted but must be unique.
    void assign(unsigned vertex, const Influence* influences, const double* weights,
                unsigned count);

    // Bytes held, counting reserved room.
    std::size_t memoryBytes() const;
    // Total number of stored non-zero weights.
    std::size_t entryTotal() const;
    // Moves every vertex's weights together, dropping unused room.
    void compact();
    void reserveEntries(std::size_t total);
    // Room for `vertices` more vertices and `entries` more weights, taken but not filled.
    void reserveMore(unsigned vertices, std::size_t entries);

    // Same vertices with the same weights (storage layout aside).
    bool operator==(const SkinWeights& other) const;
    bool operator!=(const SkinWeights& other) const { return !(*this == other); }

private:
    struct Slot {
        std::uint32_t begin = 0;
        std::uint16_t count = 0;
        std::uint16_t capacity = 0;
    };

    // Whether the arrays lie in this object's pools (which a write may move).
    bool holds(const Influence* influences, const double* weights) const;
    // assign() for influences in ascending order, without building sorted copies.
    void assignSorted(unsigned vertex, const Influence* influences, const double* weights,
                      unsigned count);
    // Replaces the vertex's weights with non-zero weights sorted by influence.
    void store(unsigned vertex, const std::vector<Influence>& influences,
               const std::vector<double>& weights);
    // Makes sure the vertex's block holds at least count entries (keeping none of them).
    void ensureCapacity(unsigned vertex, unsigned count);
    void release(Slot& slot);
    std::uint32_t allocate(unsigned capacity);
    void compactIfWasteful();

    std::vector<Slot> m_slots;
    std::vector<Influence> m_influences;
    std::vector<double> m_weights;
    std::unordered_map<unsigned, std::vector<std::uint32_t>> m_freeBlocks;
    std::size_t m_freeEntries = 0;
};

} // namespace runtime
