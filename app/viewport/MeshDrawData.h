// MeshDrawData: one mesh shape as the viewport draws it, on the CPU: its bind geometry as
// triangles with smooth normals, its skinning attributes (SkinAttributes) when a skin cluster
// deforms it, its pose (the mesh's world matrix and one skinning matrix per influence, joint
// world matrix x bind-pre matrix x bind geometry matrix), and what the viewport shows of it
// (visible, hilited, selected vertices).
//
// The scene view (SceneView) owns these objects and changes them; the GPU side reads them and
// takes the change flags (takePoseChanged, takeSelectionChanged, skin()->takeChanges()) as it
// uploads. A new object is made whenever the geometry or the cluster changes, and id() tells
// the GPU side that it is new. worldPosition() deforms a vertex exactly as the vertex shader
// does, for picking and framing.
#pragma once

#include "HPoint.h"
#include "SkinAttributes.h"
#include "scene/Matrix.h"
#include "scene/Node.h"

#include <QMatrix4x4>
#include <QVector3D>
#include <cstdint>
#include <memory>
#include <vector>

namespace app::viewport {

// The scene's double-precision types as the viewport's floats.
QMatrix4x4 toQMatrix(const runtime::Matrix& matrix);
QVector3D toVector(const HPoint& point);

class MeshDrawData {
public:
    // cluster is the skin cluster deforming the shape, or null; heatInfluence as in
    // SkinAttributes::build.
    MeshDrawData(runtime::NodePtr shape, runtime::NodePtr cluster, int heatInfluence);

    std::uint64_t id() const { return m_id; }
    const runtime::NodePtr& shape() const { return m_shape; }
    const runtime::NodePtr& cluster() const { return m_cluster; }
    unsigned vertexCount() const { return static_cast<unsigned>(m_positions.size()); }

    const std::vector<QVector3D>& positions() const { return m_positions; }
    const std::vector<QVector3D>& normals() const { return m_normals; }
    const std::vector<unsigned>& triangles() const { return m_triangles; }

    SkinAttributes* skin() { return m_skin.get(); }
    const SkinAttributes* skin() const { return m_skin.get(); }
    // The influence index of joint in this mesh's cluster, or -1.
    int influenceIndex(const runtime::Node* joint) const;

    // Reads the matrices from the scene; remembers whether they changed.
    void updatePose();
    bool takePoseChanged();
    const QMatrix4x4& meshMatrix() const { return m_meshMatrix; }
    const std::vector<QMatrix4x4>& skinMatrices() const { return m_skinMatrices; }
    QVector3D worldPosition(unsigned vertex) const;

    bool visible = true;
    bool hilited = false;
    bool objectSelected = false;
    const std::vector<unsigned>& selectedVertices() const { return m_selectedVertices; }
    void setSelectedVertices(std::vector<unsigned> vertices);
    bool takeSelectionChanged();

private:
    void readGeometry();

    std::uint64_t m_id;
    runtime::NodePtr m_shape;
    runtime::NodePtr m_cluster;
    std::vector<QVector3D> m_positions;
    std::vector<QVector3D> m_normals;
    std::vector<unsigned> m_triangles;
    std::unique_ptr<SkinAttributes> m_skin;
    QMatrix4x4 m_meshMatrix;
    std::vector<QMatrix4x4> m_skinMatrices;
    bool m_poseChanged = true;
    std::vector<unsigned> m_selectedVertices;
    bool m_selectionChanged = true;
};

} // namespace app::viewport
