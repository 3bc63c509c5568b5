// ComponentData: the elements of a shape picked by one index each (mesh vertices, edges or
// polygons), the referent of component HObjects.
//
// Elements keep the order in which they were added; adding one that is there changes nothing
// and costs constant time (a bit set for indices below 2^26, a hash set above, built once the
// component holds more than a few elements: a one-vertex component of a large mesh must not
// cost a bit per vertex of the mesh). Negative
// elements are refused. Components are shared by handle; the selection copies before it
// changes one, so a component a caller holds is never changed behind its back.
#pragma once

#include "api/HObjectData.h"

#include <cstddef>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace runtime {

class ComponentData : public HObjectData {
public:
    explicit ComponentData(HFn::Type kind) : m_kind(kind) {}

    HFn::Type apiType() const override { return m_kind; }
    // Whether kind is one of the component kinds (vertex, edge, polygon).
    static bool isComponentKind(HFn::Type kind);

    // False for a negative element.
    bool add(int element);
    bool contains(int element) const;
    const std::vector<int>& elements() const { return m_elements; }
    size_t size() const { return m_elements.size(); }
    bool empty() const { return m_elements.empty(); }
    // Removes the elements of other that are here, keeping the order of the rest.
    void removeAll(const ComponentData& other);

private:
    static constexpr int kBitLimit = 1 << 26;
    // Up to this many elements, lookups walk the list.
    static constexpr size_t kListLimit = 16;

    void index(int element);

    HFn::Type m_kind;
    std::vector<int> m_elements;
    std::vector<std::uint64_t> m_bits;
    std::unordered_set<int> m_large;
    bool m_indexed = false;
};

} // namespace runtime
