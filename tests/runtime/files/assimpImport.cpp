#include "files/SceneFiles.h"
#include "gltfTestFiles.h"

#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

using namespace runtime;

namespace {

int influenceNamed(const SceneDescription& scene, const SceneSkin& skin, const std::string& name) {
    for (int i = 0; i < static_cast<int>(skin.joints.size()); ++i)
        if (scene.nodes[skin.joints[i]].name == name)
            return i;
    return -1;
}

double weightSum(const SparseSkinWeights& weights, int v) {
    double sum = 0.0;
    for (const SkinWeight& entry : weights.vertex(v))
        sum += entry.weight;
    return sum;
}

} // namespace

TEST(AssimpImport, DirectXModelReadsItsThirtySevenBonesAndTheirWeights) {
    SceneDescription scene = filetest::readScene(filetest::importModelPath("X/Testwuson.X"));
    ASSERT_EQ(scene.skins.size(), 1u);
    const SceneSkin& skin = scene.skins[0];
    EXPECT_EQ(skin.joints.size(), 37u); // the file's XSkinMeshHeader: 37 bones
    for (int joint : skin.joints)
        EXPECT_TRUE(scene.nodes[joint].isJoint) << scene.nodes[joint].name;
    const int foreLeg = influenceNamed(scene, skin, "ForeLeg_R_05");
    const int parent = influenceNamed(scene, skin, "ForeLeg_R_04");
    ASSERT_GE(foreLeg, 0);
    ASSERT_GE(parent, 0);
    EXPECT_EQ(scene.nodes[skin.joints[foreLeg]].parent, skin.joints[parent]);

    // The file gives vertex 2461 (-0.321219, 0.146115, -0.579032 in its left-handed space) 0.05
    // of ForeLeg_R_05; the rest of it belongs to ForeLeg_R_04.
    const SceneMesh& mesh = scene.meshes[scene.nodes[skin.meshNode].mesh];
    int found = 0;
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        const auto& p = mesh.points[v];
        if (std::fabs(p[0] + 0.321219) > 1e-6 || std::fabs(p[1] - 0.146115) > 1e-6 ||
            std::fabs(p[2] - 0.579032) > 1e-6)
            continue;
        ++found;
        EXPECT_EQ(skin.weights.weight(v, foreLeg), static_cast<double>(0.05f));
        EXPECT_EQ(skin.weights.weight(v, parent), static_cast<double>(0.95f));
    }
    EXPECT_EQ(found, 1);
    for (int v = 0; v < mesh.vertexCount(); ++v)
        EXPECT_LE(skin.weights.vertex(v).size(), 4u); // the header's most weights per vertex
}

TEST(AssimpImport, FbxBonesKeepTheirHierarchy) {
    SceneDescription scene = filetest::readScene(filetest::importModelPath("FBX/huesitos.fbx"));
    ASSERT_EQ(scene.skins.size(), 1u);
    const SceneSkin& skin = scene.skins[0];
    EXPECT_EQ(skin.joints.size(), 9u);
    EXPECT_EQ(scene.meshes[scene.nodes[skin.meshNode].mesh].name, "Cylinder");
    EXPECT_EQ(scene.nodes[filetest::nodeNamed(scene, "Bone.001")].parent,
              filetest::nodeNamed(scene, "Bone"));
    EXPECT_EQ(scene.nodes[filetest::nodeNamed(scene, "Bone")].parent,
              filetest::nodeNamed(scene, "Armature"));
    EXPECT_TRUE(scene.nodes[filetest::nodeNamed(scene, "Bone.008")].isJoint);
    EXPECT_FALSE(scene.nodes[filetest::nodeNamed(scene, "Bone.008_end")].isJoint);
    EXPECT_FALSE(scene.nodes[filetest::nodeNamed(scene, "Armature")].isJoint);
    for (int v = 0; v < skin.weights.vertexCount(); ++v)
        EXPECT_FALSE(skin.weights.vertex(v).size() == 0) << "vertex " << v;
}

