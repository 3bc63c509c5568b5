#include "document/SceneOrigins.h"

#include "scene/Node.h"

namespace runtime {

void SceneOrigins::setDescription(const SceneDescription& description) {
    outline.nodes = description.nodes;
    outline.source = description.source;
    outline.meshes.clear();
    for (const SceneMesh& mesh : description.meshes)
        outline.meshes.push_back({mesh.name, {}, {}, {}, mesh.sourceIndex});
    outline.skins.clear();
    for (const SceneSkin& skin : description.skins)
        outline.skins.push_back({skin.meshNode,
                                 skin.joints,
                                 skin.inverseBindMatrices,
                                 {},
                                 skin.locks,
                                 skin.sourceIndex});
}

void SceneOrigins::add(const Node& node, int index) {
    m_origins[&node] = {node.shared_from_this(), {index, node.name()}};
}

const NodeOrigin* SceneOrigins::find(const Node& node) const {
    auto found = m_origins.find(&node);
    if (found == m_origins.end() || found->second.node.lock().get() != &node)
        return nullptr;
    return &found->second.origin;
}

} // namespace runtime
