// Scene: connections between plugs.
#include "api/StatusReport.h"
#include "scene/Scene.h"

#include <algorithm>

namespace runtime {

namespace {

bool kindsFit(const AttributeDef& source, const AttributeDef& destination) {
    if (destination.kind() == AttributeKind::kMessage)
        return true;
    if (source.kind() != destination.kind())
        return false;
    switch (source.kind()) {
    case AttributeKind::kNumeric:
    case AttributeKind::kGeometry:
        return true;
    case AttributeKind::kTyped:
        return source.valueType() == destination.valueType();
    case AttributeKind::kCompound:
        return source.childCount() == destination.childCount();
    case AttributeKind::kMessage:
        break;
    }
    return false;
}

HStatus checkEnd(const Plug& plug, const char* role) {
    if (plug.isNull())
        return invalidParameter(std::string("The ") + role +
                                " plug is null or its node was deleted.");
    if (!plug.isResolved() || plug.isArray())
        return invalidParameter("Connect an element of " + plug.name() + ", not the whole array.");
    return HS::kSuccess;
}

} // namespace

HStatus Scene::connect(const Plug& source, const Plug& destination, bool replace,
                       ConnectionPtr* replaced) {
    HStatus status = checkEnd(source, "source");
    if (status)
        status = checkEnd(destination, "destination");
    if (!status)
        return status;
    if (source == destination)
        return invalidParameter("A plug cannot be connected to itself.");
    if (!kindsFit(*source.attribute(), *destination.attribute()))
        return invalidParameter("The kinds of " + source.name() + " and " + destination.name() +
                                " do not fit.");
    ConnectionPtr existing;
    for (const ConnectionPtr& connection : destination.node()->m_connections)
        if (connection->destination == destination)
            existing = connection;
    if (existing && existing->source == source)
        return invalidParameter(source.name() + " is already connected to " + destination.name() +
                                ".");
    if (existing && !replace)
        return invalidParameter(destination.name() + " already has an incoming connection from " +
                                existing->source.name() + ".");
    if (existing)
        detachConnection(existing);
    if (replaced)
        *replaced = existing;
    source.storedTreeForWrite();
    destination.storedTreeForWrite();
    auto connection = std::make_shared<const Connection>(Connection{source, destination});
    attachConnection(connection);
    notify({SceneChange::kConnectionsChanged, {source.node(), destination.node()}, Plug()});
    return HS::kSuccess;
}

HStatus Scene::disconnect(const Plug& source, const Plug& destination) {
    if (destination.isNull() || source.isNull())
        return invalidParameter("The plug is null or its node was deleted.");
    for (const ConnectionPtr& connection : destination.node()->m_connections) {
        if (connection->source == source && connection->destination == destination) {
            ConnectionPtr keep = connection;
            detachConnection(keep);
            notify({SceneChange::kConnectionsChanged, {source.node(), destination.node()}, Plug()});
            return HS::kSuccess;
        }
    }
    return invalidParameter(source.name() + " is not connected to " + destination.name() + ".");
}

std::vector<Plug> Scene::connectedPlugs(const Plug& plug, bool asDestination, bool asSource) const {
    std::vector<Plug> found;
    if (plug.isNull())
        return found;
    for (const ConnectionPtr& connection : plug.node()->m_connections) {
        if (asDestination && connection->destination == plug)
            found.push_back(connection->source);
        if (asSource && connection->source == plug)
            found.push_back(connection->destination);
    }
    return found;
}

std::vector<ConnectionPtr> Scene::connections() const {
    std::vector<ConnectionPtr> all;
    for (const auto& entry : m_nodes)
        for (const ConnectionPtr& connection : entry.second->m_connections)
            if (connection->source.node() == entry.second)
                all.push_back(connection);
    return all;
}

void Scene::attachConnection(const ConnectionPtr& connection) {
    connection->source.node()->m_connections.push_back(connection);
    if (connection->destination.node() != connection->source.node())
        connection->destination.node()->m_connections.push_back(connection);
}

void Scene::detachConnection(const ConnectionPtr& connection) {
    for (Node* node : {connection->source.node().get(), connection->destination.node().get()}) {
        auto& list = node->m_connections;
        list.erase(std::remove(list.begin(), list.end(), connection), list.end());
    }
}

} // namespace runtime
