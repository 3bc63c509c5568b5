#include "AssimpImport.h"

#include "files/ReadBudget.h"

#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cmath>
#include <map>
#include <new>
#include <sys/stat.h>

namespace runtime {

namespace {

// The import library reads the whole file itself; larger files are refused up front.
constexpr std::uint64_t kMaxFileBytes = 2ull << 30;

// Passes the library's progress on, and its cancel request back.
class ImportProgress : public Assimp::ProgressHandler {
public:
    explicit ImportProgress(Progress& progress) : m_progress(progress) {}
    bool Update(float percentage) override {
        if (percentage >= 0.0f)
            m_done = static_cast<std::uint64_t>(std::min(percentage, 1.0f) * 1000.0f);
        return m_progress.step(m_done, 1000);
    }

private:
    Progress& m_progress;
    std::uint64_t m_done = 0;
};

Matrix4 toMatrix(const aiMatrix4x4& m) {
    Matrix4 matrix;
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            matrix[column * 4 + row] = m[row][column];
    return matrix;
}

class AssimpConversion {
public:
    AssimpConversion(const aiScene& scene, ReadBudget& budget)
        : m_source(scene), m_budget(budget) {}

    bool run(SceneDescription& out, std::string& problem);
    int skippedFaces() const { return m_skippedFaces; }

private:
    bool fail(const std::string& problem) {
        m_problem = problem;
        return false;
    }
    bool readNodes();
    bool readNodeMeshes(int nodeIndex, const aiNode& node);
    bool appendMesh(const aiMesh& mesh, SceneMesh& target);
    bool appendBones(const aiMesh& mesh, int base, SceneSkin& skin, std::map<int, int>& influenceOf,
                     std::vector<VertexWeight>& entries);

    const aiScene& m_source;
    ReadBudget& m_budget;
    SceneDescription m_scene;
    std::string m_problem;
    std::vector<const aiNode*> m_nodes;      // by description index
    std::map<std::string, int> m_nodeByName; // first node of each name
    int m_skippedFaces = 0;
};

bool AssimpConversion::run(SceneDescription& out, std::string& problem) {
    bool ok = m_source.mRootNode ? readNodes() : fail("it holds no scene");
    for (int n = 0; ok && n < static_cast<int>(m_nodes.size()); ++n)
        ok = readNodeMeshes(n, *m_nodes[n]);
    // What the library returns may still not hold together (a hierarchy too deep for the host,
    // say); the host would refuse the reply, so the problem is named here.
    if (ok)
        m_problem = firstInconsistency(m_scene);
    if (!ok || !m_problem.empty()) {
        problem = m_problem;
        return false;
    }
    out = std::move(m_scene);
    return true;
}

// Parents before children, without recursion: hierarchies may be deep.
bool AssimpConversion::readNodes() {
    std::vector<std::pair<const aiNode*, int>> pending{{m_source.mRootNode, -1}};
    while (!pending.empty()) {
        auto [node, parent] = pending.back();
        pending.pop_back();
        if (!node || !m_budget.take(1, sizeof(SceneNode)))
            return fail("its node hierarchy is malformed or too large");
        SceneNode description;
        description.name = node->mName.C_Str();
        description.parent = parent;
        description.transform.form = NodeTransform::Form::kMatrix;
        description.transform.matrix = toMatrix(node->mTransformation);
        const int index = static_cast<int>(m_scene.nodes.size());
        m_nodeByName.emplace(description.name, index);
        m_scene.nodes.push_back(std::move(description));
        m_nodes.push_back(node);
        if (node->mNumChildren > 0 && !node->mChildren)
            return fail("node \"" + std::string(node->mName.C_Str()) + "\" has no child list");
        for (unsigned c = node->mNumChildren; c-- > 0;)
            pending.push_back({node->mChildren[c], index});
    }
    return true;
}

bool AssimpConversion::readNodeMeshes(int nodeIndex, const aiNode& node) {
    if (node.mNumMeshes == 0)
        return true;
    SceneMesh mesh;
    mesh.name = node.mName.C_Str();
    SceneSkin skin;
    skin.meshNode = nodeIndex;
    std::map<int, int> influenceOf; // joint node -> influence index
    std::vector<VertexWeight> entries;
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        const unsigned meshIndex = node.mMeshes ? node.mMeshes[i] : m_source.mNumMeshes;
        if (meshIndex >= m_source.mNumMeshes || !m_source.mMeshes[meshIndex])
            return fail("node \"" + mesh.name + "\" refers to a mesh that does not exist");
        const aiMesh& part = *m_source.mMeshes[meshIndex];
        const int base = mesh.vertexCount();
        if (!appendMesh(part, mesh) || !appendBones(part, base, skin, influenceOf, entries))
            return false;
    }
    m_scene.nodes[nodeIndex].mesh = static_cast<int>(m_scene.meshes.size());
    const int vertexCount = mesh.vertexCount();
    m_scene.meshes.push_back(std::move(mesh));
    if (skin.joints.empty())
        return true;
    if (!m_budget.take(entries.size(), sizeof(SkinWeight) + sizeof(const VertexWeight*)))
        return fail(m_budget.exceededProblem());
    skin.weights = SparseSkinWeights::gather(vertexCount, entries);
    for (int joint : skin.joints)
        m_scene.nodes[joint].isJoint = true;
    m_scene.skins.push_back(std::move(skin));
    return true;
}

bool AssimpConversion::appendMesh(const aiMesh& part, SceneMesh& mesh) {
    const std::string name = "mesh \"" + std::string(part.mName.C_Str()) + "\"";
    if (!m_budget.take(part.mNumVertices, sizeof(mesh.points[0])) ||
        !m_budget.take(part.mNumFaces, 4 * sizeof(int)))
        return fail(name + ": " + m_budget.exceededProblem());
    if (part.mNumVertices > 0 && !part.mVertices)
        return fail(name + " has no vertex positions");
    const int base = mesh.vertexCount();
    for (unsigned v = 0; v < part.mNumVertices; ++v) {
        const aiVector3D& p = part.mVertices[v];
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z))
            return fail(name + " has a vertex that is not a finite point");
        mesh.points.push_back({p.x, p.y, p.z});
    }
    if (part.mNumFaces > 0 && !part.mFaces)
        return fail(name + " has no face list");
    for (unsigned f = 0; f < part.mNumFaces; ++f) {
        const aiFace& face = part.mFaces[f];
        if (face.mNumIndices < 3) {
            ++m_skippedFaces; // points and lines have no surface to skin
            continue;
        }
        if (!m_budget.take(face.mNumIndices, sizeof(int)))
            return fail(name + ": " + m_budget.exceededProblem());
        mesh.polygonSizes.push_back(static_cast<int>(face.mNumIndices));
        for (unsigned k = 0; k < face.mNumIndices; ++k) {
            if (face.mIndices[k] >= part.mNumVertices)
                return fail(name + " has a face with a vertex out of range");
            mesh.polygonVertices.push_back(base + static_cast<int>(face.mIndices[k]));
        }
    }
    return true;
}

