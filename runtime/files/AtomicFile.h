// writeFileAtomically: replaces a file so that it is never seen half-written.
//
// The bytes go to a temporary file beside the target, which is flushed to disk and then renamed
// over the target; the directory is synced after the rename. The temporary file's name carries
// the saving process's id ("scene.glb.vorel-save-1234"), so that a save can tell the leftovers of
// saves that were killed (their process is gone) from saves still running, and removes them. If anything fails (the directory
// is not writable, the disk is full, the progress reporter asks to stop before the rename), the
// temporary file is removed and the target stays exactly as it was. Every format's writer
// hands its finished bytes to this function.
#pragma once

#include "files/FileResult.h"
#include "files/ProgressReporter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace runtime {

// A run of bytes owned by the caller, which must outlive the call.
struct ByteBlock {
    const void* data;
    std::size_t size;
};

// Writes the blocks one after the other as the new content of `path`. Reports its progress as
// the stage [from, to] of `progress`.
FileResult writeFileAtomically(const std::string& path, const std::vector<ByteBlock>& blocks,
                               Progress& progress, double from = 0.0, double to = 1.0);

} // namespace runtime
