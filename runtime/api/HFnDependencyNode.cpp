#include "HFnDependencyNode.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "scene/Scene.h"

using runtime::AttributeDef;
using runtime::NodePtr;
using runtime::report;

namespace {

// Every attribute of the node, parents before children, in the node's order.
std::vector<const AttributeDef*> allAttributes(const runtime::Node& node) {
    std::vector<const AttributeDef*> all;
    for (const AttributeDef* top : node.attributes())
        top->forEachInTree([&](const AttributeDef& def) { all.push_back(&def); });
    return all;
}

HStatus missingAttribute(const HString& name) {
    return runtime::invalidParameter("No attribute named " + name.str() + ".");
}

} // namespace

HFnDependencyNode::HFnDependencyNode() = default;

HFnDependencyNode::HFnDependencyNode(const HObject& node, HStatus* status) {
    report(status, setObject(node));
}

HFn::Type HFnDependencyNode::type() const {
    return HFn::kDependencyNode;
}

HStatus HFnDependencyNode::setObject(const HObject& node) {
    return attach(node, HFn::kDependencyNode);
}

HString HFnDependencyNode::name(HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node ? HString(node->name()) : HString();
}

HString HFnDependencyNode::setName(const HString& name, HStatus* status) {
    NodePtr node = HApiAccess::node(m_object);
    if (!node) {
        report(status, checkAttached());
        return HString();
    }
    return HString(runtime::scene().rename(*node, name.str(), status));
}

HString HFnDependencyNode::typeName(HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node ? HString(node->typeName()) : HString();
}

HPlug HFnDependencyNode::findPlug(const HString& attributeName, bool, HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    if (!node) {
        report(status, checkAttached());
        return HPlug();
    }
    runtime::Plug plug = node->plug(attributeName.str());
    report(status, plug.isNull() ? missingAttribute(attributeName) : HStatus());
    return plug.isNull() ? HPlug() : HApiAccess::plug(plug);
}

HPlug HFnDependencyNode::findPlug(const HObject& attribute, bool, HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    std::shared_ptr<AttributeDef> def = HApiAccess::as<AttributeDef>(attribute);
    runtime::Plug plug = node && def ? node->plug(def.get()) : runtime::Plug();
    report(status, plug.isNull() ? runtime::invalidParameter("The node has no such attribute.")
                                 : HStatus());
    return plug.isNull() ? HPlug() : HApiAccess::plug(plug);
}

HObject HFnDependencyNode::attribute(const HString& attributeName, HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    const AttributeDef* def = node ? node->findAttribute(attributeName.str()) : nullptr;
    report(status, def ? HStatus() : node ? missingAttribute(attributeName) : checkAttached());
    return def ? HApiAccess::object(def->handle()) : HObject();
}

bool HFnDependencyNode::hasAttribute(const HString& attributeName, HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node && node->findAttribute(attributeName.str());
}

unsigned HFnDependencyNode::attributeCount(HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node ? static_cast<unsigned>(allAttributes(*node).size()) : 0u;
}

HObject HFnDependencyNode::attribute(unsigned index, HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    std::vector<const AttributeDef*> all;
    if (node)
        all = allAttributes(*node);
    if (index >= all.size()) {
        report(status,
               node ? runtime::invalidParameter("Attribute index out of range.") : checkAttached());
        return HObject();
    }
    report(status, HS::kSuccess);
    return HApiAccess::object(all[index]->handle());
}

HStatus HFnDependencyNode::addAttribute(const HObject& attribute) {
    NodePtr node = HApiAccess::node(m_object);
    if (!node)
        return checkAttached();
    return runtime::scene().addAttribute(*node, HApiAccess::as<AttributeDef>(attribute));
}

HStatus HFnDependencyNode::removeAttribute(const HObject& attribute) {
    NodePtr node = HApiAccess::node(m_object);
    if (!node)
        return checkAttached();
    std::shared_ptr<AttributeDef> def = HApiAccess::as<AttributeDef>(attribute);
    HStatus status;
    runtime::scene().removeAttribute(*node, def.get(), &status);
    return status;
}

bool HFnDependencyNode::isDynamicAttribute(const HObject& attribute, HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    std::shared_ptr<AttributeDef> def = HApiAccess::as<AttributeDef>(attribute);
    return node && def && node->isDynamic(def.get());
}
