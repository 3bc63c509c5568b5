#include "scene/SkinBinding.h"

#include "api/StatusReport.h"
#include "scene/MeshData.h"
#include "scene/NodeValues.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/Transforms.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>

namespace runtime {

namespace {

HStatus checkBinding(const std::vector<NodePtr>& joints, const NodePtr& mesh, const Node& geometry,
                     const std::string& name) {
    if (!mesh)
        return invalidParameter(geometry.name() + " is not a mesh.");
    if (NodePtr cluster = skinClusterOfGeometry(*mesh))
        return invalidParameter(mesh->name() + " is already bound to " + cluster->name() + ".");
    if (joints.empty())
        return invalidParameter("A skin cluster needs at least one joint.");
    if (joints.size() > SkinWeights::kMaxInfluences)
        return invalidParameter("A skin cluster takes at most 65535 influences.");
    std::set<const Node*> seen;
    for (const NodePtr& joint : joints) {
        if (!joint || !joint->isAlive() || !joint->hasFn(HFn::kTransform))
            return invalidParameter("Influences must be live joints or transforms.");
        if (!seen.insert(joint.get()).second)
            return invalidParameter(joint->name() + " is listed twice.");
    }
    if (!name.empty() && !Scene::isValidNodeName(name))
        return invalidParameter("Invalid node name: " + name);
    return HS::kSuccess;
}

// The first logical index after the array's existing elements.
unsigned nextIndex(const Plug& array) {
    std::vector<unsigned> used = array.elementIndices();
    return used.empty() ? 0u : used.back() + 1;
}

int nextGroupId(const Scene& scene) {
    int highest = 0;
    for (const NodePtr& node : scene.nodes())
        if (node->hasFn(HFn::kGroupId))
            highest = std::max(highest, intValue(*node, "groupId"));
    return highest + 1;
}

HStatus wire(Scene& scene, Node& cluster, Node& set, Node& group, Node& mesh) {
    Plug groups = mesh.plug("instObjGroups").element(0).child(0);
    Plug objectGroup = groups.element(nextIndex(groups));
    Plug members = set.plug("dagSetMembers");
    Plug groupNodes = set.plug("groupNodes");
    HStatus status = scene.setValue(group.plug("groupId"), nextGroupId(scene));
    struct Link {
        Plug source, destination;
    };
    const Link links[] = {
        {set.plug("memberWireframeColor"), objectGroup.child(2)},
        {objectGroup, members.element(nextIndex(members))},
        {group.plug("groupId"), objectGroup.child(1)},
        {group.plug("message"), groupNodes.element(nextIndex(groupNodes))},
        {cluster.plug("message"), set.plug("usedBy").element(0)},
        {cluster.plug("outputGeometry").element(0), mesh.plug("inMesh")},
    };
    for (const Link& link : links)
        if (status)
            status = scene.connect(link.source, link.destination);
    if (status)
        status = scene.setValue(objectGroup.child(0), StringList{"vtx[*]"});
    return status;
}

NodePtr makeCluster(Scene& scene, const std::vector<NodePtr>& joints, Node& geometry,
                    SkinWeights weights, const std::string& name, unsigned maxInfluences,
                    HStatus* status) {
    NodePtr mesh = meshShapeOf(geometry);
    HStatus checked = checkBinding(joints, mesh, geometry, name);
    if (!checked) {
        if (status)
            *status = checked;
        return nullptr;
    }
    NodePtr cluster = scene.createNode("skinCluster", name.empty() ? "skinCluster1" : name);
    NodePtr set = scene.createNode("objectSet", cluster->name() + "Set");
    NodePtr group = scene.createNode("groupId", cluster->name() + "GroupId");
    HStatus wired = wire(scene, *cluster, *set, *group, *mesh);
    if (wired)
        wired = scene.setValue(cluster->plug("maxInfluences"), static_cast<int>(maxInfluences));
    std::vector<Matrix> bindPre;
    for (const NodePtr& joint : joints) {
        Matrix inverse;
        worldMatrix(*joint).inverse(inverse);
        bindPre.push_back(inverse);
    }
    SkinClusterData& data = *cluster->skinCluster();
    if (wired)
        wired = data.setInfluences(joints, bindPre);
    if (!wired) {
        scene.deleteNodes({cluster, set, group});
        if (status)
            *status = wired;
        return nullptr;
    }
    data.setGeometryMatrix(worldMatrix(*mesh));
    weights.setVertexCount(mesh->mesh()->vertexCount());
    data.weights() = std::move(weights);
    scene.notify({SceneChange::kWeightsChanged, {cluster}, Plug()});
    if (status)
        *status = HS::kSuccess;
    return cluster;
}

} // namespace

NodePtr meshShapeOf(const Node& geometry) {
    if (!geometry.isAlive())
        return nullptr;
    if (geometry.hasFn(HFn::kMesh))
        return std::const_pointer_cast<Node>(geometry.shared_from_this());
    NodePtr found;
    for (const NodePtr& child : geometry.children()) {
        if (!child->isShape())
            continue;
        if (found)
            return nullptr;
        found = child;
    }
    return found && found->hasFn(HFn::kMesh) ? found : nullptr;
}

NodePtr bindSkin(Scene& scene, const std::vector<NodePtr>& joints, Node& geometry,
                 const BindOptions& options, HStatus* status) {
    NodePtr mesh = meshShapeOf(geometry);
    HStatus checked = checkBinding(joints, mesh, geometry, options.name);
    if (!checked) {
        if (status)
            *status = checked;
        return nullptr;
    }
    unsigned count = static_cast<unsigned>(joints.size());
    unsigned keep = std::clamp(options.maxInfluences, 1u, count);
    std::vector<HPoint> jointPositions;
    for (const NodePtr& joint : joints)
        jointPositions.push_back(worldPosition(*joint));
    Matrix meshMatrix = worldMatrix(*mesh);

    const MeshData& data = *mesh->mesh();
    SkinWeights weights(data.vertexCount());
    weights.reserveEntries(static_cast<size_t>(data.vertexCount()) * keep);
    std::vector<double> distances(count);
    std::vector<double> closeness(count);
    std::vector<double> values(keep);
    std::vector<SkinWeights::Influence> order(count);
    for (unsigned v = 0; v < data.vertexCount(); ++v) {
        HPoint position = meshMatrix.transformPoint(data.point(v));
        for (unsigned j = 0; j < count; ++j)
            distances[j] = std::max(position.distanceTo(jointPositions[j]), 1e-12);
        // Relative to the nearest joint, so that no power overflows.
        double nearest = *std::min_element(distances.begin(), distances.end());
        for (unsigned j = 0; j < count; ++j)
            closeness[j] = std::pow(nearest / distances[j], options.dropoffRate);
        std::iota(order.begin(), order.end(), SkinWeights::Influence(0));
        std::partial_sort(order.begin(), order.begin() + keep, order.end(),
                          [&](SkinWeights::Influence a, SkinWeights::Influence b) {
                              return closeness[a] != closeness[b] ? closeness[a] > closeness[b]
                                                                  : a < b;
                          });
        double total = 0.0;
        for (unsigned k = 0; k < keep; ++k)
            total += closeness[order[k]];
        for (unsigned k = 0; k < keep; ++k)
            values[k] = closeness[order[k]] / total;
        weights.assign(v, order.data(), values.data(), keep);
    }
    return makeCluster(scene, joints, geometry, std::move(weights), options.name, keep, status);
}

NodePtr createSkinCluster(Scene& scene, const std::vector<NodePtr>& joints, Node& geometry,
                          SkinWeights weights, const std::string& name, HStatus* status) {
    return makeCluster(scene, joints, geometry, std::move(weights), name, 5, status);
}

} // namespace runtime
