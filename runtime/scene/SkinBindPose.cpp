#include "scene/SkinBindPose.h"

#include "scene/MeshData.h"
#include "scene/Node.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"

namespace runtime {

std::vector<HPoint> bindPosePositions(const Node& cluster) {
    const SkinClusterData* data = cluster.skinCluster();
    NodePtr mesh = data ? skinClusterGeometry(cluster) : nullptr;
    if (!mesh || !mesh->mesh())
        return {};
    const Matrix& matrix = data->geometryMatrix();
    std::vector<HPoint> positions;
    positions.reserve(mesh->mesh()->vertexCount());
    for (const HPoint& point : mesh->mesh()->points())
        positions.push_back(matrix.transformPoint(point));
    return positions;
}

} // namespace runtime
