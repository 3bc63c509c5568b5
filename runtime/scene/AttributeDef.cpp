#include "scene/AttributeDef.h"

#include <cassert>

namespace runtime {

AttributeDef::AttributeDef(AttributeKind kind, std::string longName, std::string shortName,
                           ValueType valueType, Value defaultValue)
    : m_kind(kind), m_longName(std::move(longName)), m_shortName(std::move(shortName)),
      m_valueType(valueType), m_default(std::move(defaultValue)) {
    if (m_shortName.empty())
        m_shortName = m_longName;
}

AttributePtr AttributeDef::numeric(const std::string& longName, const std::string& shortName,
                                   ValueType type, double defaultValue) {
    assert(isNumeric(type));
    Value value;
    convertValue(defaultValue, type, value);
    return std::make_shared<AttributeDef>(AttributeKind::kNumeric, longName, shortName, type,
                                          value);
}

AttributePtr AttributeDef::typed(const std::string& longName, const std::string& shortName,
                                 ValueType type, Value defaultValue) {
    assert(type == ValueType::kString || type == ValueType::kStringArray);
    if (valueTypeOf(defaultValue) != type)
        defaultValue = zeroValue(type);
    return std::make_shared<AttributeDef>(AttributeKind::kTyped, longName, shortName, type,
                                          std::move(defaultValue));
}

AttributePtr AttributeDef::compound(const std::string& longName, const std::string& shortName,
                                    const std::vector<AttributePtr>& children) {
    auto def = std::make_shared<AttributeDef>(AttributeKind::kCompound, longName, shortName,
                                              ValueType::kNone, Value());
    for (const AttributePtr& child : children) {
        HStatus added = def->addChild(child);
        assert(added && "a built-in compound has a bad child");
        (void)added;
    }
    return def;
}

AttributePtr AttributeDef::message(const std::string& longName, const std::string& shortName) {
    return std::make_shared<AttributeDef>(AttributeKind::kMessage, longName, shortName,
                                          ValueType::kNone, Value());
}

AttributePtr AttributeDef::geometry(const std::string& longName, const std::string& shortName) {
    return std::make_shared<AttributeDef>(AttributeKind::kGeometry, longName, shortName,
                                          ValueType::kNone, Value());
}

bool AttributeDef::isValidName(const std::string& name) {
    if (name.empty() || (name[0] >= '0' && name[0] <= '9'))
        return false;
    for (char c : name) {
        bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        bool digit = c >= '0' && c <= '9';
        if (!letter && !digit && c != '_')
            return false;
    }
    return true;
}

HFn::Type AttributeDef::apiType() const {
    switch (m_kind) {
    case AttributeKind::kNumeric:
        return HFn::kNumericAttribute;
    case AttributeKind::kCompound:
        return HFn::kCompoundAttribute;
    case AttributeKind::kMessage:
        return HFn::kMessageAttribute;
    case AttributeKind::kTyped:
    case AttributeKind::kGeometry:
        break;
    }
    return HFn::kTypedAttribute;
}

HStatus AttributeDef::setArray(bool isArray) {
    if (m_frozen)
        return HStatus(HS::kInvalidParameter,
                       "Attribute " + m_longName + " belongs to a node and cannot change.");
    m_isArray = isArray;
    return HS::kSuccess;
}

void AttributeDef::freeze() {
    m_frozen = true;
    for (const AttributePtr& child : m_children)
        child->freeze();
}

HStatus AttributeDef::addChild(const AttributePtr& child) {
    if (!child || m_kind != AttributeKind::kCompound)
        return HStatus(HS::kInvalidParameter, "Only a compound attribute takes children.");
    if (m_frozen)
        return HStatus(HS::kInvalidParameter,
                       "Attribute " + m_longName + " belongs to a node and cannot change.");
    if (child.get() == root() || child->m_parentInTree)
        return HStatus(HS::kInvalidParameter,
                       "Attribute " + child->m_longName + " already has a parent.");
    bool clash = false;
    child->forEachInTree([&](const AttributeDef& def) {
        const AttributeDef* top = root();
        if (top->findInTree(def.m_longName) || top->findInTree(def.m_shortName))
            clash = true;
    });
    if (clash)
        return HStatus(HS::kInvalidParameter,
                       "Attribute " + child->m_longName + " has a name that is already used.");
    child->m_parent = weak_from_this();
    child->m_parentInTree = this;
    child->m_indexInParent = static_cast<unsigned>(m_children.size());
    m_children.push_back(child);
    return HS::kSuccess;
}

unsigned AttributeDef::depth() const {
    unsigned depth = 0;
    for (const AttributeDef* def = m_parentInTree; def; def = def->m_parentInTree)
        ++depth;
    return depth;
}

const AttributeDef* AttributeDef::root() const {
    const AttributeDef* def = this;
    while (def->m_parentInTree)
        def = def->m_parentInTree;
    return def;
}

AttributePtr AttributeDef::handle() const {
    AttributePtr owner = std::const_pointer_cast<AttributeDef>(root()->shared_from_this());
    return AttributePtr(owner, const_cast<AttributeDef*>(this));
}

void AttributeDef::forEachInTree(const std::function<void(const AttributeDef&)>& visit) const {
    visit(*this);
    for (const AttributePtr& child : m_children)
        child->forEachInTree(visit);
}

const AttributeDef* AttributeDef::findInTree(const std::string& name) const {
    if (hasName(name))
        return this;
    for (const AttributePtr& child : m_children)
        if (const AttributeDef* found = child->findInTree(name))
            return found;
    return nullptr;
}

} // namespace runtime
