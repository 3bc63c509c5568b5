// buildScene: a file's scene description made into host nodes, in a scene of the caller's:
// a staging scene (Scene::makeStaging()) that becomes the open scene or is added to it only
// once everything was built.
//
// Each node of the description becomes a joint (when the file makes it a skin's joint) or a
// transform, with its name made legal (empty names get the type's default) and its transform
// as translate, rotate and scale; joints get their lockInfluenceWeights and, so that the weight
// editor's column colours tell them apart, useObjectColor on and objectColor cycling over the
// palette. A node's mesh becomes a mesh shape NAME + "Shape" under it, vertex order kept
// (polygons of fewer than three corners are left out, with a warning). Each skin becomes a skin
// cluster wired as the host wires every cluster (createSkinCluster), its influences in the
// file's order, its bind pre-matrices from the inverse bind matrices, the weights exactly as
// read (whatever they sum to), and the weight editor's locks in their attributes
// (SkinLockAttributes.h).
//
// A description that is inconsistent, or that the scene refuses, fails with a message naming
// the file; cancelling through the reporter gives a cancelled result. Either way what was built
// is left in `target` for the caller to drop. With `origins`, every node made is recorded there
// (SceneOrigins.h).
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"
#include "files/SceneDescription.h"

#include <string>

namespace runtime {

class Scene;
class SceneOrigins;

FileResult buildScene(const SceneDescription& description, Scene& target, const std::string& path,
                      ProgressReporter& reporter, SceneOrigins* origins = nullptr);

} // namespace runtime
