#include "files/GltfReader.h"
#include "gltfTestFiles.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace runtime;

TEST(GltfSamples, SimpleSkinReadsItsStripOfTenVerticesOnTwoJoints) {
    SKIP_WITHOUT_TEST_ASSETS();
    SceneDescription scene = filetest::readScene(filetest::assetPath("gltf/SimpleSkin.gltf"));
    ASSERT_EQ(scene.nodes.size(), 3u);
    ASSERT_EQ(scene.meshes.size(), 1u);
    ASSERT_EQ(scene.skins.size(), 1u);
    const SceneMesh& mesh = scene.meshes[0];
    EXPECT_EQ(mesh.vertexCount(), 10);
    EXPECT_EQ(mesh.polygonSizes, std::vector<int>(8, 3));
    EXPECT_EQ((mesh.points[9]), (std::array<double, 3>{0.5, 2.0, 0.0}));

    // The mesh node is a root; the two joints form a chain beside it.
    const SceneSkin& skin = scene.skins[0];
    EXPECT_EQ(scene.nodes[skin.meshNode].mesh, 0);
    EXPECT_EQ(scene.nodes[skin.meshNode].parent, -1);
    ASSERT_EQ(skin.joints.size(), 2u);
    EXPECT_EQ(scene.nodes[skin.joints[1]].parent, skin.joints[0]);
    EXPECT_TRUE(scene.nodes[skin.joints[0]].isJoint);
    EXPECT_FALSE(scene.nodes[skin.meshNode].isJoint);
    EXPECT_EQ(scene.nodes[skin.joints[0]].transform.translation, (std::array<double, 3>{0, 1, 0}));
    EXPECT_EQ(skin.inverseBindMatrices[1][13], -1.0);

    // From the bottom row, all on the first joint, to the top row, all on the second.
    EXPECT_EQ(skin.weights.vertex(0).size(), 1u);
    EXPECT_EQ(skin.weights.weight(0, 0), 1.0);
    EXPECT_EQ(skin.weights.weight(5, 0), 0.5);
    EXPECT_EQ(skin.weights.weight(5, 1), 0.5);
    EXPECT_EQ(skin.weights.vertex(9).size(), 1u);
    EXPECT_EQ(skin.weights.weight(9, 1), 1.0);
    EXPECT_TRUE(skin.locks.empty());
}

TEST(GltfSamples, RiggedSimpleReadsItsCylinderWithWeightsAsStored) {
    SKIP_WITHOUT_TEST_ASSETS();
    SceneDescription scene = filetest::readScene(filetest::assetPath("gltf/RiggedSimple.gltf"));
    ASSERT_EQ(scene.meshes.size(), 1u);
    ASSERT_EQ(scene.skins.size(), 1u);
    const SceneMesh& mesh = scene.meshes[0];
    EXPECT_EQ(mesh.name, "Cylinder");
    EXPECT_EQ(mesh.vertexCount(), 96);
    EXPECT_EQ(mesh.polygonSizes.size(), 564u / 3);

    const SceneSkin& skin = scene.skins[0];
    ASSERT_EQ(skin.joints.size(), 2u);
    EXPECT_EQ(skin.weights.vertexCount(), 96);
    // The file's float weights, unchanged.
    EXPECT_EQ(skin.weights.weight(50, 0), static_cast<double>(0.738601803779602f));
    EXPECT_EQ(skin.weights.weight(50, 1), static_cast<double>(0.26139819622039795f));
    EXPECT_EQ(skin.weights.weight(95, 1), 1.0);

    // The root keeps its matrix; the first joint is a child of an unnamed node.
    EXPECT_EQ(scene.nodes[0].transform.form, NodeTransform::Form::kMatrix);
    EXPECT_EQ(scene.nodes[0].transform.matrix[6], -1.0);
    const SceneNode& joint = scene.nodes[skin.joints[0]];
    EXPECT_EQ(joint.transform.form, NodeTransform::Form::kComponents);
    EXPECT_EQ(joint.transform.rotation[0], static_cast<double>(-0.7047404050827026));
    EXPECT_EQ(scene.nodes[skin.joints[1]].parent, skin.joints[0]);
}

TEST(GltfSamples, GlbAndExternalBuffersReadLikeEmbeddedOnes) {
    QTemporaryDir folder;
    const filetest::GltfFile quad = filetest::skinnedQuad();
    const std::string embedded = folder.filePath("quad.gltf").toStdString();
    const std::string external = folder.filePath("quad-external.gltf").toStdString();
    const std::string binary = folder.filePath("quad.glb").toStdString();
    quad.save(embedded);
    quad.save(external, "quad data.bin");
    quad.save(binary);
    for (const std::string& path : {embedded, external, binary}) {
        SceneDescription scene = filetest::readScene(path);
        ASSERT_EQ(scene.skins.size(), 1u) << path;
        const SparseSkinWeights& weights = scene.skins[0].weights;
        EXPECT_EQ(weights.weight(1, 0), 0.75) << path;
        EXPECT_EQ(weights.weight(2, 1), 0.75) << path;
        EXPECT_EQ(scene.nodes[filetest::nodeNamed(scene, "tip")].parent,
                  filetest::nodeNamed(scene, "root"))
            << path;
        EXPECT_EQ(scene.meshes[0].polygonVertices, (std::vector<int>{0, 1, 2, 2, 1, 3})) << path;
    }
}

TEST(GltfSamples, AllWeightSetsAndPrimitivesAreRead) {
    // A second primitive repeats the quad with a second weight set; its vertices follow the
    // first primitive's, and its indices move with them.
    filetest::GltfFile file = filetest::skinnedQuad();
    filetest::Json second = file.json["meshes"][0]["primitives"][0];
    second["attributes"]["JOINTS_1"] = 2;
    second["attributes"]["WEIGHTS_1"] = 3;
    file.json["meshes"][0]["primitives"].push_back(second);
    QTemporaryDir folder;
    const std::string path = folder.filePath("two.gltf").toStdString();
    file.save(path);

    SceneDescription scene = filetest::readScene(path);
    const SceneMesh& mesh = scene.meshes[0];
    EXPECT_EQ(mesh.vertexCount(), 8);
    EXPECT_EQ(std::vector<int>(mesh.polygonVertices.begin() + 6, mesh.polygonVertices.end()),
              (std::vector<int>{4, 5, 6, 6, 5, 7}));
    const SparseSkinWeights& weights = scene.skins[0].weights;
    EXPECT_EQ(weights.weight(1, 0), 0.75);
    // Both sets name the same joints: they add up, as a viewer would apply them.
    EXPECT_EQ(weights.weight(5, 0), 1.5);
    EXPECT_EQ(weights.weight(5, 1), 0.5);
    EXPECT_EQ(weights.vertex(5).size(), 2u);
}
