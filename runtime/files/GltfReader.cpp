#include "files/GltfReader.h"

#include "files/GlbContainer.h"
#include "files/GltfAccessors.h"
#include "files/GltfGeometryReader.h"
#include "files/GltfLockExtras.h"
#include "files/GltfSource.h"
#include "files/InputFile.h"
#include "files/JsonInput.h"
#include "files/ReadBudget.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>
#include <memory>
#include <new>
#include <tiny_gltf.h>

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

// A binary glTF file records its length in 32 bits.
constexpr std::uint64_t kMaxFileBytes = 0xFFFFFFFFull;

// Extensions that store geometry in a form only their decoders can read.
const char* const kUnreadableExtensions[] = {"KHR_draco_mesh_compression",
                                             "EXT_meshopt_compression"};

// What the file-system callbacks of the glTF library may touch: regular files inside the
// document's folder, no larger than the largest buffer the document declares.
struct FileAccess {
    QString folder;
    std::uint64_t maxBytes = 0;
};

bool insideFolder(const std::string& path, const FileAccess& access) {
    QString cleaned = QDir::cleanPath(QString::fromStdString(path));
    return cleaned.startsWith(access.folder + "/");
}

bool fileExists(const std::string& path, void* data) {
    const auto& access = *static_cast<FileAccess*>(data);
    return insideFolder(path, access) && QFileInfo(QString::fromStdString(path)).isFile();
}

// Paths are used as the document gives them: no "~" or variables are expanded.
std::string keepPath(const std::string& path, void*) {
    return path;
}

bool readFile(std::vector<unsigned char>* bytes, std::string* error, const std::string& path,
              void* data) {
    const auto& access = *static_cast<FileAccess*>(data);
    std::string problem = "it lies outside the document's folder";
    if (insideFolder(path, access) && readWholeFile(path, access.maxBytes, *bytes, problem))
        return true;
    if (error)
        *error = problem;
    return false;
}

bool refuseWrite(std::string* error, const std::string&, const std::vector<unsigned char>&, void*) {
    if (error)
        *error = "writing is not allowed while reading";
    return false;
}

// Images are kept as the document has them; the host never decodes them.
bool keepImageUndecoded(tinygltf::Image*, const int, std::string*, std::string*, int, int,
                        const unsigned char*, int, void*) {
    return true;
}

std::string firstLine(const std::string& text) {
    std::string line = text.substr(0, text.find('\n'));
    return line.empty() ? "the glTF library refused it" : line;
}

class GltfReading {
public:
    GltfReading(const std::string& path, ProgressReporter& reporter)
        : m_path(path), m_progress(reporter) {}

    FileResult run(SceneDescription& out);

private:
    bool fail(const std::string& problem) {
        m_problem = problem;
        return false;
    }
    bool loadDocument();
    bool checkExtensions();
    bool checkBuffers();
    bool loadModel();
    bool checkBufferViews();
    bool readNodes();
    bool readNode(int index, int parent);
    bool readMeshes();
    bool readSkins();
    bool readSkin(int nodeIndex);
    void keepSource(SceneDescription& out);

    std::string m_path;
    Progress m_progress;
    std::string m_problem;
    std::vector<std::string> m_warnings;

    std::vector<unsigned char> m_bytes;
    GlbChunks m_chunks;
    bool m_binary = false;
    Json m_document;
    std::uint64_t m_inputBytes = 0;
    std::unique_ptr<ReadBudget> m_budget;
    tinygltf::Model m_model;

    SceneDescription m_scene;
    int m_sceneIndex = -1;
    std::vector<int> m_nodeOf; // glTF node -> description node, -1 when not in the scene
    std::vector<int> m_meshOf; // glTF mesh -> description mesh, -1 when not shown
    std::vector<std::vector<PrimitiveSpan>> m_spans;
};

FileResult GltfReading::run(SceneDescription& out) {
    bool ok = false;
    try {
        ok = loadDocument() && checkExtensions() && checkBuffers() && loadModel() &&
             checkBufferViews() && readNodes() && readMeshes() && readSkins();
    } catch (const std::bad_alloc&) {
        m_problem = "there is not enough memory for it";
    } catch (const Json::exception& error) {
        m_problem = std::string("its document is malformed (") + error.what() + ")";
    }
    if (!ok) {
        if (m_progress.cancelled())
            return FileResult::cancelled(readCancelled(m_path));
        return FileResult::failed(readFailure(m_path, m_problem));
    }
    m_progress.stage(0.95, 1.0, "Keeping the document");
    keepSource(out);
    m_progress.step(1, 1);
    FileResult result = FileResult::done();
    result.warnings = std::move(m_warnings);
    return result;
}

