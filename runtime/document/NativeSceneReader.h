// readNativeScene: a native scene file (.vscene, docs/vscene-format.md) built into a scene of
// the caller's, which should be a staging scene (Scene::makeStaging()).
//
// The file is untrusted and nothing in it is ever run: names and strings are only stored. A file
// that is not JSON, is truncated, is of another format or of an unknown version, or is
// inconsistent (a parent that does not come before its child, a hierarchy deeper than
// kMaxHierarchyDepth, a connection to a node that does not exist, an index out of range, counts
// that do not match the data, a weight that is not a finite number, a value of the wrong kind,
// anything the scene refuses) fails with a message naming the file and the first problem.
// Whatever was built before the failure or a cancellation is left in `target` for the caller to
// drop.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"

#include <string>

namespace runtime {

class Scene;

FileResult readNativeScene(const std::string& path, Scene& target,
                           ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
