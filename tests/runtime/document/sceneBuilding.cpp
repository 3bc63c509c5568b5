#include "document/SceneBuilding.h"

#include "HFnCompoundAttribute.h"
#include "HFnNumericAttribute.h"
#include "HFnTypedAttribute.h"
#include "api/HApiAccess.h"
#include "document/SceneDescribing.h"
#include "document/SkinLockAttributes.h"
#include "document/TransformConversion.h"
#include "documentTesting.h"
#include "gltfTestFiles.h"
#include "scene/NodeValues.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/Transforms.h"

using namespace documenttest;
using runtime::NodePtr;

namespace {

class SceneBuilding : public DocumentTest {
protected:
    // Builds the description as the open scene; returns the build's result.
    runtime::FileResult build(const runtime::SceneDescription& description) {
        std::unique_ptr<runtime::Scene> staging = runtime::scene().makeStaging();
        runtime::FileResult result = runtime::buildScene(description, *staging, "in.gltf",
                                                         runtime::ProgressReporter::silent());
        if (result.ok())
            runtime::scene().replaceWith(*staging);
        return result;
    }
    NodePtr node(const std::string& name) { return runtime::scene().findNode(name); }
};

// The joint chain j0..j5 over the quad "body" (gltfTestFiles.h), its influences listed last to
// first, the body moved, and locks of every kind.
runtime::SceneDescription lockedChain() {
    runtime::SceneDescription description = filetest::jointChainOverQuad();
    runtime::SceneSkin& skin = description.skins[0];
    skin.joints = {5, 4, 3, 2, 1, 0};
    std::reverse(skin.inverseBindMatrices.begin(), skin.inverseBindMatrices.end());
    description.nodes[6].transform.translation = {0.0, 0.0, 2.0};
    description.nodes[2].lockInfluenceWeights = true;
    skin.locks.lockedJointNames = {"|j0|j1|j2"};
    skin.locks.lockedVertices = {1, 3};
    skin.locks.lockedCells = {{0, {"|j0", "|j0|j1"}}};
    return description;
}

// The attributes as the weight editor makes them through the host interface.
std::vector<runtime::AttributePtr> editorLockAttributes() {
    HFnTypedAttribute typed;
    HFnNumericAttribute numeric;
    HFnCompoundAttribute compound;
    HObject names =
        typed.create("lockedJointNames", "lockedJointNames", HFnData::kStringArray, HObject());
    HObject vertices =
        numeric.create("lockedVertexIndices", "lockedVertexIndices", HFnNumericData::kBoolean, 0);
    numeric.setArray(true);
    HObject joints =
        typed.create("lockedLocalJoints", "lockedLocalJoints", HFnData::kString, HObject());
    typed.setArray(true);
    HObject cells = compound.create("lockedCellIndices", "lockedCellIndices");
    compound.addChild(joints);
    compound.setArray(true);
    std::vector<runtime::AttributePtr> result;
    for (const HObject& object : {names, vertices, cells})
        result.push_back(HApiAccess::as<runtime::AttributeDef>(object));
    return result;
}

void expectSameDefinition(const runtime::AttributeDef& actual,
                          const runtime::AttributeDef& expected) {
    SCOPED_TRACE(expected.longName());
    EXPECT_EQ(actual.longName(), expected.longName());
    EXPECT_EQ(actual.shortName(), expected.shortName());
    EXPECT_EQ(actual.kind(), expected.kind());
    EXPECT_EQ(actual.valueType(), expected.valueType());
    EXPECT_EQ(actual.defaultValue(), expected.defaultValue());
    EXPECT_EQ(actual.isArray(), expected.isArray());
    ASSERT_EQ(actual.childCount(), expected.childCount());
    for (size_t i = 0; i < actual.childCount(); ++i)
        expectSameDefinition(*actual.child(i), *expected.child(i));
}

TEST_F(SceneBuilding, MakesJointsMeshesAndClustersAsTheFileHasThem) {
    const runtime::SceneDescription description = lockedChain();
    ASSERT_TRUE(build(description).ok());

    EXPECT_EQ(stringResult("ls -l -type joint"), "|j0 |j0|j1 |j0|j1|j2 |j0|j1|j2|j3 "
                                                 "|j0|j1|j2|j3|j4 |j0|j1|j2|j3|j4|j5");
    EXPECT_EQ(stringResult("ls -l -type mesh"), "|body|bodyShape");
    EXPECT_TRUE(runtime::boolValue(*node("j2"), "lockInfluenceWeights"));
    EXPECT_FALSE(runtime::boolValue(*node("j3"), "lockInfluenceWeights"));

    NodePtr cluster = runtime::skinClusterOfGeometry(*node("bodyShape"));
    ASSERT_TRUE(cluster);
    ASSERT_TRUE(runtime::skinClusterSet(*cluster));
    const runtime::SkinClusterData& data = *cluster->skinCluster();
    ASSERT_EQ(data.influenceCount(), 6u);
    const runtime::SceneSkin& skin = description.skins[0];
    for (unsigned k = 0; k < 6; ++k) {
        EXPECT_EQ(data.influences()[k]->name(), "j" + std::to_string(5 - k));
        // The file's bind pose, through the mesh's place at bind time.
        EXPECT_TRUE(runtime::nearlyEqual(data.bindPreMatrix(k) * data.geometryMatrix(),
                                         runtime::toMatrix(skin.inverseBindMatrices[k])));
    }
    EXPECT_EQ(data.geometryMatrix().translationPart().z, 2.0);
    // Weights exactly as read, whatever they sum to.
    for (unsigned v = 0; v < 4; ++v)
        for (unsigned k = 0; k < 6; ++k)
            EXPECT_EQ(data.weights().weight(v, k), skin.weights.weight(v, k)) << v << " " << k;
    EXPECT_EQ(data.weights().entryCount(2), 0u);

    const std::vector<runtime::AttributePtr> editor = editorLockAttributes();
    ASSERT_EQ(cluster->dynamicAttributes().size(), editor.size());
    for (size_t i = 0; i < editor.size(); ++i)
        expectSameDefinition(*cluster->dynamicAttributes()[i], *editor[i]);
    EXPECT_EQ(runtime::readSkinLocks(*cluster), skin.locks);
    EXPECT_EQ(stringResult("getAttr skinCluster1.lockedCellIndices[0].lockedLocalJoints[1]"),
              "|j0|j1");
}

TEST_F(SceneBuilding, ColoursJointsInTurnAndMakesNamesLegalAndUnique) {
    runtime::SceneDescription description;
    for (const char* name : {"root bone", "2nd", "", "twin", "twin", "a|b", "c", "d", "e", "f"}) {
        runtime::SceneNode joint;
        joint.name = name;
        joint.isJoint = true;
        joint.parent = description.nodes.empty() ? -1 : 0;
        description.nodes.push_back(joint);
    }
    ASSERT_TRUE(build(description).ok());
    EXPECT_EQ(stringResult("ls -l -type joint"),
              "|root_bone |root_bone|_2nd |root_bone|joint1 |root_bone|twin |root_bone|twin1 "
              "|root_bone|a_b |root_bone|c |root_bone|d |root_bone|e |root_bone|f");
    const char* const names[] = {"root_bone", "_2nd", "joint1", "twin", "twin1",
                                 "a_b",       "c",    "d",      "e",    "f"};
    for (int j = 0; j < 10; ++j) {
        EXPECT_TRUE(runtime::boolValue(*node(names[j]), "useObjectColor"));
        EXPECT_EQ(runtime::intValue(*node(names[j]), "objectColor"), j % 8) << names[j];
    }
}

TEST_F(SceneBuilding, LeavesOutPolygonsOfFewerThanThreeCorners) {
    runtime::SceneDescription description = filetest::jointChainOverQuad();
    runtime::SceneMesh& quad = description.meshes[0];
    quad.polygonSizes = {2, 4, 1};
    quad.polygonVertices = {0, 1, 0, 1, 2, 3, 3};
    const runtime::FileResult result = build(description);
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.warnings, (Texts{"2 polygons of mesh \"quad\" have fewer than three corners "
                                      "and were left out."}));
    EXPECT_EQ(node("bodyShape")->mesh()->polygonCount(), 1u);
}

