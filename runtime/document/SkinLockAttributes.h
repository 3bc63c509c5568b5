// SkinLockAttributes: the weight editor's locks as they live on a skin cluster node, so that file
// formats can put them there and read them back.
//
// The editor stores three dynamic attributes on every skin cluster it loads:
//   "lockedJointNames"     string array, no default: full path names of locked influences
//   "lockedVertexIndices"  bool array, default false: element v on = vertex v is locked
//   "lockedCellIndices"    compound array by vertex, with the child "lockedLocalJoints", a
//                          string array attribute: the influences locked on that vertex only
// Each has the same long and short name. The definitions made here are the editor's, so that a
// cluster prepared by a file reader is one the editor recognises without adding anything.
//
// writeSkinLocks() adds whichever attributes the node lacks and stores the locks; it fails, with
// the scene's message, when the node has an attribute of one of these names of another kind.
// readSkinLocks() reads what is stored and ignores attributes of another kind.
#pragma once

#include "HStatus.h"
#include "files/SceneDescription.h"
#include "scene/AttributeDef.h"

#include <map>
#include <string>

namespace runtime {

class Node;
class Scene;

AttributePtr lockedJointNamesAttribute();
AttributePtr lockedVertexIndicesAttribute();
AttributePtr lockedCellIndicesAttribute();

HStatus writeSkinLocks(Scene& scene, Node& cluster, const SkinLocks& locks);
SkinLocks readSkinLocks(const Node& cluster);

// Replaces, in the stored lock names of the cluster, every full path name that `renamed` maps to
// a new one (the influences' paths changed after the locks were written).
HStatus renameLockedPaths(Scene& scene, Node& cluster,
                          const std::map<std::string, std::string>& renamed);

} // namespace runtime
