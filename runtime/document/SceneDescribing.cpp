#include "document/SceneDescribing.h"

#include "document/SceneOrigins.h"
#include "document/SkinLockAttributes.h"
#include "document/TransformConversion.h"
#include "scene/MeshData.h"
#include "scene/NodeValues.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/Transforms.h"

#include <set>
#include <unordered_map>

namespace runtime {

namespace {

class SceneDescribing {
public:
    SceneDescribing(const Scene& scene, const SceneOrigins* origins,
                    std::vector<std::string>& warnings)
        : m_scene(scene), m_origins(origins && origins->outline.source ? origins : nullptr),
          m_warnings(warnings) {
        if (m_origins)
            m_description.source = m_origins->outline.source;
    }

    SceneDescription run();

private:
    // The origin of the node when it has one; its index then fits `count` outline elements.
    const NodeOrigin* originOf(const Node& node, std::size_t count) const;
    void describeTransform(const Node& node);
    void describeMesh(const Node& shape);
    int placeMesh(const Node& shape);
    void describeSkin(const Node& cluster);
    void leaveOut(const Node& node);

    const Scene& m_scene;
    const SceneOrigins* m_origins;
    std::vector<std::string>& m_warnings;
    SceneDescription m_description;
    std::unordered_map<const Node*, int> m_nodeIndex; // transforms and mesh shapes
    std::set<int> m_sourceMeshes;
    std::set<const Node*> m_skinParts; // sets and group ids of skin clusters
};

SceneDescription SceneDescribing::run() {
    std::vector<NodePtr> nodes = m_scene.nodesParentsFirst();
    for (const NodePtr& node : nodes) {
        if (!node->hasFn(HFn::kSkinClusterFilter))
            continue;
        if (NodePtr set = skinClusterSet(*node)) {
            m_skinParts.insert(set.get());
            if (NodePtr group = setGroupId(*set))
                m_skinParts.insert(group.get());
        }
    }
    for (const NodePtr& node : nodes) {
        if (node->hasFn(HFn::kTransform))
            describeTransform(*node);
        else if (node->hasFn(HFn::kMesh))
            describeMesh(*node);
        else if (node->hasFn(HFn::kSkinClusterFilter))
            describeSkin(*node);
        else
            leaveOut(*node);
    }
    return std::move(m_description);
}

const NodeOrigin* SceneDescribing::originOf(const Node& node, std::size_t count) const {
    const NodeOrigin* origin = m_origins ? m_origins->find(node) : nullptr;
    return origin && origin->index >= 0 && static_cast<std::size_t>(origin->index) < count
               ? origin
               : nullptr;
}

void SceneDescribing::describeTransform(const Node& node) {
    SceneNode described;
    described.name = node.name();
    described.parent = node.parent() ? m_nodeIndex.at(node.parent()) : -1;
    described.isJoint = node.hasFn(HFn::kJoint);
    described.lockInfluenceWeights = described.isJoint && boolValue(node, "lockInfluenceWeights");
    described.transform = componentsOf(node);
    if (const NodeOrigin* origin =
            originOf(node, m_origins ? m_origins->outline.nodes.size() : 0)) {
        const SceneNode& read = m_origins->outline.nodes[origin->index];
        if (node.name() == origin->givenName)
            described.name = read.name;
        if (nearlyEqual(matrixOf(read.transform), localMatrix(node)))
            described.transform = read.transform;
        described.sourceIndex = read.sourceIndex;
    }
    m_nodeIndex[&node] = static_cast<int>(m_description.nodes.size());
    m_description.nodes.push_back(std::move(described));
}

void SceneDescribing::describeMesh(const Node& shape) {
    const int parent = m_nodeIndex.at(shape.parent());
    const int mesh = placeMesh(shape);
    if (m_description.nodes[parent].mesh < 0) {
        m_description.nodes[parent].mesh = mesh;
        m_nodeIndex[&shape] = parent;
        return;
    }
    SceneNode holder;
    holder.name = shape.name();
    holder.parent = parent;
    holder.mesh = mesh;
    m_nodeIndex[&shape] = static_cast<int>(m_description.nodes.size());
    m_description.nodes.push_back(std::move(holder));
}

int SceneDescribing::placeMesh(const Node& shape) {
    const MeshGeometry& geometry = shape.mesh()->geometry();
    SceneMesh mesh;
    mesh.name = shape.name();
    mesh.points.reserve(geometry.points.size());
    for (const HPoint& p : geometry.points)
        mesh.points.push_back({p.x, p.y, p.z});
    mesh.polygonSizes = geometry.polygonSizes;
    mesh.polygonVertices = geometry.polygonVertices;
    if (const NodeOrigin* origin =
            originOf(shape, m_origins ? m_origins->outline.meshes.size() : 0)) {
        const SceneMesh& read = m_origins->outline.meshes[origin->index];
        mesh.name = read.name;
        // One mesh of the file shown by several nodes was copied into each; the first copy
        // keeps the file's mesh, and the others get meshes of their own.
        if (m_sourceMeshes.insert(read.sourceIndex).second)
            mesh.sourceIndex = read.sourceIndex;
    }
    m_description.meshes.push_back(std::move(mesh));
    return static_cast<int>(m_description.meshes.size()) - 1;
}

void SceneDescribing::describeSkin(const Node& cluster) {
    NodePtr geometry = skinClusterGeometry(cluster);
    auto meshNode = geometry ? m_nodeIndex.find(geometry.get()) : m_nodeIndex.end();
    if (meshNode == m_nodeIndex.end()) {
        m_warnings.push_back("\"" + cluster.name() + "\" was left out: it deforms no mesh.");
        return;
    }
    const SkinClusterData& data = *cluster.skinCluster();
    const NodeOrigin* origin = originOf(cluster, m_origins ? m_origins->outline.skins.size() : 0);
    const SceneSkin* read = origin ? &m_origins->outline.skins[origin->index] : nullptr;
    SceneSkin skin;
    skin.meshNode = meshNode->second;
    std::vector<int> kept(data.influenceCount(), -1);
    for (unsigned k = 0; k < data.influenceCount(); ++k) {
        const NodePtr& influence = data.influences()[k];
        auto joint = influence->isAlive() ? m_nodeIndex.find(influence.get()) : m_nodeIndex.end();
        if (joint == m_nodeIndex.end())
            continue;
        kept[k] = static_cast<int>(skin.joints.size());
        skin.joints.push_back(joint->second);
        Matrix inverseBind = data.bindPreMatrix(k) * data.geometryMatrix();
        if (read && k < read->inverseBindMatrices.size() &&
            nearlyEqual(toMatrix(read->inverseBindMatrices[k]), inverseBind))
            skin.inverseBindMatrices.push_back(read->inverseBindMatrices[k]);
        else
            skin.inverseBindMatrices.push_back(toMatrix4(inverseBind));
    }
    if (skin.joints.size() < kept.size())
        m_warnings.push_back("\"" + cluster.name() + "\" lost the weights of " +
                             std::to_string(kept.size() - skin.joints.size()) +
                             " deleted influences.");
    const SkinWeights& weights = data.weights();
    skin.weights.reserve(weights.vertexCount(), weights.entryTotal());
    for (unsigned v = 0; v < weights.vertexCount(); ++v) {
        skin.weights.startVertex();
        for (unsigned i = 0; i < weights.entryCount(v); ++i)
            if (kept[weights.influences(v)[i]] >= 0)
                skin.weights.add(kept[weights.influences(v)[i]], weights.weights(v)[i]);
    }
    skin.locks = readSkinLocks(cluster);
    if (read)
        skin.sourceIndex = read->sourceIndex;
    m_description.skins.push_back(std::move(skin));
}

void SceneDescribing::leaveOut(const Node& node) {
    if (!m_skinParts.count(&node))
        m_warnings.push_back("\"" + node.name() + "\" (" + node.typeName() +
                             ") was left out: the format holds only transforms, joints, meshes "
                             "and skin clusters.");
}

} // namespace

SceneDescription describeScene(const Scene& scene, const SceneOrigins* origins,
                               std::vector<std::string>& warnings) {
    return SceneDescribing(scene, origins, warnings).run();
}

} // namespace runtime
