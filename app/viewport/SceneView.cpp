#include "SceneView.h"

#include "HeatInfluence.h"
#include "core/DisplayRefresh.h"
#include "core/EventBus.h"
#include "scene/JointColors.h"
#include "scene/NodeValues.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/Transforms.h"

#include <utility>

namespace app::viewport {

namespace {

bool visibleInWorld(const runtime::Node& node) {
    for (const runtime::Node* n = &node; n; n = n->parent())
        if (!runtime::boolValue(*n, "visibility", true))
            return false;
    return true;
}

enum class Naming { kAnyItem, kWholeObject };

// Whether the list names the shape or its transform (as a whole object only, or also by
// components).
bool names(const HSelectionList& list, const runtime::Node& shape, Naming naming) {
    for (const runtime::SelectionItem& item : HApiAccess::items(list)) {
        runtime::NodePtr node = runtime::itemNode(item);
        if (naming == Naming::kWholeObject && runtime::itemComponent(item))
            continue;
        if (node && (node.get() == &shape || node.get() == shape.parent()))
            return true;
    }
    return false;
}

} // namespace

SceneView::SceneView(std::function<void()> changed)
    : m_changed(std::move(changed)), m_scene(runtime::scene()) {
    m_sceneListener =
        m_scene.addListener([this](const runtime::SceneChange& change) { sceneChanged(change); });
    m_selectionCallback = runtime::host().get<runtime::EventBus>().add(
        runtime::events::kSelectionChanged, &SceneView::selectionChanged, this, nullptr);
    m_displayWatch = runtime::host().get<runtime::DisplayRefresh>().watch([this] {
        m_displayChanged = true;
        m_changed();
    });
}

SceneView::~SceneView() {
    m_scene.removeListener(m_sceneListener);
    runtime::host().get<runtime::EventBus>().remove(m_selectionCallback);
    runtime::host().get<runtime::DisplayRefresh>().unwatch(m_displayWatch);
}

void SceneView::selectionChanged(void* self) {
    SceneView& view = *static_cast<SceneView*>(self);
    view.m_selectionChanged = true;
    view.m_changed();
}

void SceneView::sceneChanged(const runtime::SceneChange& change) {
    using runtime::SceneChange;
    switch (change.kind) {
    case SceneChange::kValueChanged:
        if (!change.nodes.empty() && change.nodes.front()->isDag())
            m_poseChanged = true;
        else
            return;
        break;
    case SceneChange::kWeightsChanged:
        for (const runtime::NodePtr& cluster : change.nodes) {
            WeightEdit& edit = m_weightEdits[cluster.get()];
            if (!change.vertices)
                edit.all = true;
            else if (!edit.all)
                edit.vertices.insert(edit.vertices.end(), change.vertices->begin(),
                                     change.vertices->end());
        }
        break;
    case SceneChange::kGeometryChanged:
        for (const runtime::NodePtr& mesh : change.nodes)
            m_geometryChanged.insert(mesh.get());
        break;
    case SceneChange::kSceneReset:
        m_sceneReplaced = m_structureChanged = true;
        break;
    case SceneChange::kNodeRenamed:
    case SceneChange::kAttributesChanged:
        return;
    default:
        m_structureChanged = true;
        break;
    }
    m_changed();
}

bool SceneView::takeSceneReplaced() {
    return std::exchange(m_sceneReplaced, false);
}

void SceneView::prepare() {
    if (m_structureChanged || !m_geometryChanged.empty())
        syncMeshes();
    applyWeightEdits();
    if (m_displayChanged)
        applyDisplay();
    if (m_poseChanged)
        applyPose();
    if (m_selectionChanged)
        applySelection();
}

// Keeps the drawing data of every mesh whose geometry and skin cluster are as they were, and
// reads the others again.
void SceneView::syncMeshes() {
    std::unordered_map<const runtime::Node*, std::unique_ptr<MeshDrawData>> previous;
    for (std::unique_ptr<MeshDrawData>& mesh : m_meshes)
        previous[mesh->shape().get()] = std::move(mesh);
    m_meshes.clear();
    for (const runtime::NodePtr& node : m_scene.nodes()) {
        if (!node->hasFn(HFn::kMesh) || !node->mesh())
            continue;
        runtime::NodePtr cluster = runtime::skinClusterOfGeometry(*node);
        if (cluster && !cluster->skinCluster())
            cluster = nullptr;
        auto found = previous.find(node.get());
        bool keep =
            found != previous.end() && found->second->cluster() == cluster &&
            !m_geometryChanged.count(node.get()) &&
            !(cluster && m_weightEdits.count(cluster.get()) && m_weightEdits[cluster.get()].all);
        if (keep) {
            m_meshes.push_back(std::move(found->second));
        } else {
            int heat = cluster ? cluster->skinCluster()->indexOf(m_heatInfluence.get()) : -1;
            m_meshes.push_back(std::make_unique<MeshDrawData>(node, cluster, heat));
        }
    }
    Bounds bounds;
    for (const std::unique_ptr<MeshDrawData>& mesh : m_meshes)
        for (const QVector3D& position : mesh->positions())
            bounds.add(position);
    m_sceneRadius = bounds.radius();
    m_structureChanged = false;
    m_geometryChanged.clear();
    m_poseChanged = m_selectionChanged = m_displayChanged = true;
}

void SceneView::applyWeightEdits() {
    for (auto& [clusterNode, edit] : m_weightEdits) {
        for (std::unique_ptr<MeshDrawData>& mesh : m_meshes) {
            if (mesh->cluster().get() != clusterNode)
                continue;
            const runtime::SkinClusterData* data = mesh->cluster()->skinCluster();
            SkinAttributes* skin = mesh->skin();
            if (!skin || data->weights().vertexCount() != skin->vertexCount()) {
                // The skin no longer fits the mesh as read: read it again.
                mesh = std::make_unique<MeshDrawData>(mesh->shape(), mesh->cluster(),
                                                      data->indexOf(m_heatInfluence.get()));
                m_poseChanged = m_selectionChanged = true;
            } else if (edit.all) {
                skin->build(data->weights(), data->indexOf(m_heatInfluence.get()));
                // The influences may have changed with the weights.
                m_poseChanged = true;
            } else {
                skin->updateVertices(data->weights(), edit.vertices);
            }
        }
    }
    m_weightEdits.clear();
}

void SceneView::applyDisplay() {
    m_heatInfluence = currentHeatInfluence();
    const HSelectionList& hilite = runtime::selection().hilite();
    for (std::unique_ptr<MeshDrawData>& mesh : m_meshes) {
        mesh->hilited = names(hilite, *mesh->shape(), Naming::kAnyItem);
        if (SkinAttributes* skin = mesh->skin())
            skin->setHeatInfluence(mesh->cluster()->skinCluster()->weights(),
                                   mesh->influenceIndex(m_heatInfluence.get()));
    }
    m_displayChanged = false;
}

void SceneView::applyPose() {
    for (std::unique_ptr<MeshDrawData>& mesh : m_meshes) {
        mesh->updatePose();
        mesh->visible = visibleInWorld(*mesh->shape());
    }
    readJoints();
    m_poseChanged = false;
}

void SceneView::readJoints() {
    m_joints.clear();
    for (const runtime::NodePtr& node : m_scene.nodes()) {
        if (!node->hasFn(HFn::kJoint) || !visibleInWorld(*node))
            continue;
        JointDraw joint;
        joint.position = toVector(runtime::worldPosition(*node));
        const runtime::Node* parent = node->parent();
        joint.parentPosition = parent && parent->hasFn(HFn::kJoint)
                                   ? toVector(runtime::worldPosition(*parent))
                                   : joint.position;
        HColor colour = runtime::dormantColor(*node);
        joint.colour = QVector3D(colour.r, colour.g, colour.b);
        m_joints.push_back(joint);
    }
    ++m_jointsVersion;
}

void SceneView::applySelection() {
    const HSelectionList& active = runtime::selection().active();
    for (std::unique_ptr<MeshDrawData>& mesh : m_meshes) {
        mesh->objectSelected = names(active, *mesh->shape(), Naming::kWholeObject);
        mesh->setSelectedVertices(runtime::verticesOn(HApiAccess::items(active), *mesh->shape()));
    }
    m_selectionChanged = false;
}

Bounds SceneView::selectionBounds() const {
    Bounds bounds;
    const HSelectionList& active = runtime::selection().active();
    for (const std::unique_ptr<MeshDrawData>& mesh : m_meshes) {
        if (mesh->objectSelected)
            for (unsigned v = 0; v < mesh->vertexCount(); ++v)
                bounds.add(mesh->worldPosition(v));
        for (unsigned v : mesh->selectedVertices())
            bounds.add(mesh->worldPosition(v));
    }
    for (const runtime::SelectionItem& item : HApiAccess::items(active)) {
        runtime::NodePtr node = runtime::itemNode(item);
        if (node && node->hasFn(HFn::kTransform) && !runtime::itemComponent(item))
            bounds.add(toVector(runtime::worldPosition(*node)));
    }
    return bounds;
}

Bounds SceneView::sceneBounds() const {
    Bounds bounds;
    for (const std::unique_ptr<MeshDrawData>& mesh : m_meshes)
        if (mesh->visible)
            for (unsigned v = 0; v < mesh->vertexCount(); ++v)
                bounds.add(mesh->worldPosition(v));
    for (const JointDraw& joint : m_joints)
        bounds.add(joint.position);
    return bounds;
}

} // namespace app::viewport
