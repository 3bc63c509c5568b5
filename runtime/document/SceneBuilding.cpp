#include "document/SceneBuilding.h"

#include "document/SceneOrigins.h"
#include "document/SkinLockAttributes.h"
#include "document/TransformConversion.h"
#include "scene/JointColors.h"
#include "scene/NodeValues.h"
#include "scene/Scene.h"
#include "scene/SkinBinding.h"
#include "scene/SkinClusterData.h"
#include "scene/Transforms.h"

#include <new>

namespace runtime {

namespace {

class SceneBuilding {
public:
    SceneBuilding(const SceneDescription& description, Scene& target, ProgressReporter& reporter,
                  SceneOrigins* origins)
        : m_description(description), m_scene(target), m_progress(reporter), m_origins(origins) {}

    bool run();
    const std::string& problem() const { return m_problem; }
    bool cancelled() const { return m_progress.cancelled(); }
    std::vector<std::string>& warnings() { return m_warnings; }

private:
    bool fail(const std::string& problem) {
        m_problem = problem;
        return false;
    }
    bool refused(const std::string& what, const HStatus& status) {
        return fail(what + ": " + status.errorString().str());
    }
    bool runStage(double from, double to, const char* text, std::size_t count,
                  bool (SceneBuilding::*build)(int));
    bool buildNode(int index);
    bool setTransform(Node& node, const NodeTransform& transform);
    bool buildMesh(Node& parent, int meshIndex);
    bool buildSkin(int index);
    void record(const Node& node, int index) {
        if (m_origins)
            m_origins->add(node, index);
    }

