#include "HFnAttribute.h"
#include "HFnCompoundAttribute.h"
#include "HFnDependencyNode.h"
#include "HFnNumericAttribute.h"
#include "HFnStringArrayData.h"
#include "HFnTypedAttribute.h"
#include "HIntArray.h"
#include "HPlug.h"
#include "HStringArray.h"
#include "scene/Scene.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;

namespace {

HStringArray strings(std::initializer_list<const char*> texts) {
    HStringArray result;
    for (const char* text : texts)
        result.append(text);
    return result;
}

// Adds the three lock attributes a weight editor keeps on a skin cluster, the way it does.
void addLockAttributes(HFnDependencyNode& node) {
    HFnTypedAttribute typed;
    ASSERT_TRUE(node.addAttribute(
        typed.create("lockedJointNames", "lockedJointNames", HFnData::kStringArray)));
    HFnNumericAttribute numeric;
    HObject vertices =
        numeric.create("lockedVertexIndices", "lockedVertexIndices", HFnNumericData::kBoolean, 0);
    numeric.setArray(true);
    ASSERT_TRUE(node.addAttribute(vertices));
    HObject joints = typed.create("lockedLocalJoints", "lockedLocalJoints", HFnData::kString);
    typed.setArray(true);
    HFnCompoundAttribute compound;
    HObject cells = compound.create("lockedCellIndices", "lockedCellIndices");
    ASSERT_TRUE(compound.addChild(joints));
    compound.setArray(true);
    ASSERT_TRUE(node.addAttribute(cells));
}

} // namespace

using LockAttributes = FreshScene;

TEST_F(LockAttributes, AreCreatedOnceAndReadBackThroughTheirPlugs) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    HFnDependencyNode node(body.clusterObject());
    HStatus status;
    EXPECT_TRUE(node.attribute("lockedJointNames", &status).isNull());
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    addLockAttributes(node);
    EXPECT_FALSE(node.attribute("lockedJointNames", &status).isNull());
    EXPECT_TRUE(status);

    // Joint names: a string array stored as new data each time.
    HPlug names = node.findPlug("lockedJointNames", true);
    HFnStringArrayData data;
    ASSERT_TRUE(names.setValue(data.create(strings({"|bodyJoint1"}))));
    HObject read;
    ASSERT_TRUE(names.getValue(read));
    HStringArray stored = HFnStringArrayData(read).array();
    stored.append("|bodyJoint2");
    EXPECT_EQ(HFnStringArrayData(read).length(), 1u);
    ASSERT_TRUE(names.setValue(HFnStringArrayData().create(stored)));
    names.getValue(read);
    EXPECT_STREQ(HFnStringArrayData(read).array()[1].asChar(), "|bodyJoint2");

    // Vertex locks: a sparse bool array keyed by vertex index.
    HPlug vertices = node.findPlug("lockedVertexIndices", true);
    vertices.elementByLogicalIndex(12).setBool(true);
    vertices.elementByLogicalIndex(3).setBool(false);
    ASSERT_EQ(vertices.numElements(), 2u);
    EXPECT_EQ(vertices[0].logicalIndex(), 3u);
    EXPECT_EQ(vertices[1].logicalIndex(), 12u);
    EXPECT_TRUE(vertices[1].asBool());

    // Cell locks: per vertex, names appended at the next index.
    HPlug joints = node.findPlug("lockedLocalJoints", true);
    HObject cellsAttribute = node.attribute("lockedCellIndices");
    ASSERT_TRUE(joints.selectAncestorLogicalIndex(7, cellsAttribute));
    joints.elementByLogicalIndex(joints.numElements()).setString("|bodyJoint1");
    joints.elementByLogicalIndex(joints.numElements()).setString("|bodyJoint3");
    HPlug cells = node.findPlug("lockedCellIndices", true);
    ASSERT_EQ(cells.numElements(), 1u);
    EXPECT_EQ(cells[0].logicalIndex(), 7u);
    HPlug again = node.findPlug("lockedLocalJoints", true);
    again.selectAncestorLogicalIndex(cells[0].logicalIndex(), cellsAttribute);
    ASSERT_EQ(again.numElements(), 2u);
    EXPECT_STREQ(again[1].asString().asChar(), "|bodyJoint3");
    EXPECT_STREQ(again[1].name().asChar(),
                 "skinCluster1.lockedCellIndices[7].lockedLocalJoints[1]");
    EXPECT_STREQ(again[1].partialName().asChar(), "lockedCellIndices[7].lockedLocalJoints[1]");

    // A second set of the same names is refused.
    HFnTypedAttribute typed;
    EXPECT_EQ(node.addAttribute(typed.create("lockedJointNames", "ljn", HFnData::kStringArray))
                  .statusCode(),
              HS::kInvalidParameter);
}

