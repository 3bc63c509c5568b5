#include "files/ImportStream.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace runtime {

namespace {

const char kMagic[8] = {'V', 'O', 'R', 'E', 'L', 'I', 'M', 'P'};

enum Record : std::uint8_t { kProgress = 1, kWarning = 2, kScene = 3, kFailure = 4 };

// The smallest number of bytes each element of a counted list takes in the stream, which bounds
// every count by the bytes left.
constexpr std::size_t kMinNodeBytes = 4 + 4 + 1 + 4 + 1 + 80;
constexpr std::size_t kMinMeshBytes = 4 + 4 + 4 + 4;
constexpr std::size_t kMinSkinBytes = 4 + 4 + 4;
constexpr std::size_t kPointBytes = 24;
constexpr std::size_t kMatrixBytes = 128;
constexpr std::size_t kWeightBytes = 12;

class Writer {
public:
    void u8(std::uint8_t value) { m_bytes.push_back(static_cast<char>(value)); }
    void u32(std::uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8)
            u8(static_cast<std::uint8_t>(value >> shift));
    }
    void i32(int value) { u32(static_cast<std::uint32_t>(value)); }
    void f64(double value) {
        std::uint64_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        u32(static_cast<std::uint32_t>(bits));
        u32(static_cast<std::uint32_t>(bits >> 32));
    }
    void count(std::size_t value) { u32(static_cast<std::uint32_t>(value)); }
    void text(const std::string& value) {
        count(value.size());
        m_bytes += value;
    }
    template <std::size_t N> void doubles(const std::array<double, N>& values) {
        for (double value : values)
            f64(value);
    }
    std::string take() { return std::move(m_bytes); }

private:
    std::string m_bytes;
};

void writeNode(Writer& out, const SceneNode& node) {
    out.text(node.name);
    out.i32(node.parent);
    out.u8(node.isJoint ? 1 : 0);
    out.i32(node.mesh);
    const bool matrix = node.transform.form == NodeTransform::Form::kMatrix;
    out.u8(matrix ? 1 : 0);
    if (matrix) {
        out.doubles(node.transform.matrix);
    } else {
        out.doubles(node.transform.translation);
        out.doubles(node.transform.rotation);
        out.doubles(node.transform.scale);
    }
}

void writeMesh(Writer& out, const SceneMesh& mesh) {
    out.text(mesh.name);
    out.count(mesh.points.size());
    for (const auto& point : mesh.points)
        out.doubles(point);
    out.count(mesh.polygonSizes.size());
    for (int size : mesh.polygonSizes)
        out.i32(size);
    out.count(mesh.polygonVertices.size());
    for (int vertex : mesh.polygonVertices)
        out.i32(vertex);
}

void writeSkin(Writer& out, const SceneSkin& skin) {
    out.i32(skin.meshNode);
    out.count(skin.joints.size());
    for (std::size_t j = 0; j < skin.joints.size(); ++j) {
        out.i32(skin.joints[j]);
        out.doubles(skin.inverseBindMatrices[j]);
    }
    out.count(static_cast<std::size_t>(skin.weights.vertexCount()));
    for (int v = 0; v < skin.weights.vertexCount(); ++v) {
        out.count(skin.weights.vertex(v).size());
        for (const SkinWeight& entry : skin.weights.vertex(v)) {
            out.i32(entry.influence);
            out.f64(entry.weight);
        }
    }
}

class Reader {
public:
    Reader(const char* data, std::size_t size) : m_data(data), m_left(size) {}

    bool failed() const { return !m_problem.empty(); }
    const std::string& problem() const { return m_problem; }
    std::size_t left() const { return m_left; }
    std::size_t consumed() const { return m_used; }

