// SceneChange: the coarse notice the Scene sends to its listeners (outliner, viewport, the
// selection) after every change, so they can update without knowing who changed what.
//
// Listeners run synchronously, in the order they were added, after the change is complete.
// They may read the scene but must not change it. A notice names the nodes involved; for a
// value change also the plug written.
#pragma once

#include "scene/Node.h"
#include "scene/Plug.h"

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

    Kind kind;
    std::vector<NodePtr> nodes;
    Plug plug;
};

} // namespace runtime
