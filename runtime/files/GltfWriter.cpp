#include "files/GltfWriter.h"

#include "files/AtomicFile.h"
#include "files/GlbContainer.h"
#include "files/GltfAccessorData.h"
#include "files/GltfBinaryPlan.h"
#include "files/GltfLockExtras.h"
#include "files/GltfSource.h"
#include "files/GltfWeightSets.h"

#include <QByteArray>
#include <QFileInfo>
#include <algorithm>
#include <map>
#include <new>
#include <set>

namespace runtime {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kGenerator = "vorel-host";
// A binary glTF file records its length in 32 bits.
constexpr std::uint64_t kMaxGlbBytes = 0xFFFFFFFFull;
// Base64 text of embedded data must fit a QByteArray.
constexpr std::size_t kMaxEmbeddedBytes = 0x50000000;

std::string attributeSite(int mesh, int primitive, const std::string& attribute) {
    return "/meshes/" + std::to_string(mesh) + "/primitives/" + std::to_string(primitive) +
           "/attributes/" + attribute;
}

std::vector<int> intList(const Json& object, const char* key) {
    std::vector<int> values;
    if (object.contains(key) && object[key].is_array())
        for (const Json& value : object[key])
            if (value.is_number_integer())
                values.push_back(value.get<int>());
    return values;
}

void setOrErase(Json& object, const char* key, const std::vector<int>& values) {
    if (values.empty())
        object.erase(key);
    else
        object[key] = values;
}

// The highest n of the primitive's JOINTS_n attributes, plus one.
int setsOf(const Json& primitive) {
    int sets = 0;
    if (!primitive.contains("attributes"))
        return 0;
    for (auto it = primitive["attributes"].begin(); it != primitive["attributes"].end(); ++it)
        if (it.key().rfind("JOINTS_", 0) == 0)
            sets = std::max(sets, std::atoi(it.key().c_str() + 7) + 1);
    return sets;
}

void writeTransform(Json& node, const NodeTransform& t) {
    if (t.form == NodeTransform::Form::kMatrix) {
        for (const char* key : {"translation", "rotation", "scale"})
            node.erase(key);
        if (t.matrix == identityMatrix())
            node.erase("matrix");
        else
            node["matrix"] = t.matrix;
        return;
    }
    node.erase("matrix");
    const NodeTransform defaults;
    auto write = [&](const char* key, const auto& value, const auto& standard) {
        if (value != standard || node.contains(key))
            node[key] = value;
    };
    write("translation", t.translation, defaults.translation);
    write("rotation", t.rotation, defaults.rotation);
    write("scale", t.scale, defaults.scale);
}

class GltfWriting {
public:
    GltfWriting(const SceneDescription& scene, const std::string& path, ProgressReporter& reporter)
        : m_scene(scene), m_path(path), m_progress(reporter),
          m_binary(QFileInfo(QString::fromStdString(path)).suffix().toLower() == "glb") {}

    FileResult run();

private:
    bool fail(const std::string& problem) {
        m_problem = problem;
        return false;
    }
    void startDocument();
    bool placeNodes();
    void patchNode(int i);
    bool setExtrasKey(Json& object, const char* key, const Json* value);
    bool placeMeshes();
    int appendMesh(const SceneMesh& mesh);
    bool placeSkins();
    void writeHierarchy();
    bool writeWeights();
    void rewriteWeights(int gltfMesh, const std::vector<PrimitiveSpan>& spans,
                        const SceneSkin& skin, int jointCount);
    void writeMeshReferences();
    void writeLocks();
    void dropEmptyLists();
    FileResult save(const std::vector<unsigned char>& binary);

    const SceneDescription& m_scene;
    std::string m_path;
    Progress m_progress;
    bool m_binary;
    std::string m_problem;
    std::vector<std::string> m_warnings;

    const GltfSource* m_source = nullptr;
    SceneDescription m_empty;
    const SceneDescription* m_base = &m_empty;
    Json m_doc;
    std::vector<std::vector<unsigned char>> m_noBuffers;
    std::unique_ptr<GltfBinaryPlan> m_plan;

    // What was read, by index in the source document.
    std::map<int, int> m_baseNode;
    std::map<int, int> m_baseMesh;
    std::map<int, int> m_baseSkin;                         // glTF skin -> a skin read from it
    std::map<int, const SparseSkinWeights*> m_baseWeights; // glTF mesh -> the weights read on it

