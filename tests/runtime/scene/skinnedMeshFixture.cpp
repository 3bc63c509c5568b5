// The scene fixture that most tests stand on: it must build exactly what it is asked for.
#include "scene/MeshData.h"
#include "scene/SkinClusterData.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;

namespace {

std::vector<double> allWeights(const fixture::SkinnedMesh& mesh) {
    const runtime::SkinWeights& weights = mesh.cluster->skinCluster()->weights();
    std::vector<double> dense(static_cast<size_t>(weights.vertexCount()) * mesh.joints.size());
    for (unsigned v = 0; v < weights.vertexCount(); ++v)
        weights.readDense(v, dense.data() + v * mesh.joints.size(),
                          static_cast<unsigned>(mesh.joints.size()));
    return dense;
}

} // namespace

using SkinnedMeshFixture = FreshScene;

TEST_F(SkinnedMeshFixture, GivesExactlyWhatWasAskedFor) {
    for (fixture::MeshShape shape : {fixture::MeshShape::kGrid, fixture::MeshShape::kCylinder}) {
        for (unsigned vertices : {1u, 7u, 50u}) {
            scene().reset();
            fixture::SkinnedMeshOptions options;
            options.shape = shape;
            options.vertices = vertices;
            options.joints = 5;
            options.weightsPerVertex = 3;
            fixture::SkinnedMesh mesh = fixture::makeSkinnedMesh(options);
            ASSERT_TRUE(mesh.cluster);
            EXPECT_EQ(mesh.vertexCount(), vertices);
            EXPECT_EQ(mesh.joints.size(), 5u);
            EXPECT_EQ(mesh.joints[4]->fullPathName(),
                      "|bodyJoint1|bodyJoint2|bodyJoint3|bodyJoint4|bodyJoint5");
            const runtime::SkinWeights& weights = mesh.cluster->skinCluster()->weights();
            for (unsigned v = 0; v < vertices; ++v) {
                EXPECT_EQ(weights.entryCount(v), 3u);
                double sum = 0.0;
                for (unsigned e = 0; e < weights.entryCount(v); ++e)
                    sum += weights.weights(v)[e];
                EXPECT_NEAR(sum, 1.0, 1e-12);
            }
        }
    }
}

TEST_F(SkinnedMeshFixture, TheSameSeedGivesTheSameWeights) {
    fixture::SkinnedMeshOptions options;
    options.seed = 5;
    options.vertices = 40;
    std::vector<double> first = allWeights(fixture::makeSkinnedMesh(options));
    scene().reset();
    EXPECT_EQ(allWeights(fixture::makeSkinnedMesh(options)), first);
    scene().reset();
    options.seed = 6;
    EXPECT_NE(allWeights(fixture::makeSkinnedMesh(options)), first);
    options.name = "arm";
    options.seed = 0;
    fixture::SkinnedMesh arm = fixture::makeSkinnedMesh(options);
    EXPECT_EQ(arm.cluster->name(), "skinCluster2");
    EXPECT_EQ(arm.shape->fullPathName(), "|arm|armShape");
}
