// AttributeDef: the definition of one attribute: its long and short name, what it holds
// (a numeric value, text, a string array, child attributes, a connection only, or geometry),
// whether it is a sparse array, and its default value.
//
// Definitions form trees: a compound owns its children in a fixed order. Node types share
// their static definitions among all their nodes; dynamic definitions are made by the
// attribute function sets and added to nodes. A definition is frozen once it belongs to a
// node type or has been added to a node: later changes are refused. Everything in a tree
// lives as long as any pointer made by handle() or any plug holds its root; a child keeps
// only a weak link to its parent, so a child handle on its own never dangles.
#pragma once

#include "HStatus.h"
#include "api/HObjectData.h"
#include "scene/Value.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace runtime {

class AttributeDef;
using AttributePtr = std::shared_ptr<AttributeDef>;

enum class AttributeKind { kNumeric, kTyped, kCompound, kMessage, kGeometry };

class AttributeDef : public HObjectData, public std::enable_shared_from_this<AttributeDef> {
public:
    // type: kBool, kInt or kDouble.
    static AttributePtr numeric(const std::string& longName, const std::string& shortName,
                                ValueType type, double defaultValue = 0.0);
    // type: kString or kStringArray; defaultValue of that type or none.
    static AttributePtr typed(const std::string& longName, const std::string& shortName,
                              ValueType type, Value defaultValue = Value());
    static AttributePtr compound(const std::string& longName, const std::string& shortName,
                                 const std::vector<AttributePtr>& children = {});
    // Holds no value; exists to be connected ("message", "usedBy").
    static AttributePtr message(const std::string& longName, const std::string& shortName);
    // Carries a shape's geometry between nodes ("inMesh", "outputGeometry"); holds no value.
    static AttributePtr geometry(const std::string& longName, const std::string& shortName);

    // Letters, digits and underscores, not starting with a digit.
    static bool isValidName(const std::string& name);

    HFn::Type apiType() const override;

    AttributeKind kind() const { return m_kind; }
    ValueType valueType() const { return m_valueType; }
    // The value of an element or attribute that was never set (none for compounds).
    const Value& defaultValue() const { return m_default; }
    const std::string& longName() const { return m_longName; }
    const std::string& shortName() const { return m_shortName; }
    bool hasName(const std::string& name) const {
        return name == m_longName || name == m_shortName;
    }

    bool isArray() const { return m_isArray; }
    // Fails once frozen.
    HStatus setArray(bool isArray);
    bool isFrozen() const { return m_frozen; }
    // Freezes this definition and every descendant.
    void freeze();

    size_t childCount() const { return m_children.size(); }
    const AttributeDef* child(size_t index) const { return m_children[index].get(); }
    // Fails for a frozen compound, a non-compound, a child that already has a parent or a
    // name (long or short) that the tree already uses.
    HStatus addChild(const AttributePtr& child);
    // The compound this definition belongs to; null for a top-level one.
    AttributePtr parent() const { return m_parent.lock(); }
    // The parent without taking ownership; valid while the tree's root is held.
    const AttributeDef* parentInTree() const { return m_parentInTree; }
    unsigned indexInParent() const { return m_indexInParent; }
    // Number of ancestors (0 for a top-level definition).
    unsigned depth() const;
    const AttributeDef* root() const;
    // A pointer to this definition that keeps its whole tree alive.
    AttributePtr handle() const;

    // Calls visit for this definition and every descendant, parents before children.
    void forEachInTree(const std::function<void(const AttributeDef&)>& visit) const;
    // The definition in this tree (this one or a descendant) with the long or short name.
    const AttributeDef* findInTree(const std::string& name) const;

    AttributeDef(AttributeKind kind, std::string longName, std::string shortName,
                 ValueType valueType, Value defaultValue);

private:
    AttributeKind m_kind;
    std::string m_longName;
    std::string m_shortName;
    ValueType m_valueType;
    Value m_default;
    bool m_isArray = false;
    bool m_frozen = false;
    std::vector<AttributePtr> m_children;
    std::weak_ptr<AttributeDef> m_parent;
    const AttributeDef* m_parentInTree = nullptr;
    unsigned m_indexInParent = 0;
};

} // namespace runtime
