#include "scene/Plug.h"

#include "scene/Node.h"
#include "scene/ValueTree.h"

#include <algorithm>
#include <cassert>

namespace runtime {

Plug::Plug(NodePtr node, const AttributeDef* attribute)
    : m_node(std::move(node)), m_attribute(attribute ? attribute->handle() : nullptr),
      m_indices(attribute ? attribute->depth() + 1 : 0, kOpen) {}

Plug::Plug(NodePtr node, const AttributeDef* attribute, std::vector<int> indices)
    : m_node(std::move(node)), m_attribute(attribute ? attribute->handle() : nullptr),
      m_indices(std::move(indices)) {
    assert(attribute && m_indices.size() == attribute->depth() + 1);
}

std::vector<const AttributeDef*> Plug::chain() const {
    std::vector<const AttributeDef*> defs(m_indices.size());
    const AttributeDef* def = m_attribute.get();
    for (size_t i = defs.size(); i-- > 0; def = def->parentInTree())
        defs[i] = def;
    return defs;
}

bool Plug::isNull() const {
    return !m_node || !m_attribute || !m_node->isAlive() ||
           !m_node->hasAttribute(m_attribute.get());
}

bool Plug::isArray() const {
    return m_attribute && m_attribute->isArray() && m_indices.back() == kOpen;
}

bool Plug::isElement() const {
    return m_attribute && m_attribute->isArray() && m_indices.back() != kOpen;
}

bool Plug::isCompound() const {
    return m_attribute && m_attribute->kind() == AttributeKind::kCompound;
}

bool Plug::isChild() const {
    return m_attribute && m_attribute->parentInTree() != nullptr;
}

bool Plug::isResolved() const {
    if (!m_attribute)
        return false;
    std::vector<const AttributeDef*> defs = chain();
    for (size_t i = 0; i + 1 < defs.size(); ++i)
        if (defs[i]->isArray() && m_indices[i] == kOpen)
            return false;
    return true;
}

Plug Plug::element(unsigned logicalIndex) const {
    if (!isArray() || logicalIndex > static_cast<unsigned>(INT32_MAX))
        return Plug();
    Plug result = *this;
    result.m_indices.back() = static_cast<int>(logicalIndex);
    return result;
}

Plug Plug::elementAtPosition(unsigned position) const {
    std::vector<unsigned> existing = elementIndices();
    return position < existing.size() ? element(existing[position]) : Plug();
}

Plug Plug::array() const {
    if (!isElement())
        return Plug();
    Plug result = *this;
    result.m_indices.back() = kOpen;
    return result;
}

Plug Plug::child(size_t index) const {
    if (!isCompound() || index >= m_attribute->childCount())
        return Plug();
    Plug result;
    result.m_node = m_node;
    result.m_attribute = m_attribute->child(index)->handle();
    result.m_indices = m_indices;
    result.m_indices.push_back(kOpen);
    return result;
}

Plug Plug::child(const AttributeDef& attribute) const {
    if (attribute.parentInTree() != m_attribute.get())
        return Plug();
    return child(static_cast<size_t>(attribute.indexInParent()));
}

Plug Plug::parent() const {
    if (!isChild())
        return Plug();
    Plug result;
    result.m_node = m_node;
    result.m_attribute = m_attribute->parentInTree()->handle();
    result.m_indices = m_indices;
    result.m_indices.pop_back();
    return result;
}

unsigned Plug::logicalIndex() const {
    return isElement() ? static_cast<unsigned>(m_indices.back()) : 0u;
}

HStatus Plug::selectAncestor(unsigned logicalIndex, const AttributeDef* ancestor) {
    if (!m_attribute || logicalIndex > static_cast<unsigned>(INT32_MAX))
        return failure("has no such array ancestor");
    std::vector<const AttributeDef*> defs = chain();
    for (size_t i = defs.size() - 1; i-- > 0;) {
        bool wanted = ancestor ? defs[i] == ancestor : defs[i]->isArray();
        if (wanted && defs[i]->isArray()) {
            m_indices[i] = static_cast<int>(logicalIndex);
            return HS::kSuccess;
        }
        if (wanted)
            break;
    }
    return failure("has no such array ancestor");
}

const ValueTree* Plug::storedTree() const {
    if (isNull() || !isResolved())
        return nullptr;
    std::vector<const AttributeDef*> defs = chain();
    const ValueTree* tree = m_node->storedValues(defs[0]);
    for (size_t i = 0; tree && i < defs.size(); ++i) {
        if (defs[i]->isArray() && m_indices[i] != kOpen)
            tree = tree->findElement(static_cast<unsigned>(m_indices[i]));
        if (tree && i + 1 < defs.size())
            tree = tree->child(defs[i + 1]->indexInParent());
    }
    return tree;
}

ValueTree* Plug::storedTreeForWrite() const {
    if (isNull() || !isResolved())
        return nullptr;
    std::vector<const AttributeDef*> defs = chain();
    ValueTree* tree = &m_node->storedValuesForWrite(defs[0]);
    for (size_t i = 0; i < defs.size(); ++i) {
        if (defs[i]->isArray() && m_indices[i] != kOpen)
            tree = &tree->element(static_cast<unsigned>(m_indices[i]));
        if (i + 1 < defs.size())
            tree = &tree->child(defs[i + 1]->indexInParent(), defs[i]->childCount());
    }
    return tree;
}

std::vector<unsigned> Plug::elementIndices() const {
    std::vector<unsigned> indices;
    if (!isArray())
        return indices;
    if (const ValueTree* tree = storedTree()) {
        indices.reserve(tree->elementCount());
        for (size_t i = 0; i < tree->elementCount(); ++i)
            indices.push_back(tree->logicalIndexAt(i));
    }
    return indices;
}

size_t Plug::elementCount() const {
    if (!isArray())
        return 0;
    const ValueTree* tree = storedTree();
    return tree ? tree->elementCount() : 0;
}

bool Plug::exists() const {
    return storedTree() != nullptr;
}

HStatus Plug::failure(const char* what) const {
    return HStatus(HS::kInvalidParameter, "Plug " + name() + " " + what + ".");
}

HStatus Plug::checkValuePlace() const {
    if (isNull())
        return HStatus(HS::kInvalidParameter, "The plug is null or its node was deleted.");
    if (!isResolved())
        return failure("has an array ancestor without a chosen element");
    if (isArray() || m_attribute->valueType() == ValueType::kNone)
        return failure("holds no value");
    return HS::kSuccess;
}

HStatus Plug::read(Value& value) const {
    HStatus status = checkValuePlace();
    if (!status)
        return status;
    const ValueTree* tree = storedTree();
    value = tree && tree->hasValue() ? tree->value() : m_attribute->defaultValue();
    return HS::kSuccess;
}

HStatus Plug::checkWritable(const Value& value, Value* converted) const {
    HStatus status = checkValuePlace();
    if (!status)
        return status;
    Value result;
    if (!convertValue(value, m_attribute->valueType(), result))
        return failure("does not take a value of this type");
    if (converted)
        *converted = std::move(result);
    return HS::kSuccess;
}

std::string Plug::name(bool withNodeName, bool longNames) const {
    if (!m_attribute)
        return std::string();
    std::string text = withNodeName && m_node ? m_node->name() : std::string();
    std::vector<const AttributeDef*> defs = chain();
    for (size_t i = 0; i < defs.size(); ++i) {
        bool leaf = i + 1 == defs.size();
        // Attribute names are unique on a node, so only array levels (for their index) and
        // the attribute itself need naming.
        if (!leaf && !defs[i]->isArray())
            continue;
        if (!text.empty())
            text += '.';
        text += longNames ? defs[i]->longName() : defs[i]->shortName();
        if (defs[i]->isArray() && !(leaf && m_indices[i] == kOpen))
            text += "[" + std::to_string(m_indices[i]) + "]";
    }
    return text;
}

bool Plug::isWithin(const Plug& other) const {
    if (m_node != other.m_node || m_indices.size() < other.m_indices.size())
        return false;
    const AttributeDef* def = m_attribute.get();
    for (size_t depth = m_indices.size(); depth > other.m_indices.size(); --depth)
        def = def->parentInTree();
    if (def != other.m_attribute.get())
        return false;
    for (size_t i = 0; i < other.m_indices.size(); ++i)
        if (other.m_indices[i] != kOpen && m_indices[i] != other.m_indices[i])
            return false;
    return true;
}

bool Plug::operator==(const Plug& other) const {
    return m_node == other.m_node && m_attribute == other.m_attribute &&
           m_indices == other.m_indices;
}

} // namespace runtime
