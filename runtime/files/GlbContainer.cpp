#include "files/GlbContainer.h"

#include <cstdint>

namespace runtime {

namespace {

constexpr std::uint32_t kMagic = 0x46546C67;     // "glTF"
constexpr std::uint32_t kJsonChunk = 0x4E4F534A; // "JSON"
constexpr std::uint32_t kBinChunk = 0x004E4942;  // "BIN\0"
constexpr std::size_t kHeaderBytes = 12;
constexpr std::size_t kChunkHeaderBytes = 8;

std::uint32_t readWord(const unsigned char* at) {
    return std::uint32_t(at[0]) | std::uint32_t(at[1]) << 8 | std::uint32_t(at[2]) << 16 |
           std::uint32_t(at[3]) << 24;
}

void writeWord(unsigned char* at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        at[i] = static_cast<unsigned char>(value >> (8 * i));
}

std::size_t paddingTo4(std::size_t size) {
    return (4 - size % 4) % 4;
}

} // namespace

bool looksLikeGlb(const std::vector<unsigned char>& bytes) {
    return bytes.size() >= 4 && readWord(bytes.data()) == kMagic;
}

bool splitGlb(const std::vector<unsigned char>& bytes, GlbChunks& chunks, std::string& problem) {
    const std::size_t size = bytes.size();
    const unsigned char* data = bytes.data();
    if (size < kHeaderBytes + kChunkHeaderBytes) {
        problem = "the binary glTF file is truncated (" + std::to_string(size) +
                  " bytes, too short for its header)";
        return false;
    }
    if (readWord(data + 4) != 2) {
        problem = "the binary glTF file has version " + std::to_string(readWord(data + 4)) +
                  ", only version 2 is read";
        return false;
    }
    const std::uint64_t declared = readWord(data + 8);
    if (declared > size) {
        problem = "the binary glTF file is truncated (its header declares " +
                  std::to_string(declared) + " bytes, the file has " + std::to_string(size) + ")";
        return false;
    }
    const std::uint64_t jsonSize = readWord(data + 12);
    if (readWord(data + 16) != kJsonChunk || jsonSize == 0) {
        problem = "the binary glTF file does not start with a JSON chunk";
        return false;
    }
    if (jsonSize % 4 != 0) {
        problem = "the binary glTF file's JSON chunk is not padded to four bytes";
        return false;
    }
    const std::uint64_t jsonEnd = kHeaderBytes + kChunkHeaderBytes + jsonSize;
    if (jsonEnd > declared) {
        problem = "the binary glTF file is truncated (its JSON chunk runs past the end)";
        return false;
    }
    chunks = GlbChunks{};
    chunks.json = data + kHeaderBytes + kChunkHeaderBytes;
    chunks.jsonSize = static_cast<std::size_t>(jsonSize);
    const std::uint64_t binStart = jsonEnd;
    if (binStart + kChunkHeaderBytes > declared)
        return true;
    const std::uint64_t binSize = readWord(data + binStart);
    if (readWord(data + binStart + 4) != kBinChunk)
        return true; // chunks of other types are to be ignored
    if (binStart + kChunkHeaderBytes + binSize > declared) {
        problem = "the binary glTF file is truncated (its BIN chunk declares " +
                  std::to_string(binSize) + " bytes, " +
                  std::to_string(declared - binStart - kChunkHeaderBytes) + " are there)";
        return false;
    }
    chunks.bin = data + binStart + kChunkHeaderBytes;
    chunks.binSize = static_cast<std::size_t>(binSize);
    return true;
}

GlbLayout::GlbLayout(const std::string& json, const std::vector<unsigned char>& bin)
    : m_jsonPadding(paddingTo4(json.size()), ' '), m_binPadding(paddingTo4(bin.size()), '\0') {
    const std::size_t jsonChunk = json.size() + m_jsonPadding.size();
    const std::size_t binChunk = bin.size() + m_binPadding.size();
    std::size_t total = kHeaderBytes + kChunkHeaderBytes + jsonChunk;
    if (!bin.empty())
        total += kChunkHeaderBytes + binChunk;
    writeWord(m_head.data(), kMagic);
    writeWord(m_head.data() + 4, 2);
    writeWord(m_head.data() + 8, static_cast<std::uint32_t>(total));
    writeWord(m_head.data() + 12, static_cast<std::uint32_t>(jsonChunk));
    writeWord(m_head.data() + 16, kJsonChunk);
    m_blocks = {{m_head.data(), m_head.size()},
                {json.data(), json.size()},
                {m_jsonPadding.data(), m_jsonPadding.size()}};
    if (bin.empty())
        return;
    writeWord(m_binHead.data(), static_cast<std::uint32_t>(binChunk));
    writeWord(m_binHead.data() + 4, kBinChunk);
    m_blocks.push_back({m_binHead.data(), m_binHead.size()});
    m_blocks.push_back({bin.data(), bin.size()});
    m_blocks.push_back({m_binPadding.data(), m_binPadding.size()});
}

} // namespace runtime