TEST(AssimpImport, WeightsThatDoNotSumToOneStayAsTheFileHasThem) {
    SceneDescription scene =
        filetest::readScene(filetest::importModelPath("FBX/animation_with_skeleton.fbx"));
    ASSERT_EQ(scene.skins.size(), 1u);
    const SparseSkinWeights& weights = scene.skins[0].weights;
    EXPECT_EQ(scene.skins[0].joints.size(), 14u);
    double lowest = 2.0, highest = 0.0;
    for (int v = 0; v < weights.vertexCount(); ++v) {
        lowest = std::min(lowest, weightSum(weights, v));
        highest = std::max(highest, weightSum(weights, v));
    }
    EXPECT_LT(lowest, 0.95);
    EXPECT_GT(highest, 1.3);
}

TEST(AssimpImport, BrokenOrUnknownFilesAreRefused) {
    QTemporaryDir folder;
    const std::string cut = folder.filePath("cut.fbx").toStdString();
    filetest::writeBytes(
        cut, filetest::readText(filetest::importModelPath("FBX/huesitos.fbx")).substr(0, 3000));
    SceneDescription scene;
    scene.nodes.resize(1);
    FileResult broken = readSceneFile(cut, scene);
    EXPECT_EQ(broken.outcome, FileResult::Outcome::kFailed);
    EXPECT_EQ(broken.message.rfind("Cannot read \"" + cut + "\": ", 0), 0u) << broken.message;
    EXPECT_EQ(scene.nodes.size(), 1u);

    const std::string unknown = folder.filePath("notes.txt").toStdString();
    filetest::writeBytes(unknown, "not a scene");
    EXPECT_EQ(readSceneFile(unknown, scene).message,
              "Cannot read \"" + unknown + "\": its format is not known by its extension.");
    EXPECT_EQ(writeSceneFile(scene, cut).message,
              "Cannot write \"" + cut + "\": files of this format can only be read.");
    EXPECT_TRUE(readsSceneFile("a.FBX"));
    EXPECT_TRUE(writesSceneFile("a.GLB"));
    EXPECT_FALSE(writesSceneFile("a.dae"));
}

TEST(AssimpImport, BindMatricesThatAreNotFiniteAreRefused) {
    // One triangle skinned to one joint, whose offset matrix starts with the given number.
    const auto skinnedTriangle = [](const std::string& first) {
        const std::string identity =
            "1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0;;";
        return "xof 0303txt 0032\n"
               "Frame Root {\n FrameTransformMatrix { " +
               identity + " }\n Frame Bone { FrameTransformMatrix { " + identity +
               " } }\n Mesh Tri {\n  3; 0.0;0.0;0.0;, 1.0;0.0;0.0;, 0.0;1.0;0.0;;\n"
               "  1; 3;0,1,2;;\n  XSkinMeshHeader { 1; 1; 1; }\n"
               "  SkinWeights { \"Bone\"; 3; 0,1,2; 1.0,1.0,1.0; " +
               first + identity.substr(3) + " }\n }\n}\n";
    };
    QTemporaryDir folder;
    const std::string good = folder.filePath("good.x").toStdString();
    filetest::writeBytes(good, skinnedTriangle("1.0"));
    SceneDescription scene;
    ASSERT_TRUE(readSceneFile(good, scene).ok());
    ASSERT_EQ(scene.skins.size(), 1u);
    for (const char* number : {"nan", "inf", "-inf"}) {
        SCOPED_TRACE(number);
        const std::string bad = folder.filePath("bad.x").toStdString();
        filetest::writeBytes(bad, skinnedTriangle(number));
        SceneDescription kept;
        kept.nodes.resize(1);
        EXPECT_EQ(readSceneFile(bad, kept).message,
                  "Cannot read \"" + bad +
                      "\": skin 0 has an inverse bind matrix that is not finite.");
        EXPECT_EQ(kept.nodes.size(), 1u);
    }
}
