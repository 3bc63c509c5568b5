#include "files/WeightsFileWriter.h"

#include "files/AtomicFile.h"

#include <charconv>
#include <nlohmann/json.hpp>

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

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

void writeCluster(TextOut& out, const WeightsFileCluster& cluster) {
    out << "{\"name\": ";
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
    for (unsigned slot = 0; slot < cluster.vertices.size(); ++slot) {
        out << (slot == 0 ? "\n" : ",\n");
        writeVertex(out, cluster, slot);
    }
    out << "\n]}";
}

size_t estimatedSize(const WeightsFile& file) {
    size_t size = 4096;
    for (const WeightsFileCluster& cluster : file.clusters)
        size += cluster.vertices.size() * 72 + cluster.weights.entryTotal() * 28 +
                cluster.influences.size() * 256;
    return size;
}

} // namespace

std::string weightsFileText(const WeightsFile& file) {
    std::string text;
    text.reserve(estimatedSize(file));
    TextOut out(text);
    out << "{\"format\": \"" << kWeightsFileFormat
        << "\", \"version\": " << static_cast<unsigned>(kWeightsFileVersion)
        << ",\n\"skinClusters\": [";
    for (size_t c = 0; c < file.clusters.size(); ++c) {
        out << (c == 0 ? "\n" : ",\n");
        writeCluster(out, file.clusters[c]);
    }
    out << "\n]}\n";
    return text;
}

FileResult writeWeightsFile(const WeightsFile& file, const std::string& path) {
    const std::string text = weightsFileText(file);
    Progress progress(ProgressReporter::silent());
    return writeFileAtomically(path, {ByteBlock{text.data(), text.size()}}, progress);
}

} // namespace runtime
