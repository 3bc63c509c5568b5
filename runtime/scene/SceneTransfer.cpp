// Scene: building in a staging scene and moving what was built into the scene.
#include "scene/Scene.h"

#include <algorithm>

namespace runtime {

std::unique_ptr<Scene> Scene::makeStaging() const {
    auto staging = std::make_unique<Scene>();
    // Shared types keep the static attribute definitions the same objects in both scenes.
    staging->m_types = m_types;
    staging->m_nextSerial = m_nextSerial;
    return staging;
}

std::vector<NodePtr> Scene::releaseNodes(Scene& staging) {
    std::vector<NodePtr> nodes = staging.nodesParentsFirst();
    staging.m_nodes.clear();
    staging.m_topLevel.clear();
    staging.m_byName.clear();
    return nodes;
}

void Scene::replaceWith(Scene& staging) {
    clearAll();
    m_nextSerial = std::max(m_nextSerial, staging.m_nextSerial);
    m_topLevel = staging.m_topLevel;
    std::vector<NodePtr> nodes = releaseNodes(staging);
    for (const NodePtr& node : nodes) {
        m_nodes.emplace(node->serial(), node);
        indexNode(*node);
    }
    notify({SceneChange::kSceneReset, {}, Plug()});
    if (!nodes.empty())
        notify({SceneChange::kNodesAdded, nodes, Plug()});
    m_modified = false;
}

std::vector<NodePtr> Scene::takeNodes(Scene& staging) {
    std::vector<NodePtr> nodes = releaseNodes(staging);
    // Parents come first, so a node's parent is already here when its name is checked; its
    // siblings from the staging scene are then the only ones that can share its name.
    for (const NodePtr& node : nodes) {
        node->m_serial = m_nextSerial++;
        node->m_name = uniqueName(node->m_name, node.get(), node->isDag(), node->m_parent);
        m_nodes.emplace(node->serial(), node);
        indexNode(*node);
        if (node->isDag() && !node->m_parent)
            m_topLevel.push_back(node);
    }
    if (!nodes.empty())
        notify({SceneChange::kNodesAdded, nodes, Plug()});
    return nodes;
}

} // namespace runtime
