// writeWeightsFile: a WeightsFile as a skin weights file (docs/weights-format.md).
//
// The text is JSON with one line per influence and per vertex. Every number is written in the
// shortest form that reads back as the same double (std::to_chars, as HString::set does), so
// that weights and positions come back bit for bit. The file is replaced atomically
// (AtomicFile.h): a failure leaves the previous file as it was. The WeightsFile must be one the
// reader could have given (indices in range, vertices ascending).
#pragma once

#include "files/FileResult.h"
#include "files/WeightsFile.h"

#include <string>

namespace runtime {

std::string weightsFileText(const WeightsFile& file);
FileResult writeWeightsFile(const WeightsFile& file, const std::string& path);

} // namespace runtime