bool AssimpConversion::appendBones(const aiMesh& part, int base, SceneSkin& skin,
                                   std::map<int, int>& influenceOf,
                                   std::vector<VertexWeight>& entries) {
    if (part.mNumBones > 0 && !part.mBones)
        return fail("mesh \"" + std::string(part.mName.C_Str()) + "\" has no bone list");
    for (unsigned b = 0; b < part.mNumBones; ++b) {
        const aiBone* bone = part.mBones[b];
        if (!bone)
            return fail("a bone of mesh \"" + std::string(part.mName.C_Str()) + "\" is missing");
        const std::string name = bone->mName.C_Str();
        auto node = m_nodeByName.find(name);
        if (node == m_nodeByName.end())
            return fail("bone \"" + name + "\" has no node in the hierarchy");
        auto [influence, added] =
            influenceOf.emplace(node->second, static_cast<int>(skin.joints.size()));
        if (added) {
            skin.joints.push_back(node->second);
            skin.inverseBindMatrices.push_back(toMatrix(bone->mOffsetMatrix));
        }
        if (!m_budget.take(bone->mNumWeights, sizeof(VertexWeight)))
            return fail("bone \"" + name + "\": " + m_budget.exceededProblem());
        if (bone->mNumWeights > 0 && !bone->mWeights)
            return fail("bone \"" + name + "\" has no weight list");
        for (unsigned w = 0; w < bone->mNumWeights; ++w) {
            const aiVertexWeight& weight = bone->mWeights[w];
            if (weight.mVertexId >= part.mNumVertices || !std::isfinite(weight.mWeight))
                return fail("bone \"" + name + "\" has a weight out of range");
            entries.push_back(
                {base + static_cast<int>(weight.mVertexId), influence->second, weight.mWeight});
        }
    }
    return true;
}

} // namespace

FileResult importWithAssimp(const std::string& path, SceneDescription& scene,
                            ProgressReporter& reporter) {
    struct stat info {};
    const bool exists = ::stat(path.c_str(), &info) == 0;
    if (!exists || !S_ISREG(info.st_mode))
        return FileResult::failed(
            readFailure(path, exists ? "it is not a regular file" : "the file does not exist"));
    if (static_cast<std::uint64_t>(info.st_size) > kMaxFileBytes)
        return FileResult::failed(readFailure(path, "the file is too large to import"));

    Progress progress(reporter);
    progress.stage(0.0, 0.8, "Importing the file");
    Assimp::Importer importer;
    importer.SetProgressHandler(new ImportProgress(progress)); // the importer owns it
    // Keep every influence the file lists, even one without weights.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_REMOVE_EMPTY_BONES, false);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    // Without normals, texture coordinates and colours, vertices split at seams join again.
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS,
                                aiComponent_NORMALS | aiComponent_TANGENTS_AND_BITANGENTS |
                                    aiComponent_COLORS | aiComponent_TEXCOORDS);
    const aiScene* imported =
        importer.ReadFile(path, aiProcess_RemoveComponent | aiProcess_JoinIdenticalVertices |
                                    aiProcess_ValidateDataStructure);
    if (progress.cancelled())
        return FileResult::cancelled(readCancelled(path));
    if (!imported) {
        // The library catches its own allocation failures and reports them as text.
        if (std::string(importer.GetErrorString()) == std::bad_alloc().what())
            throw std::bad_alloc();
        return FileResult::failed(readFailure(path, importer.GetErrorString()));
    }

    progress.stage(0.8, 1.0, "Converting the scene");
    ReadBudget budget(static_cast<std::uint64_t>(info.st_size));
    AssimpConversion conversion(*imported, budget);
    SceneDescription converted;
    std::string problem;
    if (!conversion.run(converted, problem))
        return FileResult::failed(readFailure(path, problem));
    scene = std::move(converted);
    progress.step(1, 1);
    FileResult result = FileResult::done();
    if (conversion.skippedFaces() > 0)
        result.warnings.push_back(std::to_string(conversion.skippedFaces()) +
                                  " points and lines of \"" + path +
                                  "\" were left out; only polygons are read.");
    return result;
}

} // namespace runtime
