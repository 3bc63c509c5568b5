// readWeightsFile: a skin weights file (docs/weights-format.md) into a WeightsFile.
//
// The file is untrusted. It is refused, with a message that names it and the first problem
// (with its line and column where the text shows it), when it cannot be read, is not JSON, is
// of another format or an unknown version, lacks a member the format needs, holds a value of
// the wrong kind, a weight below zero, a number a double cannot hold, a vertex listed twice or
// out of order, an index out of range (a vertex beyond the mesh's count, an influence beyond
// the cluster's list), or an influence twice in one vertex. Members the format does not know
// are checked as JSON and ignored, so that pipeline tools may add their own. Zero weights are
// dropped. Never throws.
#pragma once

#include "files/FileResult.h"
#include "files/WeightsFile.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace runtime {

// The largest file the reader takes: far beyond the weights of any mesh a host can hold.
constexpr std::uint64_t kMaxWeightsFileBytes = 2ull << 30;

FileResult readWeightsFile(const std::string& path, WeightsFile& file);
// The same from text in memory; false with the problem (which does not name a file).
bool parseWeightsFile(const char* text, std::size_t size, WeightsFile& file, std::string& problem);

} // namespace runtime
