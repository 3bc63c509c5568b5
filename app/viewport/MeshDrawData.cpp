#include "MeshDrawData.h"

#include "scene/MeshData.h"
#include "scene/SkinClusterData.h"
#include "scene/Transforms.h"

#include <utility>

namespace app::viewport {

namespace {

std::uint64_t nextId() {
    static std::uint64_t id = 0;
    return ++id;
}

} // namespace

QMatrix4x4 toQMatrix(const runtime::Matrix& matrix) {
    QMatrix4x4 result;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            result(row, column) = static_cast<float>(matrix.m[row][column]);
    return result;
}

QVector3D toVector(const HPoint& point) {
    return QVector3D(float(point.x), float(point.y), float(point.z));
}

MeshDrawData::MeshDrawData(runtime::NodePtr shape, runtime::NodePtr cluster, int heatInfluence)
    : m_id(nextId()), m_shape(std::move(shape)), m_cluster(std::move(cluster)) {
    readGeometry();
    const runtime::SkinClusterData* data = m_cluster ? m_cluster->skinCluster() : nullptr;
    if (data && data->weights().vertexCount() == vertexCount()) {
        m_skin = std::make_unique<SkinAttributes>();
        m_skin->build(data->weights(), heatInfluence);
    }
    updatePose();
}

void MeshDrawData::readGeometry() {
    const runtime::MeshData& mesh = *m_shape->mesh();
    m_positions.reserve(mesh.vertexCount());
    for (const HPoint& point : mesh.points())
        m_positions.push_back(toVector(point));
    m_normals.assign(m_positions.size(), QVector3D());
    for (unsigned p = 0; p < mesh.polygonCount(); ++p) {
        runtime::IndexRange polygon = mesh.polygon(p);
        // Newell's normal, weighted by area, holds for polygons that are not flat too.
        QVector3D normal;
        for (size_t i = 0; i < polygon.size(); ++i) {
            const QVector3D& a = m_positions[polygon[i]];
            const QVector3D& b = m_positions[polygon[(i + 1) % polygon.size()]];
            normal +=
                QVector3D((a.y() - b.y()) * (a.z() + b.z()), (a.z() - b.z()) * (a.x() + b.x()),
                          (a.x() - b.x()) * (a.y() + b.y()));
        }
        for (int vertex : polygon)
            m_normals[vertex] += normal;
        for (size_t i = 1; i + 1 < polygon.size(); ++i) {
            m_triangles.push_back(static_cast<unsigned>(polygon[0]));
            m_triangles.push_back(static_cast<unsigned>(polygon[i]));
            m_triangles.push_back(static_cast<unsigned>(polygon[i + 1]));
        }
    }
    for (QVector3D& normal : m_normals)
        normal.normalize();
}

int MeshDrawData::influenceIndex(const runtime::Node* joint) const {
    if (!joint || !m_skin)
        return -1;
    return m_cluster->skinCluster()->indexOf(joint);
}

void MeshDrawData::updatePose() {
    QMatrix4x4 meshMatrix = toQMatrix(runtime::worldMatrix(*m_shape));
    std::vector<QMatrix4x4> skinMatrices;
    if (m_skin) {
        const runtime::SkinClusterData& data = *m_cluster->skinCluster();
        skinMatrices.reserve(data.influenceCount());
        for (unsigned i = 0; i < data.influenceCount(); ++i) {
            const runtime::NodePtr& joint = data.influences()[i];
            // A deleted influence stays where it was bound.
            runtime::Matrix skinning =
                joint->isAlive()
                    ? runtime::worldMatrix(*joint) * data.bindPreMatrix(i) * data.geometryMatrix()
                    : data.geometryMatrix();
            skinMatrices.push_back(toQMatrix(skinning));
        }
    }
    if (meshMatrix != m_meshMatrix || skinMatrices != m_skinMatrices) {
        m_meshMatrix = meshMatrix;
        m_skinMatrices = std::move(skinMatrices);
        m_poseChanged = true;
    }
}

bool MeshDrawData::takePoseChanged() {
    return std::exchange(m_poseChanged, false);
}

QVector3D MeshDrawData::worldPosition(unsigned vertex) const {
    const QVector3D& position = m_positions[vertex];
    if (!m_skin)
        return m_meshMatrix.map(position);
    const SkinSlots& vertexSlots = m_skin->skinSlots()[vertex];
    QVector3D deformed;
    float total = 0.0f;
    for (unsigned i = 0; i < kSkinSlots; ++i) {
        float weight = vertexSlots.weights[i];
        if (weight == 0.0f || vertexSlots.influences[i] >= m_skinMatrices.size())
            continue;
        deformed += m_skinMatrices[vertexSlots.influences[i]].map(position) * weight;
        total += weight;
    }
    // A vertex without weights stays with the mesh, as the shader keeps it.
    return total > 0.0f ? deformed / total : m_meshMatrix.map(position);
}

void MeshDrawData::setSelectedVertices(std::vector<unsigned> vertices) {
    if (vertices == m_selectedVertices)
        return;
    m_selectedVertices = std::move(vertices);
    m_selectionChanged = true;
}

bool MeshDrawData::takeSelectionChanged() {
    return std::exchange(m_selectionChanged, false);
}

} // namespace app::viewport
