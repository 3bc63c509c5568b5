#include "scene/NodeType.h"

#include <cassert>

namespace runtime {

NodePayload::~NodePayload() = default;

NodeType::NodeType(std::string name, HFn::Type apiType, const NodeType* base, Traits traits,
                   std::vector<AttributePtr> attributes, PayloadFactory payload)
    : m_name(std::move(name)), m_apiType(apiType), m_traits(traits), m_payload(payload) {
    if (base)
        m_attributes = base->m_attributes;
    for (AttributePtr& def : attributes)
        m_attributes.push_back(std::move(def));
    for (const AttributePtr& def : m_attributes) {
        def->freeze();
        m_roots.insert(def.get());
        def->forEachInTree([this](const AttributeDef& each) {
            bool longFresh = m_byName.emplace(each.longName(), &each).second;
            bool shortFresh = each.shortName() == each.longName() ||
                              m_byName.emplace(each.shortName(), &each).second;
            assert(longFresh && shortFresh && "two attributes of a node type share a name");
            (void)longFresh;
            (void)shortFresh;
        });
    }
}

const AttributeDef* NodeType::findAttribute(const std::string& name) const {
    auto it = m_byName.find(name);
    return it == m_byName.end() ? nullptr : it->second;
}

bool NodeType::owns(const AttributeDef* def) const {
    return def && m_roots.count(def->root()) != 0;
}

std::unique_ptr<NodePayload> NodeType::makePayload() const {
    return m_payload ? m_payload() : nullptr;
}

} // namespace runtime
