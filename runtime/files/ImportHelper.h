// importWithHelper: FBX, COLLADA, DirectX X, IQM, SMD, MS3D, B3D and Blender files into a scene
// description, read by the importer program vorel-import in a process of its own. Read only.
//
// The import library is not fit for untrusted files: a malformed one may crash it, hang it or
// make it eat all memory. So the host starts the importer for every import and reads the scene
// from its output (files/ImportStream.h). An importer that crashes, is killed, or ends its
// output early fails the read with "the importer stopped unexpectedly"; one that runs past the
// time limit is stopped and fails it with "the importer took too long"; Cancel in the progress
// dialog stops it too. Whatever happens, `scene` is only changed by a complete, consistent reply.
//
// Where the importer is: $VOREL_IMPORTER when set, else beside the running program, else in the
// bin folder beside the folder of the host's library. Limits: $VOREL_IMPORT_TIME_LIMIT seconds
// (default 120) and $VOREL_IMPORT_MEMORY_LIMIT megabytes of address space (default 4096).
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"
#include "files/SceneDescription.h"

#include <string>

namespace runtime {

// Whether files with this extension (lower case, without the dot) are imported this way.
bool importsExtension(const std::string& extension);

FileResult importWithHelper(const std::string& path, SceneDescription& scene,
                            ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
