#include "HFnDagNode.h"

#include "api/HApiAccess.h"
#include "api/StatusReport.h"
#include "scene/JointColors.h"
#include "scene/Scene.h"

using runtime::NodePtr;
using runtime::report;

HFnDagNode::HFnDagNode() = default;

HFnDagNode::HFnDagNode(const HObject& node, HStatus* status) {
    report(status, setObject(node));
}

HFnDagNode::HFnDagNode(const HDagPath& path, HStatus* status) {
    report(status, setObject(path));
}

HFn::Type HFnDagNode::type() const {
    return HFn::kDagNode;
}

HStatus HFnDagNode::setObject(const HObject& node) {
    return attach(node, HFn::kDagNode);
}

HStatus HFnDagNode::setObject(const HDagPath& path) {
    return attach(path.node(), HFn::kDagNode);
}

HString HFnDagNode::fullPathName(HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node ? HString(node->fullPathName()) : HString();
}

HString HFnDagNode::partialPathName(HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node ? HString(runtime::scene().partialPathName(*node)) : HString();
}

HStatus HFnDagNode::getPath(HDagPath& path) const {
    HStatus status = checkAttached();
    path = status ? HApiAccess::path(HApiAccess::node(m_object)) : HDagPath();
    return status;
}

HDagPath HFnDagNode::dagPath(HStatus* status) const {
    HDagPath path;
    report(status, getPath(path));
    return path;
}

unsigned HFnDagNode::parentCount(HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node && node->parent() ? 1u : 0u;
}

HObject HFnDagNode::parent(unsigned i, HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    if (!node || i != 0 || !node->parent()) {
        report(status, node ? runtime::invalidParameter("No such parent.") : checkAttached());
        return HObject();
    }
    report(status, HS::kSuccess);
    return HApiAccess::object(node->parent()->shared_from_this());
}

unsigned HFnDagNode::childCount(HStatus* status) const {
    return dagPath().childCount(status);
}

HObject HFnDagNode::child(unsigned i, HStatus* status) const {
    return dagPath().child(i, status);
}

HColor HFnDagNode::dormantColor(HStatus* status) const {
    NodePtr node = HApiAccess::node(m_object);
    report(status, checkAttached());
    return node ? runtime::dormantColor(*node) : HColor();
}
