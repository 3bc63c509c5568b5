// Smoothing skin weights over the mesh's edges: when the passes stop, that the result does not
// depend on the order of the vertices or on how the work is split among threads, and that its
// record takes the weights back and forth exactly.
#include "scene/SkinSmoothing.h"

#include "scene/SkinClusterData.h"
#include "scene/VertexWeightRecord.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>
#include <numeric>

using fixture::FreshScene;

namespace {

runtime::SkinWeights& weightsOf(const fixture::SkinnedMesh& mesh) {
    return mesh.cluster->skinCluster()->weights();
}

std::vector<unsigned> everyVertex(const fixture::SkinnedMesh& mesh) {
    std::vector<unsigned> vertices(mesh.vertexCount());
    std::iota(vertices.begin(), vertices.end(), 0u);
    return vertices;
}

} // namespace

using SkinSmoothing = FreshScene;

TEST_F(SkinSmoothing, PassesStopAtTheFirstOneThatChangesNothing) {
    fixture::SkinnedMeshOptions options;
    options.joints = 2;
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh(options);
    const double first[2] = {1.0, 0.0}, second[2] = {0.0, 1.0};
    for (unsigned v = 0; v < body.vertexCount(); ++v)
        weightsOf(body).assignDense(v, v == 5 ? second : first, 2);

    runtime::SmoothingOptions smoothing;
    smoothing.threshold = 0.01;
    smoothing.maxPasses = 5;
    runtime::VertexWeightRecord record;
    unsigned passes = 99;
    ASSERT_TRUE(
        runtime::smoothSkinWeights(scene(), *body.cluster, {5}, smoothing, &record, &passes));
    EXPECT_EQ(passes, 1u);
    EXPECT_EQ(weightsOf(body).weight(5, 0), 1.0);
    EXPECT_EQ(record.vertices(), (std::vector<unsigned>{5}));
}

TEST_F(SkinSmoothing, OrderAndThreadSplitDoNotChangeTheResult) {
    fixture::SkinnedMeshOptions options;
    options.vertices = 60000;
    options.joints = 8;
    options.weightsPerVertex = 4;
    options.seed = 7;
    options.name = "forward";
    fixture::SkinnedMesh forward = fixture::makeSkinnedMesh(options);
    options.name = "backward";
    fixture::SkinnedMesh backward = fixture::makeSkinnedMesh(options);
    ASSERT_EQ(weightsOf(forward), weightsOf(backward));
    const runtime::SkinWeights start = weightsOf(forward);

    runtime::SmoothingOptions smoothing;
    smoothing.maxPasses = 3;
    smoothing.obeyMaxInfluences = true;
    smoothing.maxInfluences = 3;
    std::vector<unsigned> vertices = everyVertex(forward);
    ASSERT_TRUE(
        runtime::smoothSkinWeights(scene(), *forward.cluster, vertices, smoothing, nullptr));
    std::reverse(vertices.begin(), vertices.end());
    vertices.resize(vertices.size() - 7);
    vertices.insert(vertices.begin() + 1000, {6, 5, 4, 3, 2, 1, 0});
    ASSERT_TRUE(
        runtime::smoothSkinWeights(scene(), *backward.cluster, vertices, smoothing, nullptr));
    EXPECT_NE(weightsOf(forward), start);
    EXPECT_EQ(weightsOf(forward), weightsOf(backward));
}

TEST_F(SkinSmoothing, TheRecordRestoresBeforeAndAfterExactly) {
    fixture::SkinnedMeshOptions options;
    options.vertices = 400;
    options.joints = 5;
    options.weightsPerVertex = 3;
    options.seed = 3;
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh(options);
    runtime::SkinWeights before = weightsOf(body);
    runtime::SmoothingOptions smoothing;
    smoothing.maxPasses = 4;
    runtime::VertexWeightRecord record;
    ASSERT_TRUE(
        runtime::smoothSkinWeights(scene(), *body.cluster, everyVertex(body), smoothing, &record));
    runtime::SkinWeights after = weightsOf(body);
    ASSERT_NE(before, after);

    record.restoreBefore(weightsOf(body));
    EXPECT_EQ(weightsOf(body), before);
    record.restoreBefore(weightsOf(body));
    EXPECT_EQ(weightsOf(body), before);
    record.restoreAfter(weightsOf(body));
    EXPECT_EQ(weightsOf(body), after);
}

TEST_F(SkinSmoothing, BadInputChangesNothing) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    runtime::SkinWeights before = weightsOf(body);
    runtime::SmoothingOptions smoothing;
    HStatus status =
        runtime::smoothSkinWeights(scene(), *body.cluster, {0, 16}, smoothing, nullptr);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(status.errorString().asChar(), "Vertex 16 is not a vertex of the geometry.");
    status = runtime::smoothSkinWeights(scene(), *body.shape, {0}, smoothing, nullptr);
    EXPECT_STREQ(status.errorString().asChar(), "bodyShape is not a live skin cluster.");
    EXPECT_EQ(weightsOf(body), before);
}
