// readGltf: a glTF 2.0 file into a scene description.
//
// Reads .gltf files (buffers embedded as data URIs or in files beside them) and .glb files. The
// scene read is the document's default scene (its first when none is named; every root node when
// it has no scenes). Meshes keep their vertex order, a mesh's primitives one after the other;
// skins become one SceneSkin per skinned node, with every JOINTS_n / WEIGHTS_n set as stored,
// whether or not a vertex's weights sum to one; the locks come from the extras (GltfLockExtras.h).
// The description's `source` is a GltfSource, so that writing it back keeps the rest.
//
// The file is untrusted: anything malformed, truncated, inconsistent or out of proportion fails
// with a message naming the file and the first problem, and leaves `scene` untouched. Images
// are neither decoded nor read from disk, and no file outside the document's folder is read.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"
#include "files/SceneDescription.h"

#include <string>

namespace runtime {

FileResult readGltf(const std::string& path, SceneDescription& scene,
                    ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
