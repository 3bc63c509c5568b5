// Scene files by extension: which formats the host reads and writes, and the one entry point
// for each direction, so that callers (the file command, the application's dialogs) need not
// know the formats.
//
//   .gltf .glb                                    read and written (GltfReader.h, GltfWriter.h)
//   .fbx .dae .x .iqm .smd .ms3d .b3d .blend      read only (ImportHelper.h)
//
// Extensions are compared without regard to case. A path of another extension fails with a
// message naming the file.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"
#include "files/SceneDescription.h"

#include <string>

namespace runtime {

bool readsSceneFile(const std::string& path);
bool writesSceneFile(const std::string& path);

class ImportHelper;

// Files read through the importer use `importer` when given (and its spare), else an importer
// started for this file alone.
FileResult readSceneFile(const std::string& path, SceneDescription& scene,
                         ProgressReporter& reporter = ProgressReporter::silent(),
                         ImportHelper* importer = nullptr);
FileResult writeSceneFile(const SceneDescription& scene, const std::string& path,
                          ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
