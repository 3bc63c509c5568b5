// SceneOrigins: where the nodes of an opened scene came from in the file description they were
// built from, so that saving back in that format changes only what the user changed.
//
// The builder (SceneBuilding.h) records, for each node it makes from the description, the index
// of what it was made from (a node of the description for transforms and joints, a mesh for mesh
// shapes, a skin for skin clusters) and the name the node was given. The describer
// (SceneDescribing.h) finds them again and takes unchanged parts as the description had them.
// Only descriptions that keep their source document need this: their outline (the description
// without points, polygons and weights, which the writer compares against its own copy) and
// their `source` stay here as long as the scene is open.
//
// Records refer to nodes weakly: a node that is gone, or a different node at the same address,
// has no origin.
#pragma once

#include "files/SceneDescription.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace runtime {

class Node;

struct NodeOrigin {
    int index = -1;
    std::string givenName;
};

class SceneOrigins {
public:
    // The description the scene was built from without its bulk data, with its source.
    SceneDescription outline;

    // Keeps the outline of `description`.
    void setDescription(const SceneDescription& description);

    void add(const Node& node, int index);
    const NodeOrigin* find(const Node& node) const;
    bool empty() const { return m_origins.empty(); }

private:
    struct Entry {
        std::weak_ptr<const Node> node;
        NodeOrigin origin;
    };
    std::unordered_map<const Node*, Entry> m_origins;
};

} // namespace runtime