using PlugAccess = FreshScene;

TEST_F(PlugAccess, WrongTypesAndNullPlugsFail) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    HFnDependencyNode cluster(body.clusterObject());
    HPlug normalize = cluster.findPlug("normalizeWeights", true);
    int mode = 0;
    ASSERT_TRUE(normalize.getValue(mode));
    EXPECT_EQ(mode, 1);
    EXPECT_EQ(cluster.findPlug("mi").asInt(), 5);
    HString text;
    EXPECT_EQ(normalize.getValue(text).statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(normalize.setString("one").statusCode(), HS::kInvalidParameter);
    double asDouble = 0.0;
    ASSERT_TRUE(normalize.getValue(asDouble));
    EXPECT_EQ(asDouble, 1.0);

    HStatus status;
    HPlug missing = cluster.findPlug("noSuchThing", true, &status);
    EXPECT_TRUE(missing.isNull());
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(missing.setInt(1).statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(missing.numElements(&status), 0u);
    EXPECT_FALSE(status);
    EXPECT_TRUE(HPlug()[0].isNull());
    EXPECT_TRUE(cluster.findPlug("lockVertex")[5].isNull());
}

TEST_F(PlugAccess, TreeNavigationMatchesTheAttributeTree) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    HFnDependencyNode shape(fixture::objectOf(body.shape));
    HPlug groups = shape.findPlug("instObjGroups");
    EXPECT_TRUE(groups.isArray());
    EXPECT_TRUE(groups.isCompound());
    HPlug group = groups[0].child(0)[0];
    EXPECT_TRUE(group.isElement());
    EXPECT_EQ(group.numChildren(), 3u);
    EXPECT_STREQ(group.child(2).name().asChar(),
                 "bodyShape.instObjGroups[0].objectGroups[0].objectGrpColor");
    EXPECT_STREQ(group.child(2).partialName(false, false).asChar(), "iog[0].og[0].gco");
    EXPECT_EQ(group.child(2).parent(), group);
    EXPECT_EQ(group.array().array().isNull(), true);
    EXPECT_EQ(group.child(shape.attribute("objectGroupId")), group.child(1));
    EXPECT_TRUE(group.child(5).isNull());
    HIntArray indices;
    EXPECT_EQ(groups.getExistingArrayAttributeIndices(indices), 1u);
    EXPECT_TRUE(group.child(2).isDestination());
    EXPECT_FALSE(group.child(2).isSource());

    // A child plug found by name leaves its array ancestors open until chosen.
    HPlug color = shape.findPlug("objectGrpColor");
    int value = 0;
    EXPECT_FALSE(color.getValue(value));
    ASSERT_TRUE(color.selectAncestorLogicalIndex(0, shape.attribute("objectGroups")));
    ASSERT_TRUE(color.selectAncestorLogicalIndex(0, shape.attribute("instObjGroups")));
    EXPECT_EQ(color, group.child(2));
    EXPECT_FALSE(color.selectAncestorLogicalIndex(0, shape.attribute("visibility")));
}

TEST_F(PlugAccess, DefinitionsFreezeOnceAdded) {
    runtime::NodePtr joint = scene().createNode("joint");
    HFnNumericAttribute numeric;
    HStatus status;
    numeric.create("", "x", HFnNumericData::kInt, 0, &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    numeric.create("weight", "w", HFnNumericData::kInvalid, 0, &status);
    EXPECT_FALSE(status);
    HObject weight = numeric.create("weight", "w", HFnNumericData::kDouble, 0.25);
    HFnDependencyNode node(fixture::objectOf(joint));
    ASSERT_TRUE(node.addAttribute(weight));
    EXPECT_EQ(numeric.setArray(true).statusCode(), HS::kInvalidParameter);
    EXPECT_FALSE(numeric.isArray());
    EXPECT_EQ(node.findPlug("w").asDouble(), 0.25);
    EXPECT_TRUE(node.isDynamicAttribute(weight));
    EXPECT_FALSE(node.isDynamicAttribute(node.attribute("liw")));
    ASSERT_TRUE(node.removeAttribute(weight));
    EXPECT_FALSE(node.hasAttribute("weight"));

    HFnTypedAttribute typed;
    HObject numbers = HFnStringArrayData().create(strings({"a"}));
    typed.create("label", "lb", HFnData::kString, numbers, &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    HObject list = typed.create("names", "nm", HFnData::kStringArray, numbers);
    ASSERT_TRUE(node.addAttribute(list));
    HObject value;
    node.findPlug("nm").getValue(value);
    EXPECT_STREQ(HFnStringArrayData(value).array()[0].asChar(), "a");
}
