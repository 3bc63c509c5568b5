// SkinLinks: how a skin cluster is tied to the nodes around it, read from the connections:
// its geometry (outputGeometry[0] -> the mesh's inMesh), its set (message -> set.usedBy[n])
// and the set's group id (groupId.message -> set.groupNodes[n]), and back from a mesh to its
// skin cluster. Every function returns null when the link is missing or its node is gone.
#pragma once

#include "scene/Node.h"

namespace runtime {

// The mesh shape the cluster deforms.
NodePtr skinClusterGeometry(const Node& cluster);
// The skin cluster whose output feeds the mesh.
NodePtr skinClusterOfGeometry(const Node& mesh);
// The objectSet that the cluster uses (the first one when there are several).
NodePtr skinClusterSet(const Node& cluster);
// The groupId node of a set.
NodePtr setGroupId(const Node& set);

// The sources of plugs on node whose attribute has the given long name (any element), or the
// destinations when asSource: the connection ends on the other side.
std::vector<Plug> linkedPlugs(const Node& node, const std::string& attributeName, bool asSource);

} // namespace runtime
