#include "document/NativeSceneReader.h"

#include "document/NativeSceneFormat.h"
#include "files/InputFile.h"
#include "files/JsonInput.h"
#include "files/SceneDescription.h"
#include "scene/MeshData.h"
#include "scene/PlugPath.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <new>

namespace runtime {

namespace {

constexpr std::uint64_t kMaxFileBytes = 0xFFFFFFFFull;

const NativeJson* member(const NativeJson& object, const char* key) {
    auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

class NativeReading {
public:
    NativeReading(const std::string& path, Scene& target, ProgressReporter& reporter)
        : m_path(path), m_scene(target), m_progress(reporter) {}

    FileResult run();

private:
    bool fail(const std::string& problem) {
        m_problem = problem;
        return false;
    }
    std::string where(int index) const;
    bool readDocument(const NativeJson& document);
    bool readHeader(const NativeJson& document);
    bool readNode(int index, const NativeJson& json);
    bool createNode(int index, const NativeJson& json);
    bool addAttributes(int index, const NativeJson& definitions);
    bool readValues(int index, const NativeJson& values);
    bool readTree(const NativeJson& json, const AttributeDef& def, std::vector<int>& indices,
                  bool arrayLevel);
    bool readMesh(int index, const NativeJson& json);
    bool readSkin(int index, const NativeJson& json);
    bool readWeights(int index, const NativeJson& json, unsigned influenceCount,
                     SkinWeights& weights);
    bool readConnection(int index, const NativeJson& json);
    bool checkSkinSizes();

    std::string m_path;
    Scene& m_scene;
    Progress m_progress;
    std::string m_problem;
    std::vector<NodePtr> m_nodes;
    // The level of each node in the hierarchy, 1 for a root.
    std::vector<int> m_depths;
    // While reading one node's values: the node and the text that names the value read.
    NodePtr m_node;
    std::string m_valueName;
};

FileResult NativeReading::run() {
    std::vector<unsigned char> bytes;
    std::string problem;
    m_progress.stage(0.0, 0.1, "Reading the file");
    if (!readWholeFile(m_path, kMaxFileBytes, bytes, problem))
        return FileResult::failed(readFailure(m_path, problem));
    if (!m_progress.stage(0.1, 0.5, "Reading the scene's text"))
        return FileResult::cancelled(readCancelled(m_path));
    try {
        NativeJson document;
        if (!parseJsonDocument(reinterpret_cast<const char*>(bytes.data()), bytes.size(), document,
                               problem))
            return FileResult::failed(readFailure(m_path, problem));
        std::vector<unsigned char>().swap(bytes);
        if (!readDocument(document))
            return m_progress.cancelled() ? FileResult::cancelled(readCancelled(m_path))
                                          : FileResult::failed(readFailure(m_path, m_problem));
    } catch (const std::bad_alloc&) {
        return FileResult::failed(readFailure(m_path, "there is not enough memory"));
    }
    return FileResult::done();
}

std::string NativeReading::where(int index) const {
    std::string text = "node " + std::to_string(index);
    if (index < static_cast<int>(m_nodes.size()))
        text += " (\"" + m_nodes[index]->name() + "\")";
    return text;
}

bool NativeReading::readDocument(const NativeJson& document) {
    if (!readHeader(document))
        return false;
    const NativeJson& nodes = document["nodes"];
    const NativeJson& connections = document["connections"];
    const std::uint64_t total = nodes.size() * 2 + connections.size();
    m_progress.stage(0.5, 1.0, "Building the scene");
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (!readNode(static_cast<int>(i), nodes[i]) || !m_progress.step(i + 1, total))
            return false;
    // Skins come once every node exists: influences may come after their cluster.
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const NativeJson* skin = member(nodes[i], "skin");
        if (skin && !readSkin(static_cast<int>(i), *skin))
            return false;
        if (!m_progress.step(nodes.size() + i + 1, total))
            return false;
    }
    for (std::size_t c = 0; c < connections.size(); ++c)
        if (!readConnection(static_cast<int>(c), connections[c]) ||
            !m_progress.step(nodes.size() * 2 + c + 1, total))
            return false;
    return checkSkinSizes();
}

bool NativeReading::readHeader(const NativeJson& document) {
    if (!document.is_object())
        return fail("it is not a scene file (its JSON is not an object)");
    const NativeJson* format = member(document, "format");
    if (!format || *format != kNativeSceneFormat)
        return fail(std::string("it is not a native scene file (its \"format\" is not \"") +
                    kNativeSceneFormat + "\")");
    const NativeJson* version = member(document, "version");
    long long number = 0;
    if (!version || !readInteger(*version, 0, LLONG_MAX, number))
        return fail("it has no version number");
    if (number != kNativeSceneVersion)
        return fail("it is of version " + std::to_string(number) +
                    ", and this host reads version " + std::to_string(kNativeSceneVersion));
    for (const char* key : {"nodes", "connections"}) {
        const NativeJson* list = member(document, key);
        if (!list || !list->is_array())
            return fail(std::string("it has no list of ") + key);
    }
    return true;
}

bool NativeReading::readNode(int index, const NativeJson& json) {
    if (!json.is_object())
        return fail(where(index) + " is not an object");
    if (!createNode(index, json))
        return false;
    const NativeJson* attributes = member(json, "attributes");
    if (attributes && !addAttributes(index, *attributes))
        return false;
    const NativeJson* values = member(json, "values");
    if (values && !readValues(index, *values))
        return false;
    const NativeJson* mesh = member(json, "mesh");
    if (mesh && !readMesh(index, *mesh))
        return false;
    if (member(json, "skin") && !m_nodes[index]->skinCluster())
        return fail(where(index) + " has skin weights but is no skin cluster");
    return true;
}

bool NativeReading::createNode(int index, const NativeJson& json) {
    const NativeJson* type = member(json, "type");
    const NativeJson* name = member(json, "name");
    if (!type || !type->is_string())
        return fail(where(index) + " has no type");
    if (!name || !name->is_string() || name->get_ref<const std::string&>().empty())
        return fail(where(index) + " has no name");
    const NodeType* nodeType = m_scene.nodeType(type->get<std::string>());
    if (!nodeType || nodeType->isAbstract())
        return fail(where(index) + " is of the unknown type \"" + type->get<std::string>() + "\"");
    Node* parent = nullptr;
    int depth = 1;
    if (const NativeJson* parentJson = member(json, "parent")) {
        long long parentIndex = 0;
        if (!readInteger(*parentJson, 0, index - 1, parentIndex))
            return fail(where(index) + " has a parent that is not a node before it");
        parent = m_nodes[parentIndex].get();
        depth = m_depths[parentIndex] + 1;
        if (depth > kMaxHierarchyDepth)
            return fail(tooDeepProblem(index));
    } else if (nodeType->isShape()) {
        return fail(where(index) + " is a shape without a parent");
    }
    HStatus status;
    NodePtr node = m_scene.createNode(nodeType->name(), name->get<std::string>(), parent, &status);
    if (!node)
        return fail(where(index) + ": " + status.errorString().str());
    if (node->name() != name->get<std::string>())
        return fail(where(index) + " has the name \"" + name->get<std::string>() +
                    "\", which another node has already");
    m_nodes.push_back(node);
    m_depths.push_back(depth);
    return true;
}

bool NativeReading::addAttributes(int index, const NativeJson& definitions) {
    if (!definitions.is_array())
        return fail(where(index) + " has \"attributes\" that are not a list");
    for (const NativeJson& json : definitions) {
        std::string problem;
        AttributePtr attribute = readDefinition(json, problem);
        if (!attribute)
            return fail(where(index) + ": " + problem);
        HStatus added = m_scene.addAttribute(*m_nodes[index], attribute);
        if (!added)
            return fail(where(index) + ": " + added.errorString().str());
    }
    return true;
}

bool NativeReading::readValues(int index, const NativeJson& values) {
    if (!values.is_object())
        return fail(where(index) + " has \"values\" that are not an object");
    m_node = m_nodes[index];
    for (auto it = values.begin(); it != values.end(); ++it) {
        const AttributeDef* def = m_node->findAttribute(it.key());
        if (!def || def->parentInTree())
            return fail(where(index) + " has no attribute \"" + it.key() + "\"");
        m_valueName = it.key();
        std::vector<int> indices{Plug::kOpen};
        if (!readTree(it.value(), *def, indices, true))
            return fail(where(index) + ": " + m_problem);
    }
    m_node.reset();
    return true;
}

bool NativeReading::readTree(const NativeJson& json, const AttributeDef& def,
                             std::vector<int>& indices, bool arrayLevel) {
    const Plug plug(m_node, &def, indices);
    if (def.isArray() && arrayLevel) {
        if (!json.is_object())
            return fail("the elements of \"" + m_valueName + "\" are not an object");
        plug.storedTreeForWrite();
        for (auto it = json.begin(); it != json.end(); ++it) {
            const std::string& key = it.key();
            if (key.empty() || key.size() > 10 ||
                key.find_first_not_of("0123456789") != std::string::npos ||
                std::stoll(key) > INT_MAX || (key.size() > 1 && key[0] == '0'))
                return fail("\"" + m_valueName + "\" has the element index \"" + key +
                            "\", which is not a number from 0 to " + std::to_string(INT_MAX));
            indices.back() = std::stoi(key);
            const std::string name = m_valueName;
            m_valueName += "[" + key + "]";
            const bool read = readTree(it.value(), def, indices, false);
            m_valueName = name;
            if (!read)
                return false;
        }
        indices.back() = Plug::kOpen;
        return true;
    }
    if (def.kind() == AttributeKind::kCompound) {
        if (!json.is_object())
            return fail("the children of \"" + m_valueName + "\" are not an object");
        plug.storedTreeForWrite();
        for (auto it = json.begin(); it != json.end(); ++it) {
            const AttributeDef* child = nullptr;
            for (size_t c = 0; c < def.childCount() && !child; ++c)
                if (def.child(c)->longName() == it.key())
                    child = def.child(c);
            if (!child)
                return fail("\"" + m_valueName + "\" has no child \"" + it.key() + "\"");
            const std::string name = m_valueName;
            m_valueName += "." + it.key();
            indices.push_back(Plug::kOpen);
            const bool read = readTree(it.value(), *child, indices, true);
            indices.pop_back();
            m_valueName = name;
            if (!read)
                return false;
        }
        return true;
    }
    if (json.is_null()) {
        plug.storedTreeForWrite();
        return true;
    }
    Value value;
    std::string problem;
    if (!readValue(json, def.valueType(), value, problem))
        return fail("the value of \"" + m_valueName + "\" is wrong: " + problem);
    HStatus status = m_scene.setValue(plug, value);
    return status || fail("\"" + m_valueName + "\": " + status.errorString().str());
}

bool readMatrix(const NativeJson& json, Matrix& matrix) {
    std::vector<double> values;
    if (!readList(json, values) || values.size() != 16)
        return false;
    matrix = Matrix::fromColumnMajor(values.data());
    return true;
}

// A list of ints that may be missing (json null).
bool readInts(const NativeJson* json, std::vector<int>& values) {
    return json && readList(*json, values);
}

bool NativeReading::readMesh(int index, const NativeJson& json) {
    Node& node = *m_nodes[index];
    if (!node.mesh())
        return fail(where(index) + " has mesh data but is no mesh");
    if (!json.is_object())
        return fail(where(index) + " has mesh data that is not an object");
    std::vector<double> coordinates;
    MeshGeometry geometry;
    const NativeJson* points = member(json, "points");
    if (!points || !readList(*points, coordinates) || coordinates.size() % 3 != 0)
        return fail(where(index) + " has \"points\" that are not a list of x, y, z numbers");
    if (!readInts(member(json, "polygonSizes"), geometry.polygonSizes) ||
        !readInts(member(json, "polygonVertices"), geometry.polygonVertices))
        return fail(where(index) + " has polygons that are not lists of whole numbers");
    geometry.points.reserve(coordinates.size() / 3);
    for (std::size_t i = 0; i < coordinates.size(); i += 3)
        geometry.points.emplace_back(coordinates[i], coordinates[i + 1], coordinates[i + 2]);
    HStatus status = m_scene.setMeshGeometry(node, std::move(geometry));
    return status || fail(where(index) + ": " + status.errorString().str());
}

bool NativeReading::readSkin(int index, const NativeJson& json) {
    if (!json.is_object())
        return fail(where(index) + " has skin data that is not an object");
    const NativeJson* influencesJson = member(json, "influences");
    const NativeJson* matricesJson = member(json, "bindPreMatrices");
    std::vector<int> influenceIndices;
    const int nodeCount = static_cast<int>(m_nodes.size());
    if (!readInts(influencesJson, influenceIndices) ||
        std::any_of(influenceIndices.begin(), influenceIndices.end(),
                    [nodeCount](int node) { return node < 0 || node >= nodeCount; }))
        return fail(where(index) + " has influences that are not nodes of the file");
    if (!matricesJson || !matricesJson->is_array() ||
        matricesJson->size() != influenceIndices.size())
        return fail(where(index) + " needs one bind pre-matrix per influence");
    std::vector<NodePtr> influences;
    std::vector<Matrix> bindPre(influenceIndices.size());
    for (std::size_t k = 0; k < influenceIndices.size(); ++k) {
        influences.push_back(m_nodes[influenceIndices[k]]);
        if (!readMatrix((*matricesJson)[k], bindPre[k]))
            return fail(where(index) + " has a bind pre-matrix that is not 16 numbers");
    }
    Matrix geometryMatrix;
    const NativeJson* geometryJson = member(json, "geometryMatrix");
    if (!geometryJson || !readMatrix(*geometryJson, geometryMatrix))
        return fail(where(index) + " has a geometry matrix that is not 16 numbers");
    SkinClusterData& data = *m_nodes[index]->skinCluster();
    HStatus status = data.setInfluences(std::move(influences), std::move(bindPre));
    if (!status)
        return fail(where(index) + ": " + status.errorString().str());
    data.setGeometryMatrix(geometryMatrix);
    const NativeJson* weightsJson = member(json, "weights");
    if (!weightsJson || !weightsJson->is_object() ||
        !readWeights(index, *weightsJson, data.influenceCount(), data.weights()))
        return m_problem.empty() ? fail(where(index) + " has no weights") : false;
    m_scene.notify({SceneChange::kWeightsChanged, {m_nodes[index]}, Plug()});
    return true;
}

bool NativeReading::readWeights(int index, const NativeJson& json, unsigned influenceCount,
                                SkinWeights& weights) {
    std::vector<std::uint16_t> counts, influences;
    std::vector<double> values;
    const NativeJson* countsJson = member(json, "counts");
    const NativeJson* influencesJson = member(json, "influences");
    const NativeJson* valuesJson = member(json, "values");
    if (!countsJson || !readList(*countsJson, counts) || !influencesJson ||
        !readList(*influencesJson, influences) || !valuesJson || !readList(*valuesJson, values))
        return fail(where(index) + " has weight lists (\"counts\", \"influences\", \"values\") "
                                   "that are missing or hold numbers out of range");
    if (influences.size() != values.size())
        return fail(where(index) + " has " + std::to_string(influences.size()) +
                    " weight influences but " + std::to_string(values.size()) + " weight values");
    weights = SkinWeights(static_cast<unsigned>(counts.size()));
    weights.reserveEntries(values.size());
    std::vector<char> seen(influenceCount, 0);
    std::size_t entry = 0;
    for (std::size_t v = 0; v < counts.size(); ++v) {
        const std::size_t count = counts[v];
        if (count > influenceCount || count > values.size() - entry)
            return fail(where(index) + " has a weight count for vertex " + std::to_string(v) +
                        " that is out of range");
        const SkinWeights::Influence* vertexInfluences = influences.data() + entry;
        if (!std::all_of(values.data() + entry, values.data() + entry + count,
                         [](double w) { return std::isfinite(w); }))
            return fail(where(index) + " has a weight that is not finite on vertex " +
                        std::to_string(v));
        for (std::size_t i = 0; i < count; ++i) {
            if (vertexInfluences[i] >= influenceCount || seen[vertexInfluences[i]])
                return fail(where(index) + " has an influence out of range or twice on vertex " +
                            std::to_string(v));
            seen[vertexInfluences[i]] = 1;
        }
        for (std::size_t i = 0; i < count; ++i)
            seen[vertexInfluences[i]] = 0;
        weights.assign(static_cast<unsigned>(v), vertexInfluences, values.data() + entry,
                       static_cast<unsigned>(count));
        entry += count;
    }
    if (entry != values.size())
        return fail(where(index) + " has " + std::to_string(values.size() - entry) +
                    " weights beyond its counts");
    return true;
}

bool NativeReading::readConnection(int index, const NativeJson& json) {
    const std::string what = "connection " + std::to_string(index);
    const int nodeCount = static_cast<int>(m_nodes.size());
    long long source = 0, destination = 0;
    if (!json.is_array() || json.size() != 4 || !json[1].is_string() || !json[3].is_string())
        return fail(what + " is not [node, plug, node, plug]");
    if (!readInteger(json[0], 0, nodeCount - 1, source) ||
        !readInteger(json[2], 0, nodeCount - 1, destination))
        return fail(what + " refers to a node that is not in the file");
    Plug plugs[2];
    const long long ends[2] = {source, destination};
    for (int end = 0; end < 2; ++end) {
        PlugPathText path;
        HStatus status = parsePlugPath("node." + json[end * 2 + 1].get<std::string>(), path);
        if (status) {
            path.object = m_nodes[ends[end]]->fullPathName();
            plugs[end] = findPlug(m_scene, path, &status);
        }
        if (!status)
            return fail(what + ": " + status.errorString().str());
    }
    HStatus status = m_scene.connect(plugs[0], plugs[1]);
    return status || fail(what + ": " + status.errorString().str());
}

bool NativeReading::checkSkinSizes() {
    for (int i = 0; i < static_cast<int>(m_nodes.size()); ++i) {
        const SkinClusterData* data = m_nodes[i]->skinCluster();
        NodePtr geometry = data ? skinClusterGeometry(*m_nodes[i]) : nullptr;
        if (!geometry)
            continue;
        const unsigned vertices = geometry->mesh()->vertexCount();
        if (data->weights().vertexCount() != vertices)
            return fail(where(i) + " has weights for " +
                        std::to_string(data->weights().vertexCount()) +
                        " vertices, and its mesh \"" + geometry->name() + "\" has " +
                        std::to_string(vertices));
    }
    return true;
}

} // namespace

FileResult readNativeScene(const std::string& path, Scene& target, ProgressReporter& reporter) {
    return NativeReading(path, target, reporter).run();
}

} // namespace runtime