    std::uint8_t u8() {
        std::uint8_t value = 0;
        if (need(1))
            value = static_cast<std::uint8_t>(m_data[m_used]);
        advance(1);
        return value;
    }
    std::uint32_t u32() {
        std::uint32_t value = 0;
        if (need(4))
            for (int i = 0; i < 4; ++i)
                value |= std::uint32_t(static_cast<std::uint8_t>(m_data[m_used + i])) << (8 * i);
        advance(4);
        return value;
    }
    int i32() { return static_cast<int>(u32()); }
    double f64() {
        const std::uint64_t low = u32();
        const std::uint64_t bits = low | (std::uint64_t(u32()) << 32);
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    // A count of elements of at least `bytesEach` bytes each, refused when the stream has no
    // room left for that many.
    std::size_t count(std::size_t bytesEach, const char* what) {
        const std::uint32_t value = u32();
        if (!failed() && value > m_left / bytesEach)
            fail(std::string("it counts more ") + what + " than it holds");
        return failed() ? 0 : value;
    }
    std::string text() {
        const std::size_t size = count(1, "characters");
        std::string value;
        if (need(size))
            value.assign(m_data + m_used, size);
        advance(size);
        return value;
    }
    template <std::size_t N> void doubles(std::array<double, N>& values) {
        for (double& value : values)
            value = f64();
    }
    bool fail(const std::string& problem) {
        if (m_problem.empty())
            m_problem = problem;
        return false;
    }

private:
    bool need(std::size_t bytes) {
        if (!failed() && bytes > m_left)
            fail("it ends too early");
        return !failed();
    }
    void advance(std::size_t bytes) {
        if (failed())
            return;
        m_used += bytes;
        m_left -= bytes;
    }

    const char* m_data;
    std::size_t m_left;
    std::size_t m_used = 0;
    std::string m_problem;
};

void readNode(Reader& in, SceneNode& node) {
    node.name = in.text();
    node.parent = in.i32();
    node.isJoint = in.u8() != 0;
    node.mesh = in.i32();
    if (in.u8() != 0) {
        node.transform.form = NodeTransform::Form::kMatrix;
        in.doubles(node.transform.matrix);
    } else {
        node.transform.form = NodeTransform::Form::kComponents;
        in.doubles(node.transform.translation);
        in.doubles(node.transform.rotation);
        in.doubles(node.transform.scale);
    }
}

void readMesh(Reader& in, SceneMesh& mesh) {
    mesh.name = in.text();
    mesh.points.resize(in.count(kPointBytes, "points"));
    for (auto& point : mesh.points)
        in.doubles(point);
    mesh.polygonSizes.resize(in.count(4, "polygons"));
    for (int& size : mesh.polygonSizes)
        size = in.i32();
    mesh.polygonVertices.resize(in.count(4, "polygon vertices"));
    for (int& vertex : mesh.polygonVertices)
        vertex = in.i32();
}

void readSkin(Reader& in, SceneSkin& skin) {
    skin.meshNode = in.i32();
    const std::size_t joints = in.count(4 + kMatrixBytes, "joints");
    skin.joints.resize(joints);
    skin.inverseBindMatrices.resize(joints);
    for (std::size_t j = 0; j < joints; ++j) {
        skin.joints[j] = in.i32();
        in.doubles(skin.inverseBindMatrices[j]);
    }
    const std::size_t vertices = in.count(4, "weighted vertices");
    skin.weights.reserve(vertices, 0);
    for (std::size_t v = 0; v < vertices && !in.failed(); ++v) {
        skin.weights.startVertex();
        const std::size_t entries = in.count(kWeightBytes, "weights");
        for (std::size_t e = 0; e < entries && !in.failed(); ++e) {
            const int influence = in.i32();
            const double weight = in.f64();
            if (influence < 0 || static_cast<std::size_t>(influence) >= joints)
                in.fail("a weight names an influence the skin does not have");
            else if (!std::isfinite(weight))
                in.fail("a weight is not a finite number");
            else
                skin.weights.add(influence, weight);
        }
    }
}

void readScene(Reader& in, SceneDescription& scene) {
    scene.nodes.resize(in.count(kMinNodeBytes, "nodes"));
    for (SceneNode& node : scene.nodes)
        readNode(in, node);
    scene.meshes.resize(in.count(kMinMeshBytes, "meshes"));
    for (SceneMesh& mesh : scene.meshes)
        readMesh(in, mesh);
    scene.skins.resize(in.count(kMinSkinBytes, "skins"));
    for (SceneSkin& skin : scene.skins)
        readSkin(in, skin);
}

bool readHeader(Reader& in) {
    for (char expected : kMagic)
        if (static_cast<char>(in.u8()) != expected)
            return in.fail("it does not begin as an importer's reply");
    const std::uint32_t version = in.u32();
    if (!in.failed() && version != kImportStreamVersion)
        return in.fail("it is of version " + std::to_string(version) + ", not " +
                       std::to_string(kImportStreamVersion));
    return !in.failed();
}

} // namespace

