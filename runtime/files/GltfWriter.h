// writeGltf: a scene description into a glTF 2.0 file, .glb (binary) or .gltf (JSON with its
// binary data embedded as a base64 data URI, so that the file stands alone and is replaced in
// one step), chosen by the path's extension.
//
// When the description's `source` is a GltfSource, the writer starts from that document and
// changes only what differs from what was read: node names, transforms and parents, joint
// locks, the positions of meshes whose polygons are unchanged, skins' joints and inverse bind
// matrices, the weights of the primitives whose weights changed, and the lock extras.
// Everything else stays as it was, materials, animations, extensions and extras included, and
// so do the indices of every accessor, buffer view and node it keeps; only "buffers" and
// "bufferViews" are laid out anew, as one buffer. Nodes the host removed are detached from the
// scene (their data stays in the file, unseen); elements the host added are appended. A mesh
// whose polygons changed is written anew, without its materials (a warning says so).
// Without a source the writer makes a fresh document: nodes, meshes (one primitive each, in
// triangles), skins with inverse bind matrices, one scene of the root nodes.
//
// Rewritten weights are each vertex's positive weights, largest first, summing to one within
// float precision, four per JOINTS_n / WEIGHTS_n set (GltfWeightSets.h); a primitive keeps at
// least as many sets as it had. Locks go to extras as GltfLockExtras.h lays out.
//
// The file is replaced atomically (AtomicFile.h): on failure or cancellation the previous file
// is intact. A description that is inconsistent, or whose source indices do not fit its
// source, is refused with a message.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"
#include "files/SceneDescription.h"

#include <string>

namespace runtime {

FileResult writeGltf(const SceneDescription& scene, const std::string& path,
                     ProgressReporter& reporter = ProgressReporter::silent());

} // namespace runtime
