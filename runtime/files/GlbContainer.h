// The binary glTF container: a 12-byte header ("glTF", version 2, total length), a JSON chunk and
// an optional BIN chunk, all little-endian and padded to four bytes.
//
// splitGlb() checks an untrusted container completely (every length against the bytes there
// are) before anything reads a chunk, and fails with a problem text. GlbLayout assembles the
// blocks of a container around JSON text and binary data the caller owns.
#pragma once

#include "files/AtomicFile.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace runtime {

bool looksLikeGlb(const std::vector<unsigned char>& bytes);

struct GlbChunks {
    const unsigned char* json = nullptr;
    std::size_t jsonSize = 0;
    const unsigned char* bin = nullptr; // null when there is no BIN chunk
    std::size_t binSize = 0;
};

bool splitGlb(const std::vector<unsigned char>& bytes, GlbChunks& chunks, std::string& problem);

class GlbLayout {
public:
    // `json` and `bin` must outlive the layout; `bin` may be empty (no BIN chunk then).
    GlbLayout(const std::string& json, const std::vector<unsigned char>& bin);
    const std::vector<ByteBlock>& blocks() const { return m_blocks; }

private:
    std::array<unsigned char, 20> m_head{};
    std::array<unsigned char, 8> m_binHead{};
    std::string m_jsonPadding;
    std::string m_binPadding;
    std::vector<ByteBlock> m_blocks;
};

} // namespace runtime
