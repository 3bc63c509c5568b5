// writeNativeScene: the whole scene as a native scene file (.vscene, docs/vscene-format.md):
// every node with its type, name and parent, its dynamic attribute definitions, every stored
// value (array elements that exist without a value included), mesh data, skin clusters with
// their influences, bind data and weights, and every connection, so that the reader builds the
// very same scene, weights bit for bit.
//
// The file is replaced atomically (AtomicFile.h): a failure or a cancellation leaves the
// previous file as it was. Influences that were deleted (and could still come back by undo) are
// not written, nor their weights; a warning says so.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"

#include <string>

namespace runtime {

class Scene;

FileResult writeNativeScene(const Scene& scene, const std::string& path,
                            ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
