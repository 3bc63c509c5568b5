#include "HDagPath.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "scene/Scene.h"

using runtime::NodePtr;
using runtime::report;

namespace {

HStatus invalidPath() {
    return runtime::invalidParameter("The path is not valid: its node is missing or deleted.");
}

} // namespace

HDagPath::HDagPath() = default;

HStatus HDagPath::getAPathTo(const HObject& node, HDagPath& path) {
    NodePtr live = HApiAccess::node(node);
    if (!live || !live->isDag())
        return runtime::invalidParameter("The object is not a DAG node.");
    path = HApiAccess::path(live);
    return HS::kSuccess;
}

HObject HDagPath::node(HStatus* status) const {
    report(status, isValid() ? HStatus() : invalidPath());
    return isValid() ? m_node : HObject();
}

HObject HDagPath::transform(HStatus* status) const {
    NodePtr node = HApiAccess::node(*this);
    if (!node) {
        report(status, invalidPath());
        return HObject();
    }
    report(status, HS::kSuccess);
    if (node->hasFn(HFn::kTransform) || !node->parent())
        return m_node;
    return HApiAccess::object(node->parent()->shared_from_this());
}

HString HDagPath::fullPathName(HStatus* status) const {
    NodePtr node = HApiAccess::node(*this);
    report(status, node ? HStatus() : invalidPath());
    return node ? HString(node->fullPathName()) : HString();
}

HString HDagPath::partialPathName(HStatus* status) const {
    NodePtr node = HApiAccess::node(*this);
    report(status, node ? HStatus() : invalidPath());
    return node ? HString(runtime::scene().partialPathName(*node)) : HString();
}

HStatus HDagPath::extendToShape() {
    NodePtr node = HApiAccess::node(*this);
    if (!node)
        return invalidPath();
    if (node->isShape())
        return HS::kSuccess;
    NodePtr shape;
    for (const NodePtr& child : node->children()) {
        if (!child->isShape())
            continue;
        if (shape)
            return runtime::invalidParameter(node->name() + " has more than one shape.");
        shape = child;
    }
    if (!shape)
        return runtime::invalidParameter(node->name() + " has no shape.");
    m_node = HApiAccess::object(shape);
    return HS::kSuccess;
}

HStatus HDagPath::pop(unsigned count) {
    NodePtr node = HApiAccess::node(*this);
    if (!node)
        return invalidPath();
    runtime::Node* at = node.get();
    for (unsigned i = 0; i < count && at; ++i)
        at = at->parent();
    if (!at)
        return runtime::invalidParameter("The path is not that long.");
    m_node = HApiAccess::object(at->shared_from_this());
    return HS::kSuccess;
}

HStatus HDagPath::push(const HObject& child) {
    NodePtr node = HApiAccess::node(*this);
    NodePtr below = HApiAccess::node(child);
    if (!node || !below || below->parent() != node.get())
        return runtime::invalidParameter("The object is not a child of the path's node.");
    m_node = child;
    return HS::kSuccess;
}

unsigned HDagPath::length(HStatus* status) const {
    NodePtr node = HApiAccess::node(*this);
    report(status, node ? HStatus() : invalidPath());
    return node ? static_cast<unsigned>(node->pathFromWorld().size()) : 0u;
}

unsigned HDagPath::childCount(HStatus* status) const {
    NodePtr node = HApiAccess::node(*this);
    report(status, node ? HStatus() : invalidPath());
    return node ? static_cast<unsigned>(node->children().size()) : 0u;
}

HObject HDagPath::child(unsigned i, HStatus* status) const {
    NodePtr node = HApiAccess::node(*this);
    if (!node || i >= node->children().size()) {
        report(status, runtime::invalidParameter("No such child."));
        return HObject();
    }
    report(status, HS::kSuccess);
    return HApiAccess::object(node->children()[i]);
}

bool HDagPath::isValid(HStatus* status) const {
    report(status, HS::kSuccess);
    return HApiAccess::node(*this) != nullptr;
}

HFn::Type HDagPath::apiType(HStatus* status) const {
    report(status, isValid() ? HStatus() : invalidPath());
    return m_node.apiType();
}

bool HDagPath::hasFn(HFn::Type type, HStatus* status) const {
    report(status, isValid() ? HStatus() : invalidPath());
    return m_node.hasFn(type);
}

bool HDagPath::operator==(const HDagPath& other) const {
    return m_node == other.m_node;
}

bool HDagPath::operator!=(const HDagPath& other) const {
    return !(*this == other);
}
