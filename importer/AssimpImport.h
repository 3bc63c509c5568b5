// importWithAssimp: FBX, COLLADA, DirectX X, IQM, SMD, MS3D, B3D and Blender files into a scene
// description, through the Open Asset Import Library. Read only. The importer program runs it;
// the host itself never does (files/ImportHelper.h).
//
// The library's node hierarchy becomes the description's nodes (transforms as matrices); the
// meshes a node holds become one mesh (their vertices one after the other; vertices the library
// finds identical are joined, since the host skins positions, not UVs or normals); bones become
// joints, each node once, so meshes that share a skeleton share joints; bone weights become the
// skin's weights as the file has them, even when a vertex's weights do not sum to one; a bone's
// offset matrix becomes its inverse bind matrix. The description has no `source`: written as
// glTF it becomes a fresh document.
//
// The file is untrusted: whatever the library refuses, and whatever it returns that is out of
// range or out of proportion, fails with a message naming the file; `scene` is then untouched.
// Running out of memory, in the library or in the conversion, throws std::bad_alloc: the
// importer program ends on it.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"
#include "files/SceneDescription.h"

#include <string>

namespace runtime {

FileResult importWithAssimp(const std::string& path, SceneDescription& scene,
                            ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
