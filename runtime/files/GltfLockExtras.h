// The weight editor's locks in glTF "extras": the layout the glTF writer writes and the reader
// reads back.
//
//   skins[s].extras.skinClusterLocks = [            one entry per skinned node with locks
//     { "node": 4,                                 the node the skin deforms
//       "lockedJointNames": ["|root|hip"],         locked influences, full path names
//       "lockedVertexIndices": [3, 17],            locked vertices
//       "lockedCellIndices": [                     locked cells, by vertex
//         { "vertex": 5, "lockedLocalJoints": ["|root|hip|knee"] } ] } ]
//   nodes[j].extras.lockInfluenceWeights = true    on joints whose own lock is on
//
// Lists that are empty are left out; a key that is absent means no locks. Vertex indices count
// the vertices of the node's whole mesh, its primitives one after the other. Other keys of the
// extras objects belong to others and are kept.
#pragma once

#include "files/SceneDescription.h"

#include <nlohmann/json.hpp>
#include <string>

namespace runtime {

constexpr const char* kSkinLocksKey = "skinClusterLocks";
constexpr const char* kJointLockKey = "lockInfluenceWeights";

nlohmann::ordered_json skinLocksToJson(int node, const SkinLocks& locks);

// Reads the locks stored for `node` in a glTF skin object. No entry for the node gives empty
// locks; an entry that is malformed or names vertices beyond `vertexCount` fails with a problem.
bool skinLocksFromSkin(const nlohmann::ordered_json& skin, int node, int vertexCount,
                       SkinLocks& locks, std::string& problem);

// Whether a glTF node object carries the joint lock.
bool jointLockOfNode(const nlohmann::ordered_json& node);

} // namespace runtime
