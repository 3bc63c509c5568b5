#include "sceneFixture.h"

#include "HFnSingleIndexedComponent.h"
#include "api/HApiAccess.h"
#include "document/SkinLockAttributes.h"
#include "scene/MeshData.h"
#include "scene/MeshPrimitives.h"
#include "scene/Selection.h"
#include "scene/SkinBinding.h"
#include "scene/SkinWeights.h"
#include "scene/Transforms.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace fixture {

namespace {

// Exactly `count` vertices on rows of `columns`, the last row possibly short; quads join each
// cell whose four corners exist. Around a cylinder the last column joins the first.
runtime::MeshGeometry makeSheet(unsigned count, MeshShape shape) {
    bool wrap = shape == MeshShape::kCylinder && count >= 3;
    unsigned columns = wrap ? std::min(8u, count)
                            : std::max(1u, static_cast<unsigned>(std::ceil(std::sqrt(count))));
    runtime::MeshGeometry geometry;
    for (unsigned i = 0; i < count; ++i) {
        double column = i % columns, row = i / columns;
        if (wrap) {
            double angle = 2.0 * 3.14159265358979323846 * column / columns;
            geometry.points.emplace_back(std::cos(angle), row, -std::sin(angle));
        } else {
            geometry.points.emplace_back(column, 0.0, row);
        }
    }
    unsigned cellsAcross = wrap ? columns : columns - 1;
    for (unsigned row = 0; (row + 1) * columns < count; ++row)
        for (unsigned c = 0; c < cellsAcross; ++c) {
            unsigned a = row * columns + c, b = row * columns + (c + 1) % columns;
            unsigned d = a + columns, e = b + columns;
            if (d >= count || e >= count)
                continue;
            geometry.polygonSizes.push_back(4);
            for (unsigned v : {a, d, e, b})
                geometry.polygonVertices.push_back(static_cast<int>(v));
        }
    return geometry;
}

runtime::SkinWeights makeWeights(const runtime::MeshData& mesh,
                                 const std::vector<runtime::NodePtr>& joints, unsigned perVertex,
                                 unsigned seed) {
    unsigned count = static_cast<unsigned>(joints.size());
    unsigned keep = std::clamp(perVertex, 1u, count);
    std::vector<HPoint> positions;
    for (const runtime::NodePtr& joint : joints)
        positions.push_back(runtime::worldPosition(*joint));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> share(0.05, 1.0);
    runtime::SkinWeights weights(mesh.vertexCount());
    std::vector<runtime::SkinWeights::Influence> order(count);
    std::vector<double> values(keep);
    for (unsigned v = 0; v < mesh.vertexCount(); ++v) {
        std::iota(order.begin(), order.end(), runtime::SkinWeights::Influence(0));
        if (seed != 0) {
            std::shuffle(order.begin(), order.end(), random);
        } else {
            HPoint point = mesh.point(v);
            std::stable_sort(order.begin(), order.end(), [&](unsigned a, unsigned b) {
                return point.distanceTo(positions[a]) < point.distanceTo(positions[b]);
            });
        }
        double total = 0.0;
        for (unsigned k = 0; k < keep; ++k) {
            double distance = mesh.point(v).distanceTo(positions[order[k]]);
            values[k] = seed != 0 ? share(random) : 1.0 / (0.1 + distance * distance);
            total += values[k];
        }
        for (double& value : values)
            value /= total;
        weights.assign(v, order.data(), values.data(), keep);
    }
    return weights;
}

} // namespace

HObject SkinnedMesh::clusterObject() const {
    return objectOf(cluster);
}

HDagPath SkinnedMesh::shapePath() const {
    return pathOf(shape);
}

HDagPath SkinnedMesh::jointPath(size_t index) const {
    return pathOf(joints.at(index));
}

unsigned SkinnedMesh::vertexCount() const {
    return shape->mesh()->vertexCount();
}

SkinnedMesh makeSkinnedMesh(const SkinnedMeshOptions& options) {
    runtime::Scene& scene = runtime::scene();
    SkinnedMesh result;
    HStatus status;
    runtime::MeshGeometry geometry = makeSheet(options.vertices, options.shape);
    double extent = 0.0;
    for (const HPoint& p : geometry.points)
        extent = std::max(extent, options.shape == MeshShape::kCylinder ? p.y : p.x);
    result.transform = runtime::createMeshObject(scene, geometry, options.name, &status);
    EXPECT_TRUE(status) << status.errorString().asChar();
    if (!status)
        return SkinnedMesh();
    result.shape = result.transform->children().front();
    runtime::Node* parent = nullptr;
    for (unsigned j = 0; j < options.joints; ++j) {
        runtime::NodePtr joint = scene.createNode(
            "joint", options.name + "Joint" + std::to_string(j + 1), parent, &status);
        EXPECT_TRUE(status) << status.errorString().asChar();
        double along = options.joints > 1 ? extent * j / (options.joints - 1) : 0.0;
        HPoint position = options.shape == MeshShape::kCylinder ? HPoint(0.0, along, 0.0)
                                                                : HPoint(along, 0.0, 0.0);
        runtime::setWorldPosition(scene, *joint, position);
        result.joints.push_back(joint);
        parent = joint.get();
    }
    runtime::SkinWeights weights =
        makeWeights(*result.shape->mesh(), result.joints, options.weightsPerVertex, options.seed);
    result.cluster = runtime::createSkinCluster(scene, result.joints, *result.shape,
                                                std::move(weights), options.clusterName, &status);
    EXPECT_TRUE(status) << status.errorString().asChar();
    return result;
}

HObject objectOf(const runtime::NodePtr& node) {
    return HApiAccess::object(node);
}

HDagPath pathOf(const runtime::NodePtr& node) {
    return HApiAccess::path(node);
}

HObject vertexComponent(std::initializer_list<int> vertices) {
    HFnSingleIndexedComponent fn;
    HObject component = fn.create(HFn::kMeshVertComponent);
    for (int vertex : vertices)
        fn.addElement(vertex);
    return component;
}

runtime::AttributePtr cellLockAttribute() {
    return runtime::lockedCellIndicesAttribute();
}

void FreshScene::SetUp() {
    runtime::scene().reset();
}

runtime::Scene& FreshScene::scene() const {
    return runtime::scene();
}

} // namespace fixture
