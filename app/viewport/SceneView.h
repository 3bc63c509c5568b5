// SceneView: the viewport's picture of the running host's scene, without OpenGL: a
// MeshDrawData per mesh shape, the joints as bones, the heat map's influence, and the state
// of the selection and the hilite list on each mesh.
//
// It listens to the scene's change notices, "SelectionChanged" and the display's change
// notices (hilite list, tool), only remembers what they touched and calls `changed` (the
// widget schedules a frame). prepare(), called before each frame, brings the picture up to
// date doing only what the notices asked for: a weight edit refreshes the edited vertices'
// attributes, a joint move only the matrices, a selection change only the selection, and a
// mesh is read again only when its geometry or its skin cluster changed. Construct it while
// the host runs and destroy it before the host stops.
#pragma once

#include "Camera.h"
#include "MeshDrawData.h"
#include "scene/Scene.h"

#include <QVector3D>
#include <functional>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace app::viewport {

struct JointDraw {
    QVector3D position;
    QVector3D parentPosition; // the parent joint's, or the joint's own at the root
    QVector3D colour;
};

class SceneView {
public:
    explicit SceneView(std::function<void()> changed);
    ~SceneView();
    SceneView(const SceneView&) = delete;
    SceneView& operator=(const SceneView&) = delete;

    void prepare();

    const std::vector<std::unique_ptr<MeshDrawData>>& meshes() const { return m_meshes; }
    const std::vector<JointDraw>& joints() const { return m_joints; }
    // Counts the changes of joints(), so that the GPU side knows when to send them again.
    unsigned long long jointsVersion() const { return m_jointsVersion; }
    const runtime::NodePtr& heatInfluence() const { return m_heatInfluence; }
    // The size of the meshes as read (bind pose): what the grid's spacing follows.
    float sceneRadius() const { return m_sceneRadius; }

    // Whether the scene was emptied (a new or opened scene) since the last call.
    bool takeSceneReplaced();

    // Deformed world positions of the selection (vertices, meshes, joints and transforms),
    // and of everything visible.
    Bounds selectionBounds() const;
    Bounds sceneBounds() const;

private:
    struct WeightEdit {
        bool all = false;
        std::vector<unsigned> vertices;
    };

    void sceneChanged(const runtime::SceneChange& change);
    static void selectionChanged(void* self);
    void syncMeshes();
    void applyWeightEdits();
    void applyDisplay();
    void applyPose();
    void applySelection();
    void readJoints();

    std::function<void()> m_changed;
    runtime::Scene& m_scene;
    runtime::Scene::ListenerId m_sceneListener = 0;
    unsigned long long m_selectionCallback = 0;
    unsigned long long m_displayWatch = 0;

    std::vector<std::unique_ptr<MeshDrawData>> m_meshes;
    std::vector<JointDraw> m_joints;
    unsigned long long m_jointsVersion = 0;
    runtime::NodePtr m_heatInfluence;
    float m_sceneRadius = 0.0f;

    bool m_structureChanged = true;
    bool m_poseChanged = true;
    bool m_selectionChanged = true;
    bool m_displayChanged = true;
    bool m_sceneReplaced = false;
    std::unordered_set<const runtime::Node*> m_geometryChanged;
    std::unordered_map<const runtime::Node*, WeightEdit> m_weightEdits;
};

} // namespace app::viewport
