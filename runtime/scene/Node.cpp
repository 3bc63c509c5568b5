#include "scene/Node.h"

#include "api/HObjectData.h"
#include "scene/MeshData.h"
#include "scene/SkinClusterData.h"

#include <algorithm>

namespace runtime {

Node::Node(NodeTypePtr type, std::string name, std::uint64_t serial)
    : m_type(std::move(type)), m_name(std::move(name)), m_serial(serial),
      m_payload(m_type->makePayload()) {}

Node::~Node() {
    // Children outliving this node (held by handles) must not point back at it.
    for (const NodePtr& child : m_children)
        child->m_parent = nullptr;
}

HFn::Type Node::apiType() const {
    return m_alive ? m_type->apiType() : HFn::kInvalid;
}

bool Node::hasFn(HFn::Type fn) const {
    return fnTypeIncludes(m_type->apiType(), fn);
}

std::vector<const Node*> Node::pathFromWorld() const {
    std::vector<const Node*> path;
    for (const Node* node = this; node; node = node->m_parent)
        path.push_back(node);
    std::reverse(path.begin(), path.end());
    return path;
}

std::string Node::fullPathName() const {
    if (!isDag())
        return m_name;
    std::string path;
    for (const Node* node : pathFromWorld()) {
        path += '|';
        path += node->m_name;
    }
    return path;
}

bool Node::isDescendantOf(const Node& ancestor) const {
    for (const Node* node = m_parent; node; node = node->m_parent)
        if (node == &ancestor)
            return true;
    return false;
}

const AttributeDef* Node::findAttribute(const std::string& name) const {
    if (const AttributeDef* def = m_type->findAttribute(name))
        return def;
    auto it = m_dynamicByName.find(name);
    return it == m_dynamicByName.end() ? nullptr : it->second;
}

Plug Node::plug(const std::string& attributeName) const {
    return plug(findAttribute(attributeName));
}

Plug Node::plug(const AttributeDef* attribute) const {
    if (!attribute || !hasAttribute(attribute))
        return Plug();
    return Plug(std::const_pointer_cast<Node>(shared_from_this()), attribute);
}

std::vector<const AttributeDef*> Node::attributes() const {
    std::vector<const AttributeDef*> all;
    all.reserve(m_type->attributes().size() + m_dynamic.size());
    for (const AttributePtr& def : m_type->attributes())
        all.push_back(def.get());
    for (const AttributePtr& def : m_dynamic)
        all.push_back(def.get());
    return all;
}

bool Node::hasAttribute(const AttributeDef* attribute) const {
    return m_type->owns(attribute) || isDynamic(attribute);
}

bool Node::isDynamic(const AttributeDef* attribute) const {
    if (!attribute || m_dynamic.empty())
        return false;
    const AttributeDef* root = attribute->root();
    return std::any_of(m_dynamic.begin(), m_dynamic.end(),
                       [root](const AttributePtr& def) { return def.get() == root; });
}

const ValueTree* Node::storedValues(const AttributeDef* topLevel) const {
    auto it = m_values.find(topLevel);
    return it == m_values.end() ? nullptr : &it->second;
}

ValueTree& Node::storedValuesForWrite(const AttributeDef* topLevel) {
    return m_values[topLevel];
}

namespace {

// Walks a stored tree alongside its definition, keeping the plug's indices up to date.
void visitTree(const NodePtr& node, const AttributeDef& def, const ValueTree& tree,
               std::vector<int>& indices, bool atElement,
               const std::function<void(const Plug&, const Value&)>& visit) {
    if (def.isArray() && !atElement) {
        for (size_t i = 0; i < tree.elementCount(); ++i) {
            indices.back() = static_cast<int>(tree.logicalIndexAt(i));
            visitTree(node, def, tree.elementAt(i), indices, true, visit);
        }
        indices.back() = Plug::kOpen;
        return;
    }
    if (tree.hasValue())
        visit(Plug(node, &def, indices), tree.value());
    for (size_t c = 0; c < def.childCount(); ++c) {
        const ValueTree* child = tree.child(c);
        if (!child)
            continue;
        indices.push_back(Plug::kOpen);
        visitTree(node, *def.child(c), *child, indices, false, visit);
        indices.pop_back();
    }
}

} // namespace

void Node::forEachStoredValue(const std::function<void(const Plug&, const Value&)>& visit) const {
    NodePtr self = std::const_pointer_cast<Node>(shared_from_this());
    for (const AttributeDef* def : attributes()) {
        const ValueTree* tree = storedValues(def);
        if (!tree)
            continue;
        std::vector<int> indices{Plug::kOpen};
        visitTree(self, *def, *tree, indices, false, visit);
    }
}

MeshData* Node::mesh() const {
    return dynamic_cast<MeshData*>(m_payload.get());
}

SkinClusterData* Node::skinCluster() const {
    return dynamic_cast<SkinClusterData*>(m_payload.get());
}

} // namespace runtime
