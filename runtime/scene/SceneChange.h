// SceneChange: the coarse notice the Scene sends to its listeners (outliner, viewport, the
// selection) after every change, so they can update without knowing who changed what.
//
// Listeners run synchronously, in the order they were added, after the change is complete.
// They may read the scene but must not change it. A notice names the nodes involved; for a
// value change also the plug written; for a weight change of a skin cluster also, when the
// writer knows them, the vertices it changed, so that a display can update only those.
#pragma once

#include "scene/Node.h"
#include "scene/Plug.h"

#include <memory>
#include <vector>

namespace runtime {

struct SceneChange {
    enum Kind {
        kNodesAdded,   // created or restored
        kNodesRemoved, // deleted (nodes are no longer alive)
        kNodeRenamed,
        kNodeReparented,
        kAttributesChanged, // dynamic attributes added or removed
        kValueChanged,      // plug holds the place written
        kConnectionsChanged,
        kGeometryChanged, // mesh points or polygons
        kWeightsChanged,  // skin cluster weights or influences
        kSceneReset,      // everything is gone; no nodes are named
    };

    using VertexList = std::shared_ptr<const std::vector<unsigned>>;

    SceneChange(Kind kind, std::vector<NodePtr> nodes, Plug plug = Plug(),
                VertexList vertices = nullptr)
        : kind(kind), nodes(std::move(nodes)), plug(std::move(plug)),
          vertices(std::move(vertices)) {}
    static SceneChange weightsChanged(NodePtr cluster, VertexList vertices) {
        return SceneChange(kWeightsChanged, {std::move(cluster)}, Plug(), std::move(vertices));
    }

    Kind kind;
    std::vector<NodePtr> nodes;
    Plug plug;
    // kWeightsChanged: the vertices whose weights changed (possibly with repeats); null when
    // any vertex may have changed, or the influences did.
    VertexList vertices;
};

} // namespace runtime
