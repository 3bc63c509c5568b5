#include "scene/Scene.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;
using runtime::NodePtr;

namespace {

std::vector<std::string> namesOf(const std::vector<NodePtr>& nodes) {
    std::vector<std::string> names;
    for (const NodePtr& node : nodes)
        names.push_back(node->name());
    return names;
}

} // namespace

using NodeNames = FreshScene;

TEST_F(NodeNames, TakenNamesGetTheNextNumber) {
    EXPECT_EQ(scene().createNode("joint")->name(), "joint1");
    EXPECT_EQ(scene().createNode("joint")->name(), "joint2");
    EXPECT_EQ(scene().createNode("joint", "joint1")->name(), "joint3");
    EXPECT_EQ(scene().createNode("transform", "body")->name(), "body");
    EXPECT_EQ(scene().createNode("transform", "body")->name(), "body1");
    // A dependency node may not share a name with any node, DAG or not.
    EXPECT_EQ(scene().createNode("skinCluster", "body")->name(), "body2");
    NodePtr cluster = scene().createNode("skinCluster", "skinCluster7");
    EXPECT_EQ(scene().createNode("transform", "skinCluster7")->name(), "skinCluster8");
    EXPECT_EQ(scene().rename(*cluster, "body"), "body3");
    EXPECT_EQ(cluster->name(), "body3");
}

TEST_F(NodeNames, ShortNamesRepeatUnderDifferentParents) {
    NodePtr a = scene().createNode("transform", "a");
    NodePtr b = scene().createNode("transform", "b");
    NodePtr shapeA = scene().createNode("mesh", "bodyShape", a.get());
    NodePtr shapeB = scene().createNode("mesh", "bodyShape", b.get());
    EXPECT_EQ(shapeB->name(), "bodyShape");
    EXPECT_EQ(shapeA->fullPathName(), "|a|bodyShape");
    EXPECT_EQ(shapeB->fullPathName(), "|b|bodyShape");

    HStatus status;
    EXPECT_EQ(scene().findNode("bodyShape", &status), nullptr);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(status.errorString().asChar(), "More than one object matches name: bodyShape");
    EXPECT_EQ(scene().findNode("a|bodyShape"), shapeA);
    EXPECT_EQ(scene().findNode("|b|bodyShape"), shapeB);
    EXPECT_EQ(scene().partialPathName(*shapeA), "a|bodyShape");
    EXPECT_EQ(scene().partialPathName(*a), "a");

    // A sibling of the same name is not allowed.
    EXPECT_EQ(scene().createNode("mesh", "bodyShape", a.get())->name(), "bodyShape1");
}

TEST_F(NodeNames, LookupReportsMissingNames) {
    HStatus status;
    EXPECT_EQ(scene().findNode("ghost", &status), nullptr);
    EXPECT_STREQ(status.errorString().asChar(), "No object matches name: ghost");
    EXPECT_EQ(scene().findNode("|a|ghost", &status), nullptr);
    EXPECT_STREQ(status.errorString().asChar(), "No object matches name: |a|ghost");
}

TEST_F(NodeNames, BadNamesAndTypesAreRefusedWithoutCreatingAnything) {
    HStatus status;
    EXPECT_EQ(scene().createNode("nurbsCurve", "", nullptr, &status), nullptr);
    EXPECT_STREQ(status.errorString().asChar(), "Unknown node type: nurbsCurve");
    EXPECT_EQ(scene().createNode("dagNode", "", nullptr, &status), nullptr);
    EXPECT_STREQ(status.errorString().asChar(), "Unknown node type: dagNode");
    for (const char* bad : {"1abc", "a b", "a|b", "a.b", "a[0]"}) {
        EXPECT_EQ(scene().createNode("transform", bad, nullptr, &status), nullptr) << bad;
        EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    }
    EXPECT_EQ(scene().nodeCount(), 0u);

    NodePtr joint = scene().createNode("joint", "hip");
    scene().rename(*joint, "hip bone", &status);
    EXPECT_STREQ(status.errorString().asChar(), "Invalid node name: hip bone");
    EXPECT_EQ(joint->name(), "hip");
    EXPECT_EQ(runtime::Scene::legalNodeName("Armature.001 hip"), "Armature_001_hip");
    EXPECT_EQ(runtime::Scene::legalNodeName("3d"), "_3d");
}

TEST_F(NodeNames, PatternsMatchNamesAndPathsInCreationOrder) {
    NodePtr root = scene().createNode("joint", "root");
    scene().createNode("joint", "spine2", root.get());
    scene().createNode("transform", "spineCtrl");
    scene().createNode("joint", "spine1", root.get());
    EXPECT_EQ(namesOf(scene().matchNodes("spine*")),
              (std::vector<std::string>{"spine2", "spineCtrl", "spine1"}));
    EXPECT_EQ(namesOf(scene().matchNodes("spine?")),
              (std::vector<std::string>{"spine2", "spine1"}));
    EXPECT_EQ(namesOf(scene().matchNodes("root|spine*")),
              (std::vector<std::string>{"spine2", "spine1"}));
    EXPECT_TRUE(scene().matchNodes("arm*").empty());
}

using Parenting = FreshScene;

TEST_F(Parenting, ReparentingPlacesTheNodeAndRefusesCycles) {
    NodePtr a = scene().createNode("transform", "a");
    NodePtr b = scene().createNode("transform", "b");
    NodePtr c = scene().createNode("transform", "c");
    NodePtr x = scene().createNode("transform", "x", a.get());
    ASSERT_TRUE(scene().reparent(*b, a.get(), 0));
    ASSERT_TRUE(scene().reparent(*c, a.get(), 1));
    EXPECT_EQ(namesOf(a->children()), (std::vector<std::string>{"b", "c", "x"}));
    EXPECT_EQ(c->fullPathName(), "|a|c");
    EXPECT_EQ(scene().childPosition(*c), 1u);

    EXPECT_FALSE(scene().reparent(*a, b.get()));
    EXPECT_FALSE(scene().reparent(*a, a.get()));
    EXPECT_EQ(namesOf(scene().topLevelNodes()), (std::vector<std::string>{"a"}));

    // Moving next to a sibling of the same name renames.
    NodePtr otherX = scene().createNode("transform", "x", b.get());
    ASSERT_TRUE(scene().reparent(*otherX, a.get()));
    EXPECT_EQ(otherX->name(), "x1");
    ASSERT_TRUE(scene().reparent(*x, nullptr));
    EXPECT_EQ(x->fullPathName(), "|x");
}

TEST_F(Parenting, ShapesLiveUnderTransforms) {
    NodePtr shape = scene().createNode("mesh", "lonelyShape");
    ASSERT_NE(shape->parent(), nullptr);
    EXPECT_EQ(shape->parent()->typeName(), "transform");
    HStatus status;
    EXPECT_EQ(scene().createNode("joint", "j", shape.get(), &status), nullptr);
    EXPECT_FALSE(status);
    EXPECT_FALSE(scene().reparent(*shape, nullptr));
    EXPECT_EQ(scene().createNode("groupId", "g", shape->parent(), &status), nullptr);
    EXPECT_STREQ(status.errorString().asChar(), "Only DAG nodes have a parent.");
}