    const SceneDescription& m_description;
    Scene& m_scene;
    Progress m_progress;
    SceneOrigins* m_origins;
    std::string m_problem;
    std::vector<std::string> m_warnings;
    std::vector<NodePtr> m_nodes;  // by description node
    std::vector<NodePtr> m_shapes; // by description node: its mesh shape, or null
    int m_jointCount = 0;
};

bool SceneBuilding::run() {
    if (std::string problem = firstInconsistency(m_description); !problem.empty())
        return fail("the scene it holds is inconsistent: " + problem);
    return runStage(0.0, 0.5, "Building nodes and meshes", m_description.nodes.size(),
                    &SceneBuilding::buildNode) &&
           runStage(0.5, 1.0, "Binding skins", m_description.skins.size(),
                    &SceneBuilding::buildSkin);
}

// Builds items 0 to count - 1 in order as one stage of the progress; stops at the first refusal
// or when asked to.
bool SceneBuilding::runStage(double from, double to, const char* text, std::size_t count,
                             bool (SceneBuilding::*build)(int)) {
    m_progress.stage(from, to, text);
    for (std::size_t i = 0; i < count; ++i)
        if (!(this->*build)(static_cast<int>(i)) || !m_progress.step(i + 1, count))
            return false;
    return true;
}

bool SceneBuilding::buildNode(int index) {
    const SceneNode& source = m_description.nodes[index];
    const std::string name =
        source.name.empty() ? std::string() : Scene::legalNodeName(source.name);
    Node* parent = source.parent >= 0 ? m_nodes[source.parent].get() : nullptr;
    HStatus status;
    NodePtr node =
        m_scene.createNode(source.isJoint ? "joint" : "transform", name, parent, &status);
    if (!node)
        return refused("node " + std::to_string(index), status);
    m_nodes.push_back(node);
    m_shapes.push_back(nullptr);
    record(*node, index);
    if (!setTransform(*node, source.transform))
        return false;
    if (source.isJoint) {
        const int color = m_jointCount++ % static_cast<int>(kObjectColorCount);
        for (const auto& [attribute, value] :
             {std::pair<const char*, Value>{"useObjectColor", true},
              {"objectColor", color},
              {"lockInfluenceWeights", source.lockInfluenceWeights}}) {
            status = m_scene.setValue(node->plug(attribute), value);
            if (!status)
                return refused(node->name(), status);
        }
    }
    return source.mesh < 0 || buildMesh(*node, source.mesh);
}

bool SceneBuilding::setTransform(Node& node, const NodeTransform& transform) {
    TransformValues values;
    if (!transformValuesFor(node, matrixOf(transform), values)) {
        m_warnings.push_back("The transform of \"" + node.name() +
                             "\" scales to nothing; only its translation was kept.");
        values.rotate = HPoint();
        values.scale = HPoint(1.0, 1.0, 1.0);
    }
    for (const auto& [attribute, value] :
         {std::pair<const char*, HPoint>{"translate", values.translate},
          {"rotate", values.rotate},
          {"scale", values.scale}}) {
        HStatus status = setTripleValue(m_scene, node, attribute, value);
        if (!status)
            return refused(node.name(), status);
    }
    return true;
}

bool SceneBuilding::buildMesh(Node& parent, int meshIndex) {
    const SceneMesh& mesh = m_description.meshes[meshIndex];
    MeshGeometry geometry;
    geometry.points.reserve(mesh.points.size());
    for (const auto& p : mesh.points)
        geometry.points.emplace_back(p[0], p[1], p[2]);
    int dropped = 0;
    std::size_t corner = 0;
    geometry.polygonSizes.reserve(mesh.polygonSizes.size());
    geometry.polygonVertices.reserve(mesh.polygonVertices.size());
    for (int size : mesh.polygonSizes) {
        if (size >= 3) {
            geometry.polygonSizes.push_back(size);
            geometry.polygonVertices.insert(geometry.polygonVertices.end(),
                                            mesh.polygonVertices.begin() + corner,
                                            mesh.polygonVertices.begin() + corner + size);
        } else {
            ++dropped;
        }
        corner += static_cast<std::size_t>(size);
    }
    if (dropped > 0)
        m_warnings.push_back(std::to_string(dropped) + " polygons of mesh \"" + mesh.name +
                             "\" have fewer than three corners and were left out.");
    HStatus status;
    NodePtr shape = m_scene.createNode("mesh", parent.name() + "Shape", &parent, &status);
    if (shape)
        status = m_scene.setMeshGeometry(*shape, std::move(geometry));
    if (!status)
        return refused("mesh " + std::to_string(meshIndex), status);
    m_shapes.back() = shape;
    record(*shape, meshIndex);
    return true;
}

bool SceneBuilding::buildSkin(int index) {
    const SceneSkin& skin = m_description.skins[index];
    const std::string what = "skin " + std::to_string(index);
    if (skin.joints.size() > SkinWeights::kMaxInfluences)
        return fail(what + " has more joints than a skin cluster takes (" +
                    std::to_string(SkinWeights::kMaxInfluences) + ")");
    std::vector<NodePtr> joints;
    for (int joint : skin.joints)
        joints.push_back(m_nodes[joint]);
    const SparseSkinWeights& source = skin.weights;
    SkinWeights weights(static_cast<unsigned>(source.vertexCount()));
    weights.reserveEntries(source.entryCount());
    std::vector<SkinWeights::Influence> influences;
    std::vector<double> values;
    for (int v = 0; v < source.vertexCount(); ++v) {
        influences.clear();
        values.clear();
        for (const SkinWeight& entry : source.vertex(v)) {
            influences.push_back(static_cast<SkinWeights::Influence>(entry.influence));
            values.push_back(entry.weight);
        }
        weights.assign(static_cast<unsigned>(v), influences.data(), values.data(),
                       static_cast<unsigned>(influences.size()));
    }
    HStatus status;
    NodePtr shape = m_shapes[skin.meshNode];
    NodePtr cluster =
        createSkinCluster(m_scene, joints, *shape, std::move(weights), std::string(), &status);
    if (!cluster)
        return refused(what, status);
    record(*cluster, index);
    SkinClusterData& data = *cluster->skinCluster();
    // The file's bind pose, not the pose the joints happen to be in: an inverse bind matrix
    // takes the mesh's points to the joint, so the bind pre-matrix (from the world) is it times
    // the mesh's inverse world matrix.
    Matrix meshInverse;
    data.geometryMatrix().inverse(meshInverse);
    std::vector<Matrix> bindPre;
    for (const Matrix4& inverseBind : skin.inverseBindMatrices)
        bindPre.push_back(toMatrix(inverseBind) * meshInverse);
    status = data.setInfluences(joints, std::move(bindPre));
    if (status && !skin.locks.empty())
        status = writeSkinLocks(m_scene, *cluster, skin.locks);
    if (!status)
        return refused(what, status);
    m_scene.notify({SceneChange::kWeightsChanged, {cluster}, Plug()});
    return true;
}

} // namespace

FileResult buildScene(const SceneDescription& description, Scene& target, const std::string& path,
                      ProgressReporter& reporter, SceneOrigins* origins) {
    SceneBuilding building(description, target, reporter, origins);
    bool built = false;
    try {
        built = building.run();
    } catch (const std::bad_alloc&) {
        return FileResult::failed(readFailure(path, "there is not enough memory"));
    }
    if (building.cancelled())
        return FileResult::cancelled(readCancelled(path));
    if (!built)
        return FileResult::failed(readFailure(path, building.problem()));
    if (origins)
        origins->setDescription(description);
    FileResult result = FileResult::done();
    result.warnings = std::move(building.warnings());
    return result;
}

} // namespace runtime
