// ImportStream: what the importer program (vorel-import) tells the host about one file, as a
// versioned little-endian byte stream on its standard output.
//
// The stream is a header ("VORELIMP" and a version) followed by records: progress (a fraction in
// thousandths), warnings (texts), and last exactly one outcome, either the scene or the problem
// that kept the file from being read. Nothing may follow the outcome.
//
// The host trusts nothing it receives: the reader checks every count against the bytes that
// arrived before it allocates, every index against what it refers to (firstInconsistency), and
// turns whatever does not fit into a problem; it never asserts on the stream's content.
#pragma once

#include "files/SceneDescription.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace runtime {

constexpr std::uint32_t kImportStreamVersion = 1;

// Writing, on the importer's side: each function returns the bytes of one part of the stream.
std::string importStreamHeader();
std::string importProgressRecord(double fraction);
std::string importWarningRecord(const std::string& warning);
std::string importSceneRecord(const SceneDescription& scene);
std::string importFailureRecord(const std::string& message);

struct ImportReply {
    bool read = false;      // the file was read: `scene` holds it; otherwise `message` says why not
    SceneDescription scene; // without `source`
    std::string message;    // as the host shows it
    std::vector<std::string> warnings;
};

// The progress reported so far by a stream that is still arriving: the last fraction among the
// complete records from `offset` on (unchanged when there is none); `offset` moves past them and
// stops at the first record that is not a complete progress record.
void readImportProgress(const std::string& bytes, std::size_t& offset, double& fraction);

// A whole stream. False, with `problem` saying what is wrong with the stream itself, when it is
// cut short, malformed or inconsistent; true when it held an outcome (which may be a failure to
// read the file: see `reply.read`).
bool readImportStream(const char* data, std::size_t size, ImportReply& reply, std::string& problem);

} // namespace runtime
