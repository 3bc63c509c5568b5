#include "commands/WeightTargets.h"

#include "commands/CommandSupport.h"
#include "scene/Scene.h"
#include "scene/SelectionItems.h"
#include "scene/SkinBinding.h"
#include "scene/SkinLinks.h"

#include <algorithm>

namespace runtime {

namespace {

// The cluster an item names, with the item's vertices added to `vertices` (every vertex: null).
NodePtr clusterOfItem(const char* command, const std::string& text, const SelectionItem& item,
                      std::shared_ptr<std::vector<int>>& vertices, HStatus& status) {
    NodePtr node = itemNode(item);
    NodePtr mesh = node ? meshShapeOf(*node) : nullptr;
    NodePtr cluster = node && node->hasFn(HFn::kSkinClusterFilter) ? node
                      : mesh                                       ? skinClusterOfGeometry(*mesh)
                                                                   : nullptr;
    if (!cluster || !skinClusterGeometry(*cluster)) {
        status = reportFailure(command, text + " is not a skin cluster or a skinned mesh.");
        return nullptr;
    }
    if (!itemComponent(item)) {
        vertices.reset();
    } else if (vertices) {
        for (unsigned vertex : verticesOn({item}, *mesh))
            vertices->push_back(static_cast<int>(vertex));
    }
    return cluster;
}

} // namespace

HStatus weightTargets(const char* command, const HStringArray& texts,
                      std::vector<WeightTarget>& targets) {
    Scene& scene = runtime::scene();
    targets.clear();
    if (texts.length() == 0) {
        for (const NodePtr& node : scene.nodes())
            if (node->hasFn(HFn::kSkinClusterFilter) && skinClusterGeometry(*node))
                targets.push_back({node, nullptr});
        if (targets.empty())
            return reportFailure(command, "The scene has no skinned meshes.");
        return HS::kSuccess;
    }
    for (const HString& text : texts) {
        SelectionItems items;
        HStatus status = itemsFromText(scene, text.str(), false, items);
        if (!status)
            return reportFailure(command, status);
        for (const SelectionItem& item : items) {
            auto vertices = std::make_shared<std::vector<int>>();
            NodePtr cluster = clusterOfItem(command, text.str(), item, vertices, status);
            if (!cluster)
                return status;
            auto known = std::find_if(targets.begin(), targets.end(),
                                      [&](const WeightTarget& t) { return t.cluster == cluster; });
            if (known == targets.end()) {
                targets.push_back({cluster, vertices});
            } else if (!vertices) {
                known->vertices.reset();
            } else if (known->vertices) {
                known->vertices->insert(known->vertices->end(), vertices->begin(), vertices->end());
            }
        }
    }
    for (WeightTarget& target : targets) {
        if (!target.vertices)
            continue;
        std::sort(target.vertices->begin(), target.vertices->end());
        target.vertices->erase(std::unique(target.vertices->begin(), target.vertices->end()),
                               target.vertices->end());
    }
    return HS::kSuccess;
}

} // namespace runtime
