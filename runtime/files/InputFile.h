// readWholeFile: the bytes of one input file, read only after checking that the path names a
// regular file no larger than the reader accepts.
//
// Used by the readers for the file itself and for the data files it refers to. Fails with a
// problem text (no file name: the caller's message names the file) and never reads devices,
// pipes or directories.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace runtime {

bool readWholeFile(const std::string& path, std::uint64_t maxBytes,
                   std::vector<unsigned char>& bytes, std::string& problem);

} // namespace runtime