TEST_F(SceneBuilding, RefusesAnInconsistentDescription) {
    runtime::SceneDescription description = filetest::jointChainOverQuad();
    description.skins[0].joints[1] = 0;
    const runtime::FileResult result = build(description);
    EXPECT_EQ(result.message, "Cannot read \"in.gltf\": the scene it holds is inconsistent: skin 0 "
                              "has a joint out of range or twice.");
    EXPECT_EQ(runtime::scene().nodeCount(), 0u);
}

TEST_F(SceneBuilding, DescribesTheBuiltSceneAsItWasDescribed) {
    const runtime::SceneDescription description = lockedChain();
    ASSERT_TRUE(build(description).ok());
    ASSERT_TRUE(run("createNode objectSet -n extraSet"));
    std::vector<std::string> warnings;
    const runtime::SceneDescription described =
        runtime::describeScene(runtime::scene(), nullptr, warnings);
    EXPECT_EQ(warnings, (Texts{"\"extraSet\" (objectSet) was left out: the format holds only "
                               "transforms, joints, meshes and skin clusters."}));
    ASSERT_EQ(described.nodes.size(), description.nodes.size());
    for (size_t i = 0; i < described.nodes.size(); ++i) {
        EXPECT_EQ(described.nodes[i].name, description.nodes[i].name);
        EXPECT_EQ(described.nodes[i].parent, description.nodes[i].parent);
        EXPECT_EQ(described.nodes[i].mesh, description.nodes[i].mesh);
        EXPECT_EQ(described.nodes[i].lockInfluenceWeights,
                  description.nodes[i].lockInfluenceWeights);
        EXPECT_TRUE(runtime::nearlyEqual(runtime::matrixOf(described.nodes[i].transform),
                                         runtime::matrixOf(description.nodes[i].transform)));
    }
    ASSERT_EQ(described.meshes.size(), 1u);
    EXPECT_EQ(described.meshes[0].points, description.meshes[0].points);
    EXPECT_EQ(described.meshes[0].polygonVertices, description.meshes[0].polygonVertices);
    ASSERT_EQ(described.skins.size(), 1u);
    const runtime::SceneSkin& skin = described.skins[0];
    EXPECT_EQ(skin.joints, description.skins[0].joints);
    EXPECT_TRUE(skin.weights.sameWeights(description.skins[0].weights));
    EXPECT_EQ(skin.locks, description.skins[0].locks);
    for (size_t k = 0; k < skin.joints.size(); ++k)
        EXPECT_TRUE(
            runtime::nearlyEqual(runtime::toMatrix(skin.inverseBindMatrices[k]),
                                 runtime::toMatrix(description.skins[0].inverseBindMatrices[k])));
}

} // namespace
