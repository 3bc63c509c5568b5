// describeScene: the live scene as a file description, for the formats that write descriptions
// (glTF).
//
// Transforms and joints become nodes (parents first, siblings in order); a mesh shape becomes
// its transform's mesh (a transform's further mesh shapes become child nodes of their own);
// skin clusters become skins with their influences in order, inverse bind matrices from the bind
// pre-matrices and the geometry matrix, every stored weight, and the weight editor's locks.
// Influences that were deleted are left out with their weights. Nodes of other kinds (sets and
// group ids of skin clusters aside) have no place in a description and are left out with a
// warning.
//
// With `origins` (a scene opened from a file that keeps its source), whatever still is as it
// was read is described exactly as the file had it: names the user did not change, transforms
// and bind matrices that differ only by rounding, and the elements' source indices, so that the
// writer changes only what the user changed.
#pragma once

#include "files/SceneDescription.h"

#include <string>
#include <vector>

namespace runtime {

class Scene;
class SceneOrigins;

SceneDescription describeScene(const Scene& scene, const SceneOrigins* origins,
                               std::vector<std::string>& warnings);

} // namespace runtime
