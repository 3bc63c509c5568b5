// UploadCounts: what the viewport has sent to the graphics card, counted by the GPU side as
// it uploads, so that tests and benchmarks can check that an edit sends only what it changed.
// Plain counters; the owner (the renderer) only adds to them.
#pragma once

#include <cstddef>

namespace app::viewport {

struct UploadCounts {
    unsigned meshBuilds = 0;       // whole meshes: geometry, triangles and every attribute
    std::size_t skinVertices = 0;  // vertices whose skinning slots were sent again
    std::size_t paintVertices = 0; // vertices whose heat map channel was sent again
    unsigned matrixUploads = 0;    // skinning matrix palettes
    unsigned selectionUploads = 0;
    unsigned jointUploads = 0;
    std::size_t bytes = 0;
};

} // namespace app::viewport
