// ValueTree: the values stored for one attribute of one node, down to array elements and
// compound children. A node keeps one tree per top-level attribute that was ever written or
// connected; everything absent reads as the attribute's default.
//
// Three levels alternate along an attribute's definition tree: an array attribute's tree
// holds elements (sparse, kept sorted by logical index, so a physical position is an index
// into the element list); an element or a non-array attribute holds either a value or, for a
// compound, one tree per child in the child order. Plug does the walking (Plug.h).
#pragma once

#include "scene/Value.h"

#include <vector>

namespace runtime {

class ValueTree {
public:
    const Value& value() const { return m_value; }
    void setValue(Value value) { m_value = std::move(value); }
    bool hasValue() const { return m_value.index() != 0; }

    // Array level.
    size_t elementCount() const { return m_indices.size(); }
    unsigned logicalIndexAt(size_t position) const { return m_indices[position]; }
    const ValueTree& elementAt(size_t position) const { return m_elements[position]; }
    ValueTree& elementAt(size_t position) { return m_elements[position]; }
    const ValueTree* findElement(unsigned logicalIndex) const;
    ValueTree* findElement(unsigned logicalIndex);
    // The element at logicalIndex, created empty when missing.
    ValueTree& element(unsigned logicalIndex);
    bool removeElement(unsigned logicalIndex);

    // Compound level.
    const ValueTree* child(size_t index) const;
    // The child tree, creating the child list (of childCount entries) when missing.
    ValueTree& child(size_t index, size_t childCount);

private:
    size_t lowerBound(unsigned logicalIndex) const;

    Value m_value;
    std::vector<unsigned> m_indices;
    std::vector<ValueTree> m_elements;
    std::vector<ValueTree> m_children;
};

} // namespace runtime
