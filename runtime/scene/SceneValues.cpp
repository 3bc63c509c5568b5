// Scene: dynamic attributes and attribute values.
#include "api/StatusReport.h"
#include "scene/Scene.h"

#include <algorithm>

namespace runtime {

namespace {

bool touches(const Connection& connection, const Node& node, const AttributeDef* root) {
    auto on = [&](const Plug& plug) {
        return plug.node().get() == &node && plug.attribute()->root() == root;
    };
    return on(connection.source) || on(connection.destination);
}

} // namespace

HStatus Scene::addAttribute(Node& node, const AttributePtr& attribute) {
    if (!node.isAlive())
        return invalidParameter("The node was deleted.");
    if (!attribute)
        return invalidParameter("No attribute to add.");
    if (attribute->parentInTree())
        return invalidParameter("Attribute " + attribute->longName() +
                                " is a child; add its top-level compound instead.");
    if (attribute->kind() == AttributeKind::kGeometry)
        return invalidParameter("Geometry attributes cannot be added.");
    std::string clash;
    attribute->forEachInTree([&](const AttributeDef& def) {
        for (const std::string* name : {&def.longName(), &def.shortName()})
            if (clash.empty() && (!AttributeDef::isValidName(*name) || node.findAttribute(*name)))
                clash = *name;
    });
    if (!clash.empty())
        return invalidParameter("Attribute name " + clash + " is invalid or already used on " +
                                node.name() + ".");
    attribute->freeze();
    node.m_dynamic.push_back(attribute);
    attribute->forEachInTree([&](const AttributeDef& def) {
        node.m_dynamicByName.emplace(def.longName(), &def);
        node.m_dynamicByName.emplace(def.shortName(), &def);
    });
    notify({SceneChange::kAttributesChanged, {node.shared_from_this()}, Plug()});
    return HS::kSuccess;
}

std::shared_ptr<RemovedAttribute> Scene::removeAttribute(Node& node, const AttributeDef* attribute,
                                                         HStatus* status) {
    auto it = std::find_if(node.m_dynamic.begin(), node.m_dynamic.end(),
                           [&](const AttributePtr& def) { return def.get() == attribute; });
    if (!node.isAlive() || it == node.m_dynamic.end()) {
        if (status)
            *status = invalidParameter(
                "Only a dynamic top-level attribute of a live node can be removed.");
        return nullptr;
    }
    auto record = std::make_shared<RemovedAttribute>();
    record->m_node = node.shared_from_this();
    record->m_attribute = *it;
    record->m_position = static_cast<size_t>(it - node.m_dynamic.begin());
    for (const ConnectionPtr& connection : node.m_connections)
        if (touches(*connection, node, attribute))
            record->m_connections.push_back(connection);
    for (const ConnectionPtr& connection : record->m_connections)
        detachConnection(connection);
    auto values = node.m_values.find(attribute);
    if (values != node.m_values.end()) {
        record->m_hadValues = true;
        record->m_values = std::move(values->second);
        node.m_values.erase(values);
    }
    attribute->forEachInTree([&](const AttributeDef& def) {
        node.m_dynamicByName.erase(def.longName());
        node.m_dynamicByName.erase(def.shortName());
    });
    node.m_dynamic.erase(it);
    if (status)
        *status = HS::kSuccess;
    notify({SceneChange::kAttributesChanged, {record->m_node}, Plug()});
    return record;
}

HStatus Scene::restoreAttribute(const RemovedAttribute& record) {
    Node& node = *record.m_node;
    if (node.isDynamic(record.m_attribute.get()))
        return invalidParameter("Attribute " + record.m_attribute->longName() +
                                " is already on the node.");
    HStatus status = addAttribute(node, record.m_attribute);
    if (!status)
        return status;
    // Back to its old place among the dynamic attributes.
    node.m_dynamic.pop_back();
    size_t position = std::min(record.m_position, node.m_dynamic.size());
    node.m_dynamic.insert(node.m_dynamic.begin() + static_cast<std::ptrdiff_t>(position),
                          record.m_attribute);
    if (record.m_hadValues)
        node.m_values[record.m_attribute.get()] = record.m_values;
    for (const ConnectionPtr& connection : record.m_connections) {
        bool endsAlive =
            connection->source.node()->isAlive() && connection->destination.node()->isAlive();
        if (endsAlive && connectedPlugs(connection->destination, true, false).empty())
            attachConnection(connection);
    }
    return HS::kSuccess;
}

HStatus Scene::setValue(const Plug& plug, const Value& value) {
    Value converted;
    HStatus status = plug.checkWritable(value, &converted);
    if (!status)
        return status;
    plug.storedTreeForWrite()->setValue(std::move(converted));
    notify({SceneChange::kValueChanged, {plug.node()}, plug});
    return HS::kSuccess;
}

ValueSnapshot Scene::snapshot(const Plug& plug) const {
    ValueSnapshot result;
    result.plug = plug;
    if (const ValueTree* tree = plug.storedTree()) {
        result.existed = true;
        result.values = *tree;
    }
    return result;
}

HStatus Scene::restoreSnapshot(const ValueSnapshot& snapshot) {
    const Plug& plug = snapshot.plug;
    if (plug.isNull() || !plug.isResolved())
        return invalidParameter("The plug is null, unresolved, or its node was deleted.");
    if (snapshot.existed) {
        *plug.storedTreeForWrite() = snapshot.values;
    } else if (plug.isElement()) {
        if (ValueTree* array = plug.array().storedTreeForWrite())
            array->removeElement(plug.logicalIndex());
    } else if (!plug.isChild()) {
        plug.node()->m_values.erase(plug.attribute());
    } else if (ValueTree* tree = plug.storedTreeForWrite()) {
        *tree = ValueTree();
    }
    notify({SceneChange::kValueChanged, {plug.node()}, plug});
    return HS::kSuccess;
}

} // namespace runtime
