#include "scene/SkinWeights.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <numeric>

namespace runtime {

SkinWeights::SkinWeights(unsigned vertexCount) : m_slots(vertexCount) {}

void SkinWeights::setVertexCount(unsigned count) {
    for (unsigned v = count; v < vertexCount(); ++v)
        release(m_slots[v]);
    m_slots.resize(count);
    compactIfWasteful();
}

const SkinWeights::Influence* SkinWeights::influences(unsigned vertex) const {
    assert(vertex < m_slots.size());
    return m_influences.data() + m_slots[vertex].begin;
}

const double* SkinWeights::weights(unsigned vertex) const {
    assert(vertex < m_slots.size());
    return m_weights.data() + m_slots[vertex].begin;
}

double SkinWeights::weight(unsigned vertex, unsigned influence) const {
    const Slot& slot = m_slots[vertex];
    const Influence* first = m_influences.data() + slot.begin;
    const Influence* last = first + slot.count;
    const Influence* at = std::lower_bound(first, last, influence);
    return at != last && *at == influence ? m_weights[static_cast<size_t>(at - m_influences.data())]
                                          : 0.0;
}

void SkinWeights::readDense(unsigned vertex, double* dense, unsigned influenceCount) const {
    std::fill(dense, dense + influenceCount, 0.0);
    scatter(vertex, dense, influenceCount);
}

void SkinWeights::scatter(unsigned vertex, double* dense, unsigned influenceCount) const {
    const Slot& slot = m_slots[vertex];
    for (unsigned i = 0; i < slot.count; ++i) {
        Influence influence = m_influences[slot.begin + i];
        if (influence < influenceCount)
            dense[influence] = m_weights[slot.begin + i];
    }
}

void SkinWeights::setWeight(unsigned vertex, unsigned influence, double value) {
    assert(vertex < m_slots.size() && influence <= kMaxInfluences);
    Slot& slot = m_slots[vertex];
    Influence* first = m_influences.data() + slot.begin;
    Influence* last = first + slot.count;
    Influence* at = std::lower_bound(first, last, static_cast<Influence>(influence));
    size_t position = static_cast<size_t>(at - first);
    bool present = at != last && *at == influence;
    if (present && value != 0.0) {
        m_weights[slot.begin + position] = value;
        return;
    }
    if (present) {
        std::copy(at + 1, last, at);
        double* weights = m_weights.data() + slot.begin;
        std::copy(weights + position + 1, weights + slot.count, weights + position);
        --slot.count;
        return;
    }
    if (value == 0.0)
        return;
    if (slot.count == slot.capacity) {
        // Move to a larger block, keeping the entries.
        std::vector<Influence> influences(first, last);
        std::vector<double> weights(m_weights.begin() + slot.begin,
                                    m_weights.begin() + slot.begin + slot.count);
        unsigned count = slot.count;
        ensureCapacity(vertex, std::max(4u, count * 2u));
        std::copy(influences.begin(), influences.end(),
                  m_influences.begin() + m_slots[vertex].begin);
        std::copy(weights.begin(), weights.end(), m_weights.begin() + m_slots[vertex].begin);
        m_slots[vertex].count = static_cast<std::uint16_t>(count);
    }
    Slot& grown = m_slots[vertex];
    Influence* influences = m_influences.data() + grown.begin;
    double* weights = m_weights.data() + grown.begin;
    std::copy_backward(influences + position, influences + grown.count,
                       influences + grown.count + 1);
    std::copy_backward(weights + position, weights + grown.count, weights + grown.count + 1);
    influences[position] = static_cast<Influence>(influence);
    weights[position] = value;
    ++grown.count;
    compactIfWasteful();
}

void SkinWeights::assignDense(unsigned vertex, const double* dense, unsigned influenceCount) {
    assert(influenceCount <= kMaxInfluences + 1);
    std::vector<Influence> influences;
    std::vector<double> weights;
    for (unsigned i = 0; i < influenceCount; ++i) {
        if (dense[i] != 0.0) {
            influences.push_back(static_cast<Influence>(i));
            weights.push_back(dense[i]);
        }
    }
    store(vertex, influences, weights);
}

void SkinWeights::assign(unsigned vertex, const Influence* influences, const double* weights,
                         unsigned count) {
    if (std::is_sorted(influences, influences + count) && !holds(influences, weights)) {
        assignSorted(vertex, influences, weights, count);
        return;
    }
    std::vector<unsigned> order(count);
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(),
              [&](unsigned a, unsigned b) { return influences[a] < influences[b]; });
    std::vector<Influence> sortedInfluences;
    std::vector<double> sortedWeights;
    for (unsigned i : order) {
        if (weights[i] == 0.0)
            continue;
        assert((sortedInfluences.empty() || sortedInfluences.back() < influences[i]) &&
               "influence listed twice");
        sortedInfluences.push_back(influences[i]);
        sortedWeights.push_back(weights[i]);
    }
    store(vertex, sortedInfluences, sortedWeights);
}