    std::vector<int> m_nodeIndex;  // description node -> glTF node
    std::vector<int> m_meshIndex;  // description mesh -> glTF mesh (-1: not written)
    std::vector<int> m_meshOfNode; // description node -> glTF mesh it shows (-1: none)
    std::vector<int> m_skinIndex;  // description skin -> glTF skin (-1: not written)
    std::map<int, std::vector<PrimitiveSpan>> m_spans; // glTF mesh -> its primitives' vertices
};

FileResult GltfWriting::run() {
    std::vector<unsigned char> binary;
    try {
        if (std::string problem = firstInconsistency(m_scene); !problem.empty())
            return FileResult::failed(
                writeFailure(m_path, "the scene is inconsistent: " + problem));
        m_progress.stage(0.0, 0.1, "Preparing the document");
        startDocument();
        if (!placeNodes() || !placeMeshes() || !placeSkins())
            return FileResult::failed(writeFailure(m_path, m_problem));
        writeHierarchy();
        if (!writeWeights())
            return FileResult::cancelled(writeCancelled(m_path));
        writeMeshReferences();
        writeLocks();
        if (!m_progress.stage(0.6, 0.7, "Laying out the data"))
            return FileResult::cancelled(writeCancelled(m_path));
        binary = m_plan->finish();
        dropEmptyLists();
        FileResult result = save(binary);
        if (result.ok())
            result.warnings = std::move(m_warnings);
        return result;
    } catch (const std::bad_alloc&) {
        return FileResult::failed(writeFailure(m_path, "there is not enough memory"));
    } catch (const Json::exception& error) {
        return FileResult::failed(writeFailure(
            m_path, std::string("its source document is malformed (") + error.what() + ")"));
    }
}

void GltfWriting::startDocument() {
    m_source = dynamic_cast<const GltfSource*>(m_scene.source.get());
    if (m_source) {
        m_doc = m_source->document;
        m_base = &m_source->asRead;
    } else {
        m_doc = {{"asset", {{"version", "2.0"}, {"generator", kGenerator}}}};
    }
    for (const char* key : {"nodes", "meshes", "skins"})
        if (!m_doc.contains(key))
            m_doc[key] = Json::array();
    m_plan = std::make_unique<GltfBinaryPlan>(m_doc, m_source ? m_source->buffers : m_noBuffers);

    const SceneDescription& base = *m_base;
    for (int n = 0; n < static_cast<int>(base.nodes.size()); ++n)
        m_baseNode[base.nodes[n].sourceIndex] = n;
    for (int m = 0; m < static_cast<int>(base.meshes.size()); ++m)
        m_baseMesh[base.meshes[m].sourceIndex] = m;
    for (int s = 0; s < static_cast<int>(base.skins.size()); ++s) {
        const SceneSkin& skin = base.skins[s];
        m_baseSkin.emplace(skin.sourceIndex, s);
        const int mesh = base.meshes[base.nodes[skin.meshNode].mesh].sourceIndex;
        m_baseWeights.emplace(mesh, &skin.weights);
    }
}

bool GltfWriting::placeNodes() {
    Json& nodes = m_doc["nodes"];
    std::set<int> taken;
    for (const SceneNode& node : m_scene.nodes) {
        const int source = m_source ? node.sourceIndex : -1;
        if (source >= 0) {
            if (!m_baseNode.count(source) || !taken.insert(source).second)
                return fail("a node refers to node " + std::to_string(source) +
                            " of the document it was read from, which was not read or is taken");
            m_nodeIndex.push_back(source);
        } else {
            m_nodeIndex.push_back(static_cast<int>(nodes.size()));
            nodes.push_back(Json::object());
        }
    }
    for (int i = 0; i < static_cast<int>(m_scene.nodes.size()); ++i)
        patchNode(i);
    return true;
}

void GltfWriting::patchNode(int i) {
    const SceneNode& node = m_scene.nodes[i];
    Json& json = m_doc["nodes"][m_nodeIndex[i]];
    auto found = m_baseNode.find(m_nodeIndex[i]);
    const SceneNode* base =
        m_source && node.sourceIndex >= 0 ? &m_base->nodes[found->second] : nullptr;
    if (!base || base->name != node.name) {
        if (node.name.empty())
            json.erase("name");
        else
            json["name"] = node.name;
    }
    if (!base || base->transform != node.transform)
        writeTransform(json, node.transform);
    if (!base || base->lockInfluenceWeights != node.lockInfluenceWeights) {
        const Json on = true;
        if (!setExtrasKey(json, kJointLockKey, node.lockInfluenceWeights ? &on : nullptr))
            m_warnings.push_back("The lock of joint \"" + node.name +
                                 "\" was not written: its extras are not an object.");
    }
}

// Sets (or, for a null value, removes) one key of an object's extras, keeping the others.
bool GltfWriting::setExtrasKey(Json& object, const char* key, const Json* value) {
    if (object.contains("extras") && !object["extras"].is_object())
        return false;
    if (value) {
        object["extras"][key] = *value;
        return true;
    }
    if (!object.contains("extras"))
        return true;
    object["extras"].erase(key);
    if (object["extras"].empty())
        object.erase("extras");
    return true;
}

bool GltfWriting::placeMeshes() {
    for (const SceneMesh& mesh : m_scene.meshes) {
        const int source = m_source ? mesh.sourceIndex : -1;
        if (source < 0) {
            m_meshIndex.push_back(appendMesh(mesh));
            continue;
        }
        auto found = m_baseMesh.find(source);
        if (found == m_baseMesh.end())
            return fail("a mesh refers to mesh " + std::to_string(source) +
                        " of the document it was read from, which was not read");
        const SceneMesh& base = m_base->meshes[found->second];
        if (base.vertexCount() != mesh.vertexCount() || base.polygonSizes != mesh.polygonSizes ||
            base.polygonVertices != mesh.polygonVertices) {
            m_warnings.push_back("The polygons of mesh \"" + mesh.name +
                                 "\" changed; it was written anew, without its materials.");
            m_meshIndex.push_back(appendMesh(mesh));
            continue;
        }
        m_meshIndex.push_back(source);
        m_spans[source] = m_source->primitiveSpans[source];
        if (base.name != mesh.name)
            m_doc["meshes"][source]["name"] = mesh.name;
        if (base.points == mesh.points)
            continue;
        for (int p = 0; p < static_cast<int>(m_spans[source].size()); ++p) {
            const PrimitiveSpan span = m_spans[source][p];
            if (span.vertexCount > 0)
                m_plan->replace(attributeSite(source, p, "POSITION"),
                                positionData(mesh.points, span.firstVertex, span.vertexCount));
        }
    }
    for (const SceneNode& node : m_scene.nodes)
        m_meshOfNode.push_back(node.mesh >= 0 ? m_meshIndex[node.mesh] : -1);
    return true;
}

int GltfWriting::appendMesh(const SceneMesh& mesh) {
    if (mesh.vertexCount() == 0)
        return -1; // glTF has no mesh without vertices
    Json& meshes = m_doc["meshes"];
    const int index = static_cast<int>(meshes.size());
    Json primitive = {{"attributes", Json::object()}};
    const std::vector<std::uint32_t> triangles = triangulate(mesh);
    if (triangles.empty())
        primitive["mode"] = 0; // points
    Json json = Json::object();
    if (!mesh.name.empty())
        json["name"] = mesh.name;
    json["primitives"] = Json::array({primitive});
    meshes.push_back(std::move(json));
    m_plan->replace(attributeSite(index, 0, "POSITION"),
                    positionData(mesh.points, 0, mesh.vertexCount()));
    if (!triangles.empty())
        m_plan->replace("/meshes/" + std::to_string(index) + "/primitives/0/indices",
                        indexData(triangles, mesh.vertexCount()));
    m_spans[index] = {{0, mesh.vertexCount()}};
    return index;
}

bool GltfWriting::placeSkins() {
    Json& skins = m_doc["skins"];
    std::map<int, int> users; // glTF skin -> description skins that came from it
    for (const SceneSkin& skin : m_scene.skins)
        if (m_source && skin.sourceIndex >= 0)
            ++users[skin.sourceIndex];
    std::set<int> skinned; // glTF nodes that get a skin
    for (const SceneSkin& skin : m_scene.skins) {
        const int node = m_nodeIndex[skin.meshNode];
        if (m_meshOfNode[skin.meshNode] < 0) {
            m_skinIndex.push_back(-1);
            continue;
        }
        std::vector<int> joints;
        for (int joint : skin.joints)
            joints.push_back(m_nodeIndex[joint]);
        int chosen = -1;
        const int source = m_source ? skin.sourceIndex : -1;
        if (source >= 0) {
            if (source >= static_cast<int>(skins.size()))
                return fail("a skin refers to skin " + std::to_string(source) +
                            " of the document it was read from, which does not exist");
            auto base = m_baseSkin.find(source);
            const bool same =
                intList(skins[source], "joints") == joints && base != m_baseSkin.end() &&
                m_base->skins[base->second].inverseBindMatrices == skin.inverseBindMatrices;
            if (same) {
                chosen = source;
            } else if (users[source] == 1) {
                skins[source]["joints"] = joints;
                m_plan->replace("/skins/" + std::to_string(source) + "/inverseBindMatrices",
                                inverseBindMatrixData(skin.inverseBindMatrices));
                chosen = source;
            }
        }
        if (chosen < 0) {
            chosen = static_cast<int>(skins.size());
            skins.push_back({{"joints", joints}});
            m_plan->replace("/skins/" + std::to_string(chosen) + "/inverseBindMatrices",
                            inverseBindMatrixData(skin.inverseBindMatrices));
        }
        m_skinIndex.push_back(chosen);
        skinned.insert(node);
        Json& json = m_doc["nodes"][node];
        if (!json.contains("skin") || json["skin"] != chosen)
            json["skin"] = chosen;
    }
    for (int node : m_nodeIndex)
        if (!skinned.count(node))
            m_doc["nodes"][node].erase("skin");
    return true;
}

void GltfWriting::writeHierarchy() {
    Json& nodes = m_doc["nodes"];
    const int count = static_cast<int>(nodes.size());
    std::vector<bool> placed(count, false);
    std::vector<bool> root(count, false);
    std::vector<std::vector<int>> wanted(count);
    std::vector<int> roots;
    for (int i = 0; i < static_cast<int>(m_scene.nodes.size()); ++i) {
        const int g = m_nodeIndex[i];
        placed[g] = true;
        const int parent = m_scene.nodes[i].parent;
        if (parent < 0) {
            root[g] = true;
            roots.push_back(g);
        } else {
            wanted[m_nodeIndex[parent]].push_back(g);
        }
    }
    // A child list keeps its order; children that left it go, new ones follow.
    auto arrange = [](const std::vector<int>& current, const std::vector<int>& want, auto keep) {
        std::vector<int> result;
        for (int n : current)
            if (keep(n))
                result.push_back(n);
        for (int n : want)
            if (std::find(result.begin(), result.end(), n) == result.end())
                result.push_back(n);
        return result;
    };
    for (int g = 0; g < count; ++g) {
        const std::vector<int> current = intList(nodes[g], "children");
        const std::vector<int>& want = wanted[g];
        std::vector<int> result =
            placed[g]
                ? arrange(
                      current, want,
                      [&](int n) { return std::find(want.begin(), want.end(), n) != want.end(); })
                : arrange(current, {}, [&](int n) { return n < 0 || n >= count || !placed[n]; });
        if (result != current)
            setOrErase(nodes[g], "children", result);
    }

    if (!m_doc.contains("scenes")) {
        if (m_source) {
            // Without scenes every parentless node is shown; a scene is needed only when the
            // roots changed.
            std::vector<int> parentless;
            std::vector<bool> child(count, false);
            for (int g = 0; g < count; ++g)
                for (int c : intList(nodes[g], "children"))
                    if (c >= 0 && c < count)
                        child[c] = true;
            for (int g = 0; g < count; ++g)
                if (!child[g])
                    parentless.push_back(g);
            std::vector<int> sortedRoots = roots;
            std::sort(sortedRoots.begin(), sortedRoots.end());
            if (parentless == sortedRoots)
                return;
        }
        m_doc["scenes"] = Json::array({{{"nodes", roots}}});
        m_doc["scene"] = 0;
        return;
    }
    const int shown = m_source && m_source->scene >= 0 ? m_source->scene : 0;
    Json& scenes = m_doc["scenes"];
    for (int s = 0; s < static_cast<int>(scenes.size()); ++s) {
        const std::vector<int> current = intList(scenes[s], "nodes");
        auto inRange = [&](int n) { return n >= 0 && n < count; };
        std::vector<int> result =
            s == shown
                ? arrange(current, roots, [&](int n) { return inRange(n) && root[n]; })
                : arrange(current, {}, [&](int n) { return !inRange(n) || !placed[n] || root[n]; });
        if (result != current)
            setOrErase(scenes[s], "nodes", result);
    }
}

bool GltfWriting::writeWeights() {
    std::map<int, std::vector<int>> users; // glTF mesh -> skins on it
    std::uint64_t total = 0;
    for (int s = 0; s < static_cast<int>(m_scene.skins.size()); ++s) {
        const int mesh = m_meshOfNode[m_scene.skins[s].meshNode];
        if (mesh >= 0 && m_skinIndex[s] >= 0) {
            users[mesh].push_back(s);
            total += static_cast<std::uint64_t>(m_scene.skins[s].weights.vertexCount());
        }
    }
    if (!m_progress.stage(0.1, 0.6, "Encoding skin weights"))
        return false;
    std::uint64_t done = 0;
    for (const auto& [mesh, skins] : users) {
        // Skins with the same weights can share the mesh's data; others need their own copy.
        std::vector<std::vector<int>> groups;
        for (int s : skins) {
            auto group = std::find_if(groups.begin(), groups.end(), [&](const std::vector<int>& g) {
                return m_scene.skins[g.front()].weights.sameWeights(m_scene.skins[s].weights);
            });
            if (group == groups.end())
                groups.push_back({s});
            else
                group->push_back(s);
        }
        auto base = m_baseWeights.find(mesh);
        auto unchanged = [&](const std::vector<int>& group) {
            return base != m_baseWeights.end() &&
                   m_scene.skins[group.front()].weights.sameWeights(*base->second);
        };
        bool meshTaken = std::any_of(groups.begin(), groups.end(), unchanged);
        for (const std::vector<int>& group : groups) {
            if (unchanged(group))
                continue;
            int target = mesh;
            if (meshTaken) {
                Json copy = m_doc["meshes"][mesh];
                target = static_cast<int>(m_doc["meshes"].size());
                m_doc["meshes"].push_back(std::move(copy));
                for (int s : group)
                    m_meshOfNode[m_scene.skins[s].meshNode] = target;
            }
            meshTaken = true;
            int jointCount = 0;
            for (int s : group)
                jointCount = std::max(jointCount, static_cast<int>(m_scene.skins[s].joints.size()));
            rewriteWeights(target, m_spans[mesh], m_scene.skins[group.front()], jointCount);
            if (m_progress.cancelled())
                return false;
        }
        for (int s : skins)
            done += static_cast<std::uint64_t>(m_scene.skins[s].weights.vertexCount());
        if (!m_progress.step(done, total))
            return false;
    }
    return true;
}

void GltfWriting::rewriteWeights(int gltfMesh, const std::vector<PrimitiveSpan>& spans,
                                 const SceneSkin& skin, int jointCount) {
    const Json& primitives = m_doc["meshes"][gltfMesh]["primitives"];
    int setCount = 0;
    for (std::size_t p = 0; p < spans.size(); ++p) {
        setCount = std::max(setCount, setsOf(primitives[p]));
        if (spans[p].vertexCount > 0)
            setCount = std::max(setCount, weightSetsNeeded(skin.weights, spans[p].firstVertex,
                                                           spans[p].vertexCount));
    }
    const SceneMesh& mesh = m_scene.meshes[m_scene.nodes[skin.meshNode].mesh];
    const std::vector<std::array<double, 3>> joints = jointBindPositions(skin.inverseBindMatrices);
    int unweighted = 0;
    for (int p = 0; p < static_cast<int>(spans.size()); ++p) {
        if (spans[p].vertexCount == 0)
            continue;
        const WeightSets sets =
            encodeWeightSets(skin.weights, spans[p].firstVertex, spans[p].vertexCount, setCount,
                             mesh.points, joints);
        unweighted += sets.unweightedVertices;
        for (int k = 0; k < setCount; ++k) {
            m_plan->replace(attributeSite(gltfMesh, p, "JOINTS_" + std::to_string(k)),
                            jointsData(sets, k, jointCount));
            m_plan->replace(attributeSite(gltfMesh, p, "WEIGHTS_" + std::to_string(k)),
                            weightsData(sets, k));
        }
        if (m_progress.cancelled())
            return;
    }
    if (unweighted > 0)
        m_warnings.push_back(std::to_string(unweighted) + " vertices of mesh \"" + mesh.name +
                             "\" had no weight; each was given to its nearest joint.");
}

void GltfWriting::writeMeshReferences() {
    for (int i = 0; i < static_cast<int>(m_scene.nodes.size()); ++i) {
        Json& node = m_doc["nodes"][m_nodeIndex[i]];
        const int mesh = m_meshOfNode[i];
        const bool has = node.contains("mesh");
        if (mesh < 0 && has)
            node.erase("mesh");
        else if (mesh >= 0 && (!has || node["mesh"] != mesh))
            node["mesh"] = mesh;
    }
}

void GltfWriting::writeLocks() {
    std::set<int> placed(m_nodeIndex.begin(), m_nodeIndex.end());
    std::set<int> written(m_skinIndex.begin(), m_skinIndex.end());
    written.erase(-1);
    for (int gltfSkin : written) {
        Json& skin = m_doc["skins"][gltfSkin];
        Json current = Json::array();
        if (skin.contains("extras") && skin["extras"].is_object() &&
            skin["extras"].contains(kSkinLocksKey))
            current = skin["extras"][kSkinLocksKey];
        // Entries of nodes outside this scene are someone else's; they stay.
        Json entries = Json::array();
        if (current.is_array())
            for (const Json& entry : current)
                if (entry.is_object() && entry.contains("node") &&
                    entry["node"].is_number_integer() && !placed.count(entry["node"].get<int>()))
                    entries.push_back(entry);
        for (int s = 0; s < static_cast<int>(m_scene.skins.size()); ++s)
            if (m_skinIndex[s] == gltfSkin && !m_scene.skins[s].locks.empty())
                entries.push_back(skinLocksToJson(m_nodeIndex[m_scene.skins[s].meshNode],
                                                  m_scene.skins[s].locks));
        if (entries == current)
            continue;
        if (!setExtrasKey(skin, kSkinLocksKey, entries.empty() ? nullptr : &entries))
            m_warnings.push_back("The locks of skin " + std::to_string(gltfSkin) +
                                 " were not written: its extras are not an object.");
    }
}

// glTF allows no empty lists; the writer may have made some (a scene without meshes).
void GltfWriting::dropEmptyLists() {
    for (const char* key : {"nodes", "meshes", "skins", "accessors", "bufferViews"})
        if (m_doc.contains(key) && m_doc[key].is_array() && m_doc[key].empty())
            m_doc.erase(key);
    if (m_doc.contains("scenes"))
        for (Json& scene : m_doc["scenes"])
            if (scene.is_object() && scene.contains("nodes") && scene["nodes"].empty())
                scene.erase("nodes");
}

FileResult GltfWriting::save(const std::vector<unsigned char>& binary) {
    if (m_binary) {
        const std::string json = m_doc.dump(-1, ' ', false, Json::error_handler_t::replace);
        if (json.size() + binary.size() + 64 > kMaxGlbBytes)
            return FileResult::failed(
                writeFailure(m_path, "the scene is too large for a binary glTF file"));
        GlbLayout layout(json, binary);
        return writeFileAtomically(m_path, layout.blocks(), m_progress, 0.7, 1.0);
    }
    if (binary.size() > kMaxEmbeddedBytes)
        return FileResult::failed(
            writeFailure(m_path, "the scene's data is too large to embed; save it as .glb"));
    if (!binary.empty()) {
        const QByteArray encoded =
            QByteArray::fromRawData(reinterpret_cast<const char*>(binary.data()),
                                    static_cast<int>(binary.size()))
                .toBase64();
        m_doc["buffers"][0]["uri"] =
            "data:application/octet-stream;base64," + encoded.toStdString();
    }
    const std::string json = m_doc.dump(2, ' ', false, Json::error_handler_t::replace);
    return writeFileAtomically(m_path, {{json.data(), json.size()}}, m_progress, 0.7, 1.0);
}

} // namespace

FileResult writeGltf(const SceneDescription& scene, const std::string& path,
                     ProgressReporter& reporter) {
    return GltfWriting(scene, path, reporter).run();
}

} // namespace runtime
