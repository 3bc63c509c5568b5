// Scene: deleting nodes and bringing them back.
#include "scene/Scene.h"
#include "scene/SkinLinks.h"

#include <algorithm>
#include <set>

namespace runtime {

std::vector<NodePtr> Scene::expandDeletion(const std::vector<NodePtr>& nodes) const {
    std::vector<NodePtr> result;
    std::set<const Node*> seen;
    std::vector<NodePtr> pending(nodes.rbegin(), nodes.rend());
    auto push = [&](const NodePtr& node) {
        if (node && node->isAlive() && !seen.count(node.get()))
            pending.push_back(node);
    };
    while (!pending.empty()) {
        NodePtr node = pending.back();
        pending.pop_back();
        if (!node || !node->isAlive() || !seen.insert(node.get()).second)
            continue;
        result.push_back(node);
        for (auto it = node->children().rbegin(); it != node->children().rend(); ++it)
            push(*it);
        if (node->hasFn(HFn::kMesh))
            push(skinClusterOfGeometry(*node));
        if (node->hasFn(HFn::kSkinClusterFilter)) {
            NodePtr set = skinClusterSet(*node);
            push(set);
            if (set)
                push(setGroupId(*set));
        }
    }
    return result;
}

std::shared_ptr<DeletedNodes> Scene::deleteNodes(const std::vector<NodePtr>& nodes,
                                                 HStatus* status) {
    auto record = std::make_shared<DeletedNodes>();
    record->m_nodes = expandDeletion(nodes);
    std::set<const Node*> deleting;
    for (const NodePtr& node : record->m_nodes)
        deleting.insert(node.get());

    std::set<const Connection*> taken;
    for (const NodePtr& node : record->m_nodes)
        for (const ConnectionPtr& connection : node->m_connections)
            if (taken.insert(connection.get()).second)
                record->m_connections.push_back(connection);
    for (const ConnectionPtr& connection : record->m_connections)
        detachConnection(connection);

    for (const NodePtr& node : record->m_nodes) {
        if (node->isDag() && !(node->m_parent && deleting.count(node->m_parent))) {
            NodePtr parent = node->m_parent ? node->m_parent->shared_from_this() : nullptr;
            record->m_placements.push_back({node, parent, childPosition(*node)});
            removeChild(*node);
        }
    }
    for (const NodePtr& node : record->m_nodes) {
        unindexNode(*node);
        m_nodes.erase(node->serial());
        node->m_alive = false;
    }
    if (status)
        *status = HS::kSuccess;
    if (!record->m_nodes.empty())
        notify({SceneChange::kNodesRemoved, record->m_nodes, Plug()});
    return record;
}

HStatus Scene::restore(const DeletedNodes& record) {
    for (const NodePtr& node : record.m_nodes)
        if (node->isAlive())
            return HStatus(HS::kInvalidParameter, node->name() + " is not deleted.");
    for (const DeletedNodes::Placement& placement : record.m_placements)
        if (placement.parent && !placement.parent->isAlive() &&
            std::find(record.m_nodes.begin(), record.m_nodes.end(), placement.parent) ==
                record.m_nodes.end())
            return HStatus(HS::kInvalidParameter,
                           "The parent of " + placement.node->name() + " is gone.");

    for (const NodePtr& node : record.m_nodes) {
        node->m_alive = true;
        m_nodes.emplace(node->serial(), node);
    }
    for (auto it = record.m_placements.rbegin(); it != record.m_placements.rend(); ++it) {
        it->node->m_parent = nullptr;
        insertChild(it->parent.get(), it->node, it->position);
    }
    for (const NodePtr& node : record.m_nodes) {
        node->m_name = uniqueName(node->m_name, node.get(), node->isDag(), node->m_parent);
        indexNode(*node);
    }
    for (const ConnectionPtr& connection : record.m_connections) {
        bool endsAlive =
            connection->source.node()->isAlive() && connection->destination.node()->isAlive();
        if (endsAlive && connectedPlugs(connection->destination, true, false).empty())
            attachConnection(connection);
    }
    notify({SceneChange::kNodesAdded, record.m_nodes, Plug()});
    return HS::kSuccess;
}

} // namespace runtime
