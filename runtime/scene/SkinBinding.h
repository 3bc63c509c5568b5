// SkinBinding: makes skin clusters. A new cluster NAME comes with its objectSet NAME + "Set"
// and its groupId NAME + "GroupId", wired to the mesh so that walking the mesh's
// instObjGroups finds it:
//   set.memberWireframeColor  -> mesh.instObjGroups[0].objectGroups[g].objectGrpColor
//   mesh.instObjGroups[0].objectGroups[g] -> set.dagSetMembers[n]
//   groupId.groupId           -> mesh.instObjGroups[0].objectGroups[g].objectGroupId
//   groupId.message           -> set.groupNodes[n]
//   cluster.message           -> set.usedBy[0]
//   cluster.outputGeometry[0] -> mesh.inMesh
// The joints' current world matrices become the bind pose (their inverses the bind-pre
// matrices) and the mesh's world matrix the geometry matrix.
//
// Fails, creating nothing, when the geometry is not a mesh (or a transform with one mesh
// shape), the mesh already has a skin cluster, a joint is not a live transform or is listed
// twice, there are no joints, or the name is invalid.
#pragma once

#include "HStatus.h"
#include "scene/Node.h"
#include "scene/SkinWeights.h"

#include <string>
#include <vector>

namespace runtime {

class Scene;

struct BindOptions {
    // Empty: "skinCluster1" (or the next free number).
    std::string name;
    // Most weights a vertex gets (at least 1).
    unsigned maxInfluences = 5;
    // How fast a joint's weight falls off with distance: weight ~ 1 / distance^dropoffRate.
    double dropoffRate = 4.0;
};

// Binds with weights falling off with each vertex's distance to each joint: the
// maxInfluences nearest joints share each vertex, normalised to 1.
NodePtr bindSkin(Scene& scene, const std::vector<NodePtr>& joints, Node& geometry,
                 const BindOptions& options, HStatus* status = nullptr);

// Binds with the given weights (one vertex per mesh vertex, influence indices in the order of
// joints), for file readers and tests.
NodePtr createSkinCluster(Scene& scene, const std::vector<NodePtr>& joints, Node& geometry,
                          SkinWeights weights, const std::string& name = std::string(),
                          HStatus* status = nullptr);

// The mesh shape of geometry: itself, or a transform's only mesh shape; null otherwise.
NodePtr meshShapeOf(const Node& geometry);

} // namespace runtime
