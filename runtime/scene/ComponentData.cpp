#include "scene/ComponentData.h"

#include <algorithm>

namespace runtime {

bool ComponentData::isComponentKind(HFn::Type kind) {
    return kind == HFn::kMeshVertComponent || kind == HFn::kMeshEdgeComponent ||
           kind == HFn::kMeshPolygonComponent;
}

bool ComponentData::contains(int element) const {
    if (element < 0)
        return false;
    if (!m_indexed)
        return std::find(m_elements.begin(), m_elements.end(), element) != m_elements.end();
    if (element >= kBitLimit)
        return m_large.count(element) != 0;
    size_t word = static_cast<size_t>(element) / 64;
    return word < m_bits.size() && (m_bits[word] >> (element % 64) & 1u);
}

bool ComponentData::add(int element) {
    if (element < 0)
        return false;
    if (contains(element))
        return true;
    if (!m_indexed && m_elements.size() >= kListLimit) {
        m_indexed = true;
        for (int listed : m_elements)
            index(listed);
    }
    if (m_indexed)
        index(element);
    m_elements.push_back(element);
    return true;
}

void ComponentData::index(int element) {
    if (element >= kBitLimit) {
        m_large.insert(element);
        return;
    }
    size_t word = static_cast<size_t>(element) / 64;
    if (word >= m_bits.size())
        m_bits.resize(std::max(word + 1, m_bits.size() * 2));
    m_bits[word] |= std::uint64_t(1) << (element % 64);
}

void ComponentData::removeAll(const ComponentData& other) {
    std::vector<int> kept;
    kept.reserve(m_elements.size());
    for (int element : m_elements) {
        if (other.contains(element)) {
            if (!m_indexed)
                continue;
            if (element >= kBitLimit)
                m_large.erase(element);
            else
                m_bits[static_cast<size_t>(element) / 64] &= ~(std::uint64_t(1) << (element % 64));
        } else {
            kept.push_back(element);
        }
    }
    m_elements = std::move(kept);
}

} // namespace runtime
