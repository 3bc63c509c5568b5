// Plug: a place on a node where a value lives or a connection ends: an attribute, down to
// array elements by logical index and compound children ("set1.usedBy[0]",
// "skinCluster1.lockedCellIndices[12].lockedLocalJoints[0]").
//
// A plain value that holds its node and its attribute tree alive; it never dangles. It keeps
// one index per level of the attribute's definition tree (the attribute and each ancestor):
// the logical index for an array level, kOpen where none is chosen. On the attribute itself
// kOpen means the whole array; on an array ancestor it means the plug is not yet resolved
// and can be neither read nor written (selectAncestor completes it). A plug whose node was
// deleted, or whose dynamic attribute was removed, reads as null. Writing goes through the
// Scene (it notifies and records); reading is here.
#pragma once

#include "HStatus.h"
#include "scene/AttributeDef.h"
#include "scene/Value.h"

#include <memory>
#include <string>
#include <vector>

namespace runtime {

class Node;
class ValueTree;
using NodePtr = std::shared_ptr<Node>;

class Plug {
public:
    static constexpr int kOpen = -1;

    Plug() = default;
    // The attribute's plug with every index open.
    Plug(NodePtr node, const AttributeDef* attribute);
    // The plug with the given indices (one per level, see above).
    Plug(NodePtr node, const AttributeDef* attribute, std::vector<int> indices);

    const NodePtr& node() const { return m_node; }
    const AttributeDef* attribute() const { return m_attribute.get(); }
    // The definition, holding its tree alive (for HObjects).
    const AttributePtr& attributeHandle() const { return m_attribute; }
    // One entry per level, from the top-level attribute down to this one.
    const std::vector<int>& indices() const { return m_indices; }

    bool isNull() const;
    bool isArray() const;
    bool isElement() const;
    bool isCompound() const;
    bool isChild() const;
    // Every array ancestor has its element chosen.
    bool isResolved() const;

    // Navigation; each returns a null plug where the step does not exist.
    Plug element(unsigned logicalIndex) const;
    Plug elementAtPosition(unsigned position) const;
    Plug array() const;
    Plug child(size_t index) const;
    Plug child(const AttributeDef& attribute) const;
    Plug parent() const;
    unsigned logicalIndex() const;
    // Chooses the element of an array ancestor (the nearest array ancestor when ancestor is
    // null). Fails when there is no such array ancestor.
    HStatus selectAncestor(unsigned logicalIndex, const AttributeDef* ancestor = nullptr);

    // The logical indices of the elements that exist, ascending (array plugs only).
    std::vector<unsigned> elementIndices() const;
    size_t elementCount() const;
    // Whether a value or an element was ever stored at this place.
    bool exists() const;

    // The stored value, or the attribute's default. Fails for a null or unresolved plug and
    // for attributes without values (compound, message, geometry, a whole array).
    HStatus read(Value& value) const;
    // Fails unless a value of the attribute's type can be written here.
    HStatus checkWritable(const Value& value, Value* converted = nullptr) const;
    // The stored tree at this place (null when nothing is stored) and the one to write into.
    const ValueTree* storedTree() const;
    ValueTree* storedTreeForWrite() const;

    // "node.attr[3].child" (long names) or "attr[3].child" with short names and so on: the
    // array levels with their indices and the attribute itself ("node.translateX", not
    // "node.translate.translateX"). An unresolved array ancestor shows as [-1].
    std::string name(bool withNodeName = true, bool longNames = true) const;
    // Whether this plug is other or lies inside it (an element or child of it).
    bool isWithin(const Plug& other) const;

    bool operator==(const Plug& other) const;
    bool operator!=(const Plug& other) const { return !(*this == other); }

private:
    // Definitions from the top-level attribute down to this one.
    std::vector<const AttributeDef*> chain() const;
    HStatus failure(const char* what) const;
    // kSuccess where a single value lives: a live, resolved plug of a valued attribute that is
    // not a whole array.
    HStatus checkValuePlace() const;

    NodePtr m_node;
    AttributePtr m_attribute;
    std::vector<int> m_indices;
};

} // namespace runtime