std::string importStreamHeader() {
    Writer out;
    for (char c : kMagic)
        out.u8(static_cast<std::uint8_t>(c));
    out.u32(kImportStreamVersion);
    return out.take();
}

std::string importProgressRecord(double fraction) {
    Writer out;
    out.u8(kProgress);
    out.u32(static_cast<std::uint32_t>(std::lround(std::clamp(fraction, 0.0, 1.0) * 1000.0)));
    return out.take();
}

std::string importWarningRecord(const std::string& warning) {
    Writer out;
    out.u8(kWarning);
    out.text(warning);
    return out.take();
}

std::string importSceneRecord(const SceneDescription& scene) {
    Writer out;
    out.u8(kScene);
    out.count(scene.nodes.size());
    for (const SceneNode& node : scene.nodes)
        writeNode(out, node);
    out.count(scene.meshes.size());
    for (const SceneMesh& mesh : scene.meshes)
        writeMesh(out, mesh);
    out.count(scene.skins.size());
    for (const SceneSkin& skin : scene.skins)
        writeSkin(out, skin);
    return out.take();
}

std::string importFailureRecord(const std::string& message) {
    Writer out;
    out.u8(kFailure);
    out.text(message);
    return out.take();
}

void readImportProgress(const std::string& bytes, std::size_t& offset, double& fraction) {
    if (offset == 0) {
        Reader header(bytes.data(), bytes.size());
        if (!readHeader(header))
            return;
        offset = header.consumed();
    }
    while (bytes.size() >= offset + 5 && static_cast<std::uint8_t>(bytes[offset]) == kProgress) {
        Reader in(bytes.data() + offset + 1, 4);
        fraction = std::min(in.u32(), 1000u) / 1000.0;
        offset += 5;
    }
}

bool readImportStream(const char* data, std::size_t size, ImportReply& reply,
                      std::string& problem) {
    Reader in(data, size);
    ImportReply received;
    bool ended = false;
    if (readHeader(in)) {
        while (!ended && !in.failed()) {
            switch (in.u8()) {
            case kProgress:
                in.u32();
                break;
            case kWarning:
                received.warnings.push_back(in.text());
                break;
            case kScene:
                readScene(in, received.scene);
                received.read = ended = true;
                break;
            case kFailure:
                received.message = in.text();
                ended = true;
                break;
            default:
                in.fail("it holds a record of an unknown kind");
            }
        }
    }
    if (!in.failed() && in.left() > 0)
        in.fail("bytes follow its outcome");
    if (!in.failed() && received.read) {
        const std::string inconsistency = firstInconsistency(received.scene);
        if (!inconsistency.empty())
            in.fail(inconsistency);
    }
    if (!in.failed() && !received.read && received.message.empty())
        in.fail("it gives no reason why the file was not read");
    if (in.failed()) {
        problem = in.problem();
        return false;
    }
    reply = std::move(received);
    return true;
}

} // namespace runtime
