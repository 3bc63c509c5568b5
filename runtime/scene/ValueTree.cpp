#include "scene/ValueTree.h"

#include <algorithm>
#include <cassert>

namespace runtime {

size_t ValueTree::lowerBound(unsigned logicalIndex) const {
    return static_cast<size_t>(std::lower_bound(m_indices.begin(), m_indices.end(), logicalIndex) -
                               m_indices.begin());
}

const ValueTree* ValueTree::findElement(unsigned logicalIndex) const {
    size_t at = lowerBound(logicalIndex);
    if (at < m_indices.size() && m_indices[at] == logicalIndex)
        return &m_elements[at];
    return nullptr;
}

ValueTree* ValueTree::findElement(unsigned logicalIndex) {
    return const_cast<ValueTree*>(static_cast<const ValueTree*>(this)->findElement(logicalIndex));
}

ValueTree& ValueTree::element(unsigned logicalIndex) {
    size_t at = lowerBound(logicalIndex);
    if (at < m_indices.size() && m_indices[at] == logicalIndex)
        return m_elements[at];
    m_indices.insert(m_indices.begin() + static_cast<std::ptrdiff_t>(at), logicalIndex);
    return *m_elements.emplace(m_elements.begin() + static_cast<std::ptrdiff_t>(at));
}

bool ValueTree::removeElement(unsigned logicalIndex) {
    size_t at = lowerBound(logicalIndex);
    if (at >= m_indices.size() || m_indices[at] != logicalIndex)
        return false;
    m_indices.erase(m_indices.begin() + static_cast<std::ptrdiff_t>(at));
    m_elements.erase(m_elements.begin() + static_cast<std::ptrdiff_t>(at));
    return true;
}

const ValueTree* ValueTree::child(size_t index) const {
    return index < m_children.size() ? &m_children[index] : nullptr;
}

ValueTree& ValueTree::child(size_t index, size_t childCount) {
    assert(index < childCount);
    if (m_children.size() < childCount)
        m_children.resize(childCount);
    return m_children[index];
}

} // namespace runtime
