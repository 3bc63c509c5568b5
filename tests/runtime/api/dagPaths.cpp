#include "HFnDagNode.h"
#include "HFnDependencyNode.h"
#include "HPlug.h"
#include "scene/JointColors.h"
#include "scene/Scene.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;
using fixture::pathOf;
using runtime::NodePtr;

using DagPaths = FreshScene;

TEST_F(DagPaths, NamePlaceAndExtendToTheShape) {
    NodePtr root = scene().createNode("transform", "root");
    NodePtr body = scene().createNode("transform", "body", root.get());
    NodePtr shape = scene().createNode("mesh", "bodyShape", body.get());
    HDagPath path = pathOf(body);
    EXPECT_STREQ(path.fullPathName().asChar(), "|root|body");
    EXPECT_STREQ(path.partialPathName().asChar(), "body");
    EXPECT_EQ(path.length(), 2u);
    EXPECT_EQ(path.transform(), fixture::objectOf(body));
    ASSERT_TRUE(path.extendToShape());
    EXPECT_STREQ(path.fullPathName().asChar(), "|root|body|bodyShape");
    EXPECT_EQ(path.node().apiType(), HFn::kMesh);
    EXPECT_EQ(path.transform(), fixture::objectOf(body));
    EXPECT_TRUE(path.extendToShape());
    ASSERT_TRUE(path.pop(2));
    EXPECT_STREQ(path.fullPathName().asChar(), "|root");
    EXPECT_FALSE(path.pop(5));
    ASSERT_TRUE(path.push(fixture::objectOf(body)));
    EXPECT_FALSE(path.push(fixture::objectOf(root)));

    HDagPath joint = pathOf(scene().createNode("joint", "hip"));
    EXPECT_EQ(joint.extendToShape().statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(joint.fullPathName().asChar(), "|hip");
    scene().createNode("mesh", "second", body.get());
    HDagPath twoShapes = pathOf(body);
    EXPECT_FALSE(twoShapes.extendToShape());
    EXPECT_STREQ(twoShapes.fullPathName().asChar(), "|root|body");

    HDagPath made;
    EXPECT_TRUE(HDagPath::getAPathTo(fixture::objectOf(shape), made));
    EXPECT_EQ(made.node(), fixture::objectOf(shape));
    EXPECT_FALSE(HDagPath::getAPathTo(fixture::objectOf(scene().createNode("groupId")), made));
}

TEST_F(DagPaths, DagNodeFunctionSetWalksTheHierarchy) {
    NodePtr root = scene().createNode("joint", "root");
    NodePtr spine = scene().createNode("joint", "spine", root.get());
    HFnDagNode fn(pathOf(spine));
    EXPECT_STREQ(fn.fullPathName().asChar(), "|root|spine");
    EXPECT_STREQ(fn.name().asChar(), "spine");
    EXPECT_STREQ(fn.typeName().asChar(), "joint");
    EXPECT_EQ(fn.parentCount(), 1u);
    EXPECT_EQ(fn.parent(0), fixture::objectOf(root));
    HFnDagNode top(fixture::objectOf(root));
    EXPECT_EQ(top.parentCount(), 0u);
    EXPECT_TRUE(top.parent(0).isNull());
    EXPECT_EQ(top.childCount(), 1u);
    EXPECT_EQ(top.child(0), fixture::objectOf(spine));
    HStatus status;
    HFnDagNode notDag(fixture::objectOf(scene().createNode("objectSet")), &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(notDag.fullPathName(&status), HString());
    EXPECT_FALSE(status);
    EXPECT_STREQ(fn.setName("chest").asChar(), "chest");
    EXPECT_STREQ(HFnDagNode(pathOf(spine)).fullPathName().asChar(), "|root|chest");
}

TEST_F(DagPaths, ObjectsHaveTheirKindsByHierarchy) {
    HObject joint = fixture::objectOf(scene().createNode("joint"));
    EXPECT_EQ(joint.apiType(), HFn::kJoint);
    EXPECT_STREQ(joint.apiTypeStr(), "kJoint");
    for (HFn::Type kind : {HFn::kJoint, HFn::kTransform, HFn::kDagNode, HFn::kDependencyNode})
        EXPECT_TRUE(joint.hasFn(kind)) << kind;
    EXPECT_FALSE(joint.hasFn(HFn::kMesh));
    HObject cluster = fixture::objectOf(scene().createNode("skinCluster"));
    EXPECT_EQ(cluster.apiType(), 687);
    EXPECT_TRUE(cluster.hasFn(HFn::kGeometryFilter));
    EXPECT_FALSE(cluster.hasFn(HFn::kDagNode));
    EXPECT_EQ(fixture::objectOf(scene().createNode("objectSet")).apiType(), 471);
    EXPECT_EQ(fixture::objectOf(scene().createNode("groupId")).apiType(), 358);
    EXPECT_EQ(fixture::objectOf(scene().createNode("mesh")).apiType(), 296);
    EXPECT_TRUE(HObject().isNull());
    EXPECT_EQ(HObject(), HObject::kNullObj);
    EXPECT_NE(joint, cluster);
}

TEST_F(DagPaths, JointsShowTheirPaletteColourWhenAsked) {
    NodePtr joint = scene().createNode("joint");
    HFnDagNode fn(fixture::objectOf(joint));
    HColor plain = fn.dormantColor();
    HFnDependencyNode(fixture::objectOf(joint)).findPlug("useObjectColor").setBool(true);
    std::vector<HColor> seen;
    for (int index = 0; index < int(runtime::kObjectColorCount); ++index) {
        HFnDependencyNode(fixture::objectOf(joint)).findPlug("objectColor").setInt(index);
        HColor colour = fn.dormantColor();
        for (const HColor& other : seen)
            EXPECT_FALSE(other.r == colour.r && other.g == colour.g && other.b == colour.b)
                << "colour " << index << " repeats";
        EXPECT_FALSE(colour.r == plain.r && colour.g == plain.g && colour.b == plain.b);
        seen.push_back(colour);
    }
    HFnDependencyNode(fixture::objectOf(joint)).findPlug("objectColor").setInt(9);
    EXPECT_EQ(fn.dormantColor().r, seen[1].r);
    EXPECT_EQ(fn.dormantColor().a, 1.0f);
}
