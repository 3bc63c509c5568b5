#include "files/WeightsFileWriter.h"

#include "core/ParallelParts.h"
#include "files/AtomicFile.h"

#include <charconv>
#include <nlohmann/json.hpp>

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

// Vertices per thread below which one thread writes them all.
constexpr size_t kVerticesPerPart = 20000;

// Appends text and numbers to one string; numbers go through a buffer on the stack.
class TextOut {
public:
    explicit TextOut(std::string& text) : m_text(text) {}

    TextOut& operator<<(const char* text) {
        m_text += text;
        return *this;
    }
    TextOut& operator<<(const std::string& text) {
        m_text += text;
        return *this;
    }
    TextOut& operator<<(double value) { return number(value); }
    TextOut& operator<<(unsigned value) { return number(value); }

    // A JSON string, escaped.
    TextOut& quoted(const std::string& text) {
        m_text += Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
        return *this;
    }
    TextOut& json(const Json& value) {
        m_text += value.dump(-1, ' ', false, Json::error_handler_t::replace);
        return *this;
    }

private:
    template <typename T> TextOut& number(T value) {
        char buffer[32];
        std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, value);
        m_text.append(buffer, result.ptr);
        return *this;
    }

    std::string& m_text;
};

Json locksJson(const SkinLocks& locks) {
    Json cells = Json::array();
    for (const CellLocks& cell : locks.lockedCells)
        cells.push_back({{"vertex", cell.vertex}, {"lockedLocalJoints", cell.joints}});
    return {{"lockedJointNames", locks.lockedJointNames},
            {"lockedVertexIndices", locks.lockedVertices},
            {"lockedCellIndices", cells}};
}

void writeVertex(TextOut& out, const WeightsFileCluster& cluster, unsigned slot) {
    const HPoint& p = cluster.positions[slot];
    out << "[" << cluster.vertices[slot] << ", [" << p.x << ", " << p.y << ", " << p.z << "], [";
    const unsigned count = cluster.weights.entryCount(slot);
    const SkinWeights::Influence* influences = cluster.weights.influences(slot);
    const double* weights = cluster.weights.weights(slot);
    for (unsigned i = 0; i < count; ++i)
        out << (i == 0 ? "[" : ", [") << unsigned{influences[i]} << ", " << weights[i] << "]";
    out << "]]";
}

// The vertex lines of a cluster. Each line stands alone, so large clusters are written in parts
// on threads of their own (ParallelParts.h), given back in order.
std::vector<std::string> vertexLines(const WeightsFileCluster& cluster) {
    const size_t count = cluster.vertices.size();
    const unsigned parts = partCount(count, kVerticesPerPart);
    std::vector<std::string> texts(parts);
    runInParts(count, parts, [&](unsigned part, size_t begin, size_t end) {
        texts[part].reserve((end - begin) * 72 + cluster.weights.entryTotal() * 28 / parts);
        TextOut out(texts[part]);
        for (size_t slot = begin; slot < end; ++slot) {
            out << (slot == 0 ? "\n" : ",\n");
            writeVertex(out, cluster, static_cast<unsigned>(slot));
        }
    });
    return texts;
}

// The file as pieces of text to be written one after the other.
std::vector<std::string> weightsFilePieces(const WeightsFile& file) {
    std::vector<std::string> pieces(1);
    TextOut(pieces.back()) << "{\"format\": \"" << kWeightsFileFormat
                           << "\", \"version\": " << static_cast<unsigned>(kWeightsFileVersion)
                           << ",\n\"skinClusters\": [";
    for (size_t c = 0; c < file.clusters.size(); ++c) {
        const WeightsFileCluster& cluster = file.clusters[c];
        TextOut out(pieces.back());
        out << (c == 0 ? "\n{\"name\": " : ",\n{\"name\": ");
        out.quoted(cluster.name) << ", \"mesh\": ";
        out.quoted(cluster.mesh) << ", \"vertexCount\": " << cluster.vertexCount
                                 << ",\n\"influences\": [";
        for (size_t i = 0; i < cluster.influences.size(); ++i) {
            const WeightsFileInfluence& influence = cluster.influences[i];
            out << (i == 0 ? "\n{\"name\": " : ",\n{\"name\": ");
            out.quoted(influence.name) << ", \"path\": ";
            out.quoted(influence.path)
                << ", \"lockInfluenceWeights\": " << (influence.locked ? "true}" : "false}");
        }
        out << "\n],\n";
        if (cluster.hasLocks) {
            out << "\"locks\": ";
            out.json(locksJson(cluster.locks)) << ",\n";
        }
        out << "\"vertices\": [";
        for (std::string& lines : vertexLines(cluster))
            pieces.push_back(std::move(lines));
        pieces.emplace_back("\n]}");
    }
    TextOut(pieces.back()) << "\n]}\n";
    return pieces;
}

} // namespace

std::string weightsFileText(const WeightsFile& file) {
    std::string text;
    for (const std::string& piece : weightsFilePieces(file))
        text += piece;
    return text;
}

FileResult writeWeightsFile(const WeightsFile& file, const std::string& path) {
    const std::vector<std::string> pieces = weightsFilePieces(file);
    std::vector<ByteBlock> blocks;
    for (const std::string& piece : pieces)
        blocks.push_back({piece.data(), piece.size()});
    Progress progress(ProgressReporter::silent());
    return writeFileAtomically(path, blocks, progress);
}

} // namespace runtime