bool GltfReading::loadDocument() {
    if (!m_progress.stage(0.0, 0.15, "Reading the file"))
        return false;
    std::string problem;
    if (!readWholeFile(m_path, kMaxFileBytes, m_bytes, problem))
        return fail(problem);
    m_inputBytes = m_bytes.size();
    const char* text = reinterpret_cast<const char*>(m_bytes.data());
    std::size_t size = m_bytes.size();
    m_binary = looksLikeGlb(m_bytes);
    if (m_binary) {
        if (!splitGlb(m_bytes, m_chunks, problem))
            return fail(problem);
        text = reinterpret_cast<const char*>(m_chunks.json);
        size = m_chunks.jsonSize;
    }
    if (!parseJsonDocument(text, size, m_document, problem))
        return fail(problem);
    if (!m_document.is_object())
        return fail("its JSON is not an object");
    return m_progress.step(1, 1);
}

bool GltfReading::checkExtensions() {
    if (!m_document.contains("extensionsRequired") || !m_document["extensionsRequired"].is_array())
        return true;
    for (const Json& name : m_document["extensionsRequired"])
        for (const char* unreadable : kUnreadableExtensions)
            if (name == unreadable)
                return fail(std::string("it requires the extension ") + unreadable +
                            ", whose compressed geometry cannot be read");
    return true;
}

// Gives precise messages for buffers whose data is missing or short, before the glTF library
// loads them, and adds the sizes of external buffers to the input.
bool GltfReading::checkBuffers() {
    if (!m_document.contains("buffers"))
        return true;
    const Json& buffers = m_document["buffers"];
    if (!buffers.is_array())
        return fail("its \"buffers\" is not a list");
    const QDir folder = QFileInfo(QString::fromStdString(m_path)).absoluteDir();
    for (std::size_t b = 0; b < buffers.size(); ++b) {
        const Json& buffer = buffers[b];
        const std::string name = "buffer " + std::to_string(b);
        if (!buffer.is_object() || !buffer.contains("byteLength") ||
            !buffer["byteLength"].is_number_unsigned())
            return fail(name + " has no valid byteLength");
        const std::uint64_t length = buffer["byteLength"].get<std::uint64_t>();
        if (!buffer.contains("uri")) {
            if (!m_binary || b != 0 || m_chunks.bin == nullptr)
                return fail(name + " has no data: it has no uri and no BIN chunk holds it");
            if (m_chunks.binSize < length)
                return fail(name + " declares " + std::to_string(length) +
                            " bytes, the BIN chunk holds " + std::to_string(m_chunks.binSize));
            continue;
        }
        if (!buffer["uri"].is_string())
            return fail(name + " has a uri that is not text");
        const std::string uri = buffer["uri"].get<std::string>();
        if (uri.rfind("data:", 0) == 0)
            continue; // embedded: decoded and checked by the glTF library
        const QString file =
            folder.absoluteFilePath(QUrl::fromPercentEncoding(QByteArray::fromStdString(uri)));
        const QFileInfo info(file);
        if (!info.isFile())
            return fail(name + " refers to \"" + uri + "\", which does not exist");
        if (static_cast<std::uint64_t>(info.size()) < length)
            return fail(name + " refers to \"" + uri + "\", which has " +
                        std::to_string(info.size()) + " bytes, fewer than the " +
                        std::to_string(length) + " it declares");
        m_inputBytes += static_cast<std::uint64_t>(info.size());
    }
    return true;
}

bool GltfReading::loadModel() {
    if (!m_progress.stage(0.15, 0.3, "Reading the document"))
        return false;
    m_budget = std::make_unique<ReadBudget>(m_inputBytes);
    FileAccess access;
    access.folder = QDir::cleanPath(QFileInfo(QString::fromStdString(m_path)).absolutePath());
    for (const Json& buffer : m_document.value("buffers", Json::array()))
        access.maxBytes = std::max(access.maxBytes, buffer.value("byteLength", std::uint64_t(0)));

    tinygltf::TinyGLTF loader;
    loader.SetFsCallbacks({&fileExists, &keepPath, &readFile, &refuseWrite, &access});
    loader.SetImageLoader(&keepImageUndecoded, nullptr);
    std::string error;
    std::string warning;
    const std::string folder = access.folder.toStdString();
    bool loaded =
        m_binary ? loader.LoadBinaryFromMemory(&m_model, &error, &warning, m_bytes.data(),
                                               static_cast<unsigned int>(m_bytes.size()), folder)
                 : loader.LoadASCIIFromString(&m_model, &error, &warning,
                                              reinterpret_cast<const char*>(m_bytes.data()),
                                              static_cast<unsigned int>(m_bytes.size()), folder);
    // The file's bytes are in the model and the document now.
    std::vector<unsigned char>().swap(m_bytes);
    m_chunks = GlbChunks{};
    if (!loaded)
        return fail(firstLine(error));
    return m_progress.step(1, 1);
}

