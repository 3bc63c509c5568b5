// GltfSource: the glTF document a scene description was read from.
//
// The glTF reader makes one and hangs it on the description (SceneDescription::source); the glTF
// writer starts from it, so that a file written back keeps everything the host did not change
// and rewrites only what differs from `asRead`. Immutable once made; shared by every
// description made from it.
#pragma once

#include "files/SceneDescription.h"

#include <nlohmann/json.hpp>
#include <vector>

namespace runtime {

// Where the vertices of one glTF mesh primitive are in the description's mesh.
struct PrimitiveSpan {
    int firstVertex = 0;
    int vertexCount = 0;
};

class GltfSource : public SceneSource {
public:
    // The JSON as read, except that buffers hold no embedded data (their bytes are in
    // `buffers`).
    nlohmann::ordered_json document;
    // The bytes of each buffer, by buffer index.
    std::vector<std::vector<unsigned char>> buffers;
    // What the reader made of the document (its own `source` is empty).
    SceneDescription asRead;
    // By glTF mesh index: the span of each primitive; empty for meshes no node of the scene
    // shows.
    std::vector<std::vector<PrimitiveSpan>> primitiveSpans;
    // The scene that was read; -1 when the document has no scenes (then every root was read).
    int scene = -1;
};

} // namespace runtime
