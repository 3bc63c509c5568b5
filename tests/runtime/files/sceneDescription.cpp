#include "files/SceneDescription.h"

#include "files/GltfWriter.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace runtime;

namespace {

std::vector<SkinWeight> entries(const SparseSkinWeights& weights, int vertex) {
    SparseSkinWeights::Range range = weights.vertex(vertex);
    return {range.begin(), range.end()};
}

// One node with a triangle, skinned to itself.
SceneDescription skinnedTriangle() {
    SceneDescription scene;
    SceneNode node;
    node.mesh = 0;
    scene.nodes.push_back(node);
    SceneMesh mesh;
    mesh.points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    mesh.polygonSizes = {3};
    mesh.polygonVertices = {0, 1, 2};
    scene.meshes.push_back(mesh);
    SceneSkin skin;
    skin.meshNode = 0;
    skin.joints = {0};
    skin.inverseBindMatrices = {identityMatrix()};
    for (int v = 0; v < 3; ++v) {
        skin.weights.startVertex();
        skin.weights.add(0, 1.0);
    }
    scene.skins.push_back(skin);
    return scene;
}

} // namespace

TEST(SparseSkinWeights, GatherKeepsEachVertexsOrderAndAddsRepeats) {
    SparseSkinWeights weights = SparseSkinWeights::gather(
        4, {{2, 1, 0.5}, {0, 3, 0.25}, {2, 0, 0.125}, {2, 1, 0.25}, {0, 1, 0.5}});
    ASSERT_EQ(weights.vertexCount(), 4);
    EXPECT_EQ(entries(weights, 0), (std::vector<SkinWeight>{{3, 0.25}, {1, 0.5}}));
    EXPECT_TRUE(entries(weights, 1).empty());
    EXPECT_EQ(entries(weights, 2), (std::vector<SkinWeight>{{1, 0.75}, {0, 0.125}}));
    EXPECT_TRUE(entries(weights, 3).empty());
    EXPECT_EQ(weights.weight(2, 1), 0.75);
    EXPECT_EQ(weights.weight(2, 5), 0.0);
}

TEST(SparseSkinWeights, SameWeightsIgnoresTheOrderWithinAVertex) {
    SparseSkinWeights a = SparseSkinWeights::gather(2, {{0, 0, 0.5}, {0, 1, 0.5}, {1, 2, 1.0}});
    SparseSkinWeights b = SparseSkinWeights::gather(2, {{0, 1, 0.5}, {0, 0, 0.5}, {1, 2, 1.0}});
    SparseSkinWeights c = SparseSkinWeights::gather(2, {{0, 1, 0.5}, {0, 0, 0.5}, {1, 2, 0.9}});
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a.sameWeights(b));
    EXPECT_FALSE(a.sameWeights(c));
    EXPECT_TRUE(a.sameWeights(c, 0, 1));
}

TEST(SceneConsistency, NamesTheFirstProblem) {
    EXPECT_EQ(firstInconsistency(skinnedTriangle()), "");

    SceneDescription parentAfter = skinnedTriangle();
    parentAfter.nodes.push_back(SceneNode{});
    parentAfter.nodes[0].parent = 1;
    EXPECT_EQ(firstInconsistency(parentAfter), "node 0 has a parent that does not come before it");

    SceneDescription badPolygon = skinnedTriangle();
    badPolygon.meshes[0].polygonVertices[2] = 3;
    EXPECT_EQ(firstInconsistency(badPolygon), "mesh 0 has a polygon vertex out of range");

    SceneDescription shortWeights = skinnedTriangle();
    shortWeights.skins[0].weights = SparseSkinWeights::gather(2, {});
    EXPECT_EQ(firstInconsistency(shortWeights),
              "skin 0 has weights for 2 vertices, its mesh has 3");

    SceneDescription strayInfluence = skinnedTriangle();
    strayInfluence.skins[0].weights = SparseSkinWeights::gather(3, {{1, 1, 1.0}});
    EXPECT_EQ(firstInconsistency(strayInfluence),
              "skin 0 has a weight out of range or not finite on vertex 1");

    SceneDescription lockedBeyond = skinnedTriangle();
    lockedBeyond.skins[0].locks.lockedVertices = {1, 3};
    EXPECT_EQ(firstInconsistency(lockedBeyond),
              "skin 0 has locked vertices out of range or out of order");
}

TEST(SceneConsistency, WriterRefusesAnInconsistentScene) {
    QTemporaryDir folder;
    const std::string path = folder.filePath("bad.glb").toStdString();
    SceneDescription scene = skinnedTriangle();
    scene.skins[0].inverseBindMatrices.clear();
    FileResult result = writeGltf(scene, path);
    EXPECT_EQ(result.outcome, FileResult::Outcome::kFailed);
    EXPECT_EQ(result.message, "Cannot write \"" + path +
                                  "\": the scene is inconsistent: skin 0 needs one inverse bind "
                                  "matrix per joint.");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path)));
}