bool GltfReading::checkBufferViews() {
    for (std::size_t v = 0; v < m_model.bufferViews.size(); ++v) {
        const tinygltf::BufferView& view = m_model.bufferViews[v];
        if (view.buffer < 0 || view.buffer >= static_cast<int>(m_model.buffers.size()))
            return fail("buffer view " + std::to_string(v) +
                        " refers to a buffer that does not exist");
        const std::size_t size = m_model.buffers[view.buffer].data.size();
        if (view.byteOffset > size || view.byteLength > size - view.byteOffset)
            return fail("buffer view " + std::to_string(v) + " runs past the end of buffer " +
                        std::to_string(view.buffer));
    }
    return true;
}

bool GltfReading::readNodes() {
    const int count = static_cast<int>(m_model.nodes.size());
    // Each node may have one parent; the check also rules out loops among reachable nodes.
    std::vector<int> parent(count, -1);
    for (int n = 0; n < count; ++n) {
        for (int child : m_model.nodes[n].children) {
            if (child < 0 || child >= count)
                return fail("node " + std::to_string(n) + " has child " + std::to_string(child) +
                            ", which does not exist");
            if (parent[child] >= 0 || child == n)
                return fail("node " + std::to_string(child) + " has more than one parent");
            parent[child] = n;
        }
    }
    std::vector<int> roots;
    if (m_model.scenes.empty()) {
        for (int n = 0; n < count; ++n)
            if (parent[n] < 0)
                roots.push_back(n);
    } else {
        m_sceneIndex = m_model.defaultScene >= 0 ? m_model.defaultScene : 0;
        if (m_sceneIndex >= static_cast<int>(m_model.scenes.size()))
            return fail("its default scene " + std::to_string(m_sceneIndex) + " does not exist");
        roots = m_model.scenes[m_sceneIndex].nodes;
    }
    m_nodeOf.assign(count, -1);
    for (int root : roots) {
        if (root < 0 || root >= count || parent[root] >= 0 || m_nodeOf[root] >= 0)
            return fail("its scene lists node " + std::to_string(root) +
                        ", which does not exist, is not a root or is listed twice");
        if (!readNode(root, -1))
            return false;
    }
    return true;
}

// Adds a node and its subtree, parents before children, without recursion (chains of nodes may
// be long).
bool GltfReading::readNode(int index, int parent) {
    std::vector<std::pair<int, int>> pending{{index, parent}};
    while (!pending.empty()) {
        auto [n, p] = pending.back();
        pending.pop_back();
        const tinygltf::Node& source = m_model.nodes[n];
        SceneNode node;
        node.name = source.name;
        node.parent = p;
        node.sourceIndex = n;
        node.lockInfluenceWeights = jointLockOfNode(m_document.at("nodes").at(n));
        NodeTransform& t = node.transform;
        if (!source.matrix.empty()) {
            if (source.matrix.size() != 16)
                return fail("node " + std::to_string(n) + " has a matrix without 16 numbers");
            t.form = NodeTransform::Form::kMatrix;
            std::copy(source.matrix.begin(), source.matrix.end(), t.matrix.begin());
        }
        if ((!source.translation.empty() && source.translation.size() != 3) ||
            (!source.rotation.empty() && source.rotation.size() != 4) ||
            (!source.scale.empty() && source.scale.size() != 3))
            return fail("node " + std::to_string(n) +
                        " has a translation, rotation or scale of the wrong size");
        std::copy(source.translation.begin(), source.translation.end(), t.translation.begin());
        std::copy(source.rotation.begin(), source.rotation.end(), t.rotation.begin());
        std::copy(source.scale.begin(), source.scale.end(), t.scale.begin());
        m_nodeOf[n] = static_cast<int>(m_scene.nodes.size());
        m_scene.nodes.push_back(std::move(node));
        // Reversed, so that children come out in the document's order.
        for (auto child = source.children.rbegin(); child != source.children.rend(); ++child)
            pending.push_back({*child, m_nodeOf[n]});
    }
    return true;
}