namespace {

template <typename T> bool within(const T* pointer, const std::vector<T>& pool) {
    std::less<const T*> before;
    return !before(pointer, pool.data()) && before(pointer, pool.data() + pool.size());
}

} // namespace

bool SkinWeights::holds(const Influence* influences, const double* weights) const {
    return within(influences, m_influences) || within(weights, m_weights);
}

void SkinWeights::assignSorted(unsigned vertex, const Influence* influences, const double* weights,
                               unsigned count) {
    unsigned nonZero = static_cast<unsigned>(count - std::count(weights, weights + count, 0.0));
    ensureCapacity(vertex, nonZero);
    Slot& slot = m_slots[vertex];
    for (unsigned i = 0; i < count; ++i) {
        if (weights[i] == 0.0)
            continue;
        assert((slot.count == 0 || m_influences[slot.begin + slot.count - 1] < influences[i]) &&
               "influence listed twice");
        m_influences[slot.begin + slot.count] = influences[i];
        m_weights[slot.begin + slot.count] = weights[i];
        ++slot.count;
    }
    compactIfWasteful();
}

void SkinWeights::store(unsigned vertex, const std::vector<Influence>& influences,
                        const std::vector<double>& weights) {
    unsigned count = static_cast<unsigned>(influences.size());
    ensureCapacity(vertex, count);
    Slot& slot = m_slots[vertex];
    std::copy(influences.begin(), influences.end(), m_influences.begin() + slot.begin);
    std::copy(weights.begin(), weights.end(), m_weights.begin() + slot.begin);
    slot.count = static_cast<std::uint16_t>(count);
    compactIfWasteful();
}

void SkinWeights::ensureCapacity(unsigned vertex, unsigned count) {
    assert(vertex < m_slots.size() && count <= kMaxInfluences);
    Slot& slot = m_slots[vertex];
    slot.count = 0;
    if (slot.capacity >= count)
        return;
    release(slot);
    slot.begin = allocate(count);
    slot.capacity = static_cast<std::uint16_t>(count);
}

void SkinWeights::release(Slot& slot) {
    if (slot.capacity > 0) {
        m_freeBlocks[slot.capacity].push_back(slot.begin);
        m_freeEntries += slot.capacity;
    }
    slot = Slot();
}

std::uint32_t SkinWeights::allocate(unsigned capacity) {
    auto it = m_freeEntries > 0 ? m_freeBlocks.find(capacity) : m_freeBlocks.end();
    if (it != m_freeBlocks.end() && !it->second.empty()) {
        std::uint32_t begin = it->second.back();
        it->second.pop_back();
        m_freeEntries -= capacity;
        return begin;
    }
    assert(m_weights.size() + capacity <= UINT32_MAX && "weight pools full");
    std::uint32_t begin = static_cast<std::uint32_t>(m_weights.size());
    m_influences.resize(m_influences.size() + capacity);
    m_weights.resize(m_weights.size() + capacity);
    return begin;
}

void SkinWeights::compactIfWasteful() {
    if (m_freeEntries > 4096 && m_freeEntries > m_weights.size() / 2)
        compact();
}

void SkinWeights::compact() {
    std::vector<Influence> influences;
    std::vector<double> weights;
    influences.reserve(entryTotal());
    weights.reserve(entryTotal());
    for (Slot& slot : m_slots) {
        std::uint32_t begin = static_cast<std::uint32_t>(weights.size());
        influences.insert(influences.end(), m_influences.begin() + slot.begin,
                          m_influences.begin() + slot.begin + slot.count);
        weights.insert(weights.end(), m_weights.begin() + slot.begin,
                       m_weights.begin() + slot.begin + slot.count);
        slot.begin = begin;
        slot.capacity = slot.count;
    }
    m_influences = std::move(influences);
    m_weights = std::move(weights);
    m_freeBlocks.clear();
    m_freeEntries = 0;
}

void SkinWeights::reserveEntries(std::size_t total) {
    m_influences.reserve(total);
    m_weights.reserve(total);
}

void SkinWeights::reserveMore(unsigned vertices, std::size_t entries) {
    m_slots.reserve(m_slots.size() + vertices);
    m_influences.reserve(m_influences.size() + entries);
    m_weights.reserve(m_weights.size() + entries);
}

std::size_t SkinWeights::memoryBytes() const {
    return m_slots.capacity() * sizeof(Slot) + m_influences.capacity() * sizeof(Influence) +
           m_weights.capacity() * sizeof(double);
}

std::size_t SkinWeights::entryTotal() const {
    std::size_t total = 0;
    for (const Slot& slot : m_slots)
        total += slot.count;
    return total;
}

bool SkinWeights::operator==(const SkinWeights& other) const {
    if (vertexCount() != other.vertexCount())
        return false;
    for (unsigned v = 0; v < vertexCount(); ++v) {
        unsigned count = entryCount(v);
        if (count != other.entryCount(v) ||
            !std::equal(influences(v), influences(v) + count, other.influences(v)) ||
            !std::equal(weights(v), weights(v) + count, other.weights(v)))
            return false;
    }
    return true;
}

} // namespace runtime
