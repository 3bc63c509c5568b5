// normalisationGuard: keeps a skin cluster's "normalizeWeights" at 1 (interactive) for the
// life of the object, so that a weight write leaves the vertex summing to one. A cluster set
// to 0 (none) is raised to 1 and put back to 0 when the guard goes; any other mode is left
// alone. The guard owns nothing; a cluster without the attribute is left as it is.
#pragma once

#include "HFnDependencyNode.h"
#include "HObject.h"
#include "HPlug.h"

class normalisationGuard {
public:
    explicit normalisationGuard(const HObject& skinCluster)
        : plug(HFnDependencyNode(skinCluster).findPlug("normalizeWeights", true)) {
        int mode = 1;
        raised = plug.getValue(mode) && mode == 0;
        if (raised)
            plug.setInt(1);
    }
    ~normalisationGuard() {
        if (raised)
            plug.setInt(0);
    }
    normalisationGuard(const normalisationGuard&) = delete;
    normalisationGuard& operator=(const normalisationGuard&) = delete;

private:
    HPlug plug;
    bool raised = false;
};