bool GltfReading::readMeshes() {
    GltfAccessorReader accessors(m_model, *m_budget);
    const int meshCount = static_cast<int>(m_model.meshes.size());
    m_meshOf.assign(meshCount, -1);
    m_spans.assign(meshCount, {});
    const std::size_t nodeCount = m_scene.nodes.size();
    for (std::size_t d = 0; d < nodeCount; ++d) {
        if (!m_progress.stage(0.3 + 0.3 * d / nodeCount, 0.3 + 0.3 * (d + 1) / nodeCount,
                              "Reading meshes"))
            return false;
        SceneNode& node = m_scene.nodes[d];
        const int mesh = m_model.nodes[node.sourceIndex].mesh;
        if (mesh < 0)
            continue;
        if (mesh >= meshCount)
            return fail("node " + std::to_string(node.sourceIndex) + " shows mesh " +
                        std::to_string(mesh) + ", which does not exist");
        if (m_meshOf[mesh] < 0) {
            SceneMesh read;
            if (!readGltfMesh(m_model, mesh, accessors, read, m_spans[mesh], m_problem))
                return false;
            m_meshOf[mesh] = static_cast<int>(m_scene.meshes.size());
            m_scene.meshes.push_back(std::move(read));
        }
        node.mesh = m_meshOf[mesh];
    }
    return true;
}

bool GltfReading::readSkins() {
    const std::size_t nodeCount = m_scene.nodes.size();
    for (std::size_t d = 0; d < nodeCount; ++d) {
        if (!m_progress.stage(0.6 + 0.35 * d / nodeCount, 0.6 + 0.35 * (d + 1) / nodeCount,
                              "Reading skin weights"))
            return false;
        if (!readSkin(static_cast<int>(d)))
            return false;
    }
    return true;
}

bool GltfReading::readSkin(int nodeIndex) {
    const int gltfNode = m_scene.nodes[nodeIndex].sourceIndex;
    const int skinIndex = m_model.nodes[gltfNode].skin;
    const int mesh = m_model.nodes[gltfNode].mesh;
    if (skinIndex < 0 || mesh < 0)
        return true;
    const std::string name = "skin " + std::to_string(skinIndex);
    if (skinIndex >= static_cast<int>(m_model.skins.size()))
        return fail("node " + std::to_string(gltfNode) + " uses " + name +
                    ", which does not exist");
    const tinygltf::Skin& source = m_model.skins[skinIndex];
    if (source.joints.empty())
        return fail(name + " has no joints");

    SceneSkin skin;
    skin.meshNode = nodeIndex;
    skin.sourceIndex = skinIndex;
    for (int joint : source.joints) {
        if (joint < 0 || joint >= static_cast<int>(m_nodeOf.size()) || m_nodeOf[joint] < 0)
            return fail(name + " has joint " + std::to_string(joint) +
                        ", which is not in the scene");
        if (std::find(skin.joints.begin(), skin.joints.end(), m_nodeOf[joint]) != skin.joints.end())
            return fail(name + " lists joint " + std::to_string(joint) + " twice");
        skin.joints.push_back(m_nodeOf[joint]);
        m_scene.nodes[m_nodeOf[joint]].isJoint = true;
    }
    GltfAccessorReader accessors(m_model, *m_budget);
    const int vertexCount = m_scene.meshes[m_meshOf[mesh]].vertexCount();
    if (!readGltfInverseBindMatrices(m_model, skinIndex, accessors, skin.inverseBindMatrices,
                                     m_problem) ||
        !readGltfSkinWeights(m_model, mesh, m_spans[mesh], static_cast<int>(source.joints.size()),
                             accessors, skin.weights, m_problem))
        return false;

    std::string problem;
    if (!skinLocksFromSkin(m_document.at("skins").at(skinIndex), gltfNode, vertexCount, skin.locks,
                           problem))
        m_warnings.push_back("The locks stored in " + name + " were ignored: " + problem + ".");
    m_scene.skins.push_back(std::move(skin));
    return true;
}

void GltfReading::keepSource(SceneDescription& out) {
    auto source = std::make_shared<GltfSource>();
    // Embedded buffer data lives on decoded in `buffers`; the writer embeds it anew.
    if (m_document.contains("buffers"))
        for (Json& buffer : m_document["buffers"])
            if (buffer.contains("uri") && buffer["uri"].get<std::string>().rfind("data:", 0) == 0)
                buffer.erase("uri");
    source->document = std::move(m_document);
    for (tinygltf::Buffer& buffer : m_model.buffers)
        source->buffers.push_back(std::move(buffer.data));
    source->asRead = m_scene;
    source->primitiveSpans = std::move(m_spans);
    source->scene = m_sceneIndex;
    out = std::move(m_scene);
    out.source = std::move(source);
}

} // namespace

FileResult readGltf(const std::string& path, SceneDescription& scene, ProgressReporter& reporter) {
    return GltfReading(path, reporter).run(scene);
}

} // namespace runtime
