#include "scene/PlugPath.h"
#include "scene/Scene.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;
using runtime::AttributeDef;
using runtime::NodePtr;
using runtime::Plug;
using runtime::Value;
using runtime::ValueType;

namespace {

template <typename T> T read(const Plug& plug) {
    Value value;
    EXPECT_TRUE(plug.read(value)) << plug.name();
    return std::get<T>(value);
}

} // namespace

using AttributeValues = FreshScene;

TEST_F(AttributeValues, SparseArraysKeepOnlyTheElementsWritten) {
    NodePtr cluster = scene().createNode("skinCluster");
    Plug locks = cluster->plug("lockVertex");
    ASSERT_TRUE(scene().setValue(locks.element(70), true));
    ASSERT_TRUE(scene().setValue(locks.element(2), false));
    EXPECT_EQ(locks.elementIndices(), (std::vector<unsigned>{2, 70}));
    EXPECT_EQ(locks.elementAtPosition(1), locks.element(70));
    EXPECT_TRUE(read<bool>(locks.element(70)));
    // Reading a missing element gives the default and does not create it.
    EXPECT_FALSE(read<bool>(locks.element(5)));
    EXPECT_EQ(locks.elementCount(), 2u);
    EXPECT_TRUE(locks.elementAtPosition(2).isNull());
}

TEST_F(AttributeValues, NestedArraysNeedTheirAncestorChosen) {
    NodePtr cluster = scene().createNode("skinCluster");
    ASSERT_TRUE(scene().addAttribute(*cluster, fixture::cellLockAttribute()));
    Plug joints = cluster->plug("lockedLocalJoints");
    EXPECT_FALSE(joints.isResolved());
    EXPECT_FALSE(scene().setValue(joints.element(0), std::string("|hip")));

    ASSERT_TRUE(joints.selectAncestor(12));
    ASSERT_TRUE(scene().setValue(joints.element(0), std::string("|hip")));
    ASSERT_TRUE(scene().setValue(joints.element(1), std::string("|knee")));
    EXPECT_EQ(joints.element(1).name(), "skinCluster1.lockedCellIndices[12].lockedLocalJoints[1]");
    EXPECT_EQ(cluster->plug("lockedCellIndices").elementIndices(), (std::vector<unsigned>{12}));
    EXPECT_EQ(read<std::string>(runtime::findPlug(
                  scene(), "skinCluster1.lockedCellIndices[12].lockedLocalJoints[1]")),
              "|knee");

    Plug other = cluster->plug("lockedLocalJoints");
    other.selectAncestor(3);
    EXPECT_EQ(other.elementCount(), 0u);
}

TEST_F(AttributeValues, NumbersConvertAndOtherTypesAreRefused) {
    NodePtr joint = scene().createNode("joint");
    ASSERT_TRUE(scene().setValue(joint->plug("liw"), 1.7));
    EXPECT_TRUE(read<bool>(joint->plug("lockInfluenceWeights")));
    ASSERT_TRUE(scene().setValue(joint->plug("objectColor"), 2.6));
    EXPECT_EQ(read<int>(joint->plug("oc")), 3);
    ASSERT_TRUE(scene().setValue(joint->plug("tx"), 4));
    EXPECT_EQ(read<double>(joint->plug("translateX")), 4.0);

    HStatus status = scene().setValue(joint->plug("tx"), std::string("4"));
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(status.errorString().asChar(),
                 "Plug joint1.translateX does not take a value of this type.");
    Value value;
    EXPECT_FALSE(joint->plug("translate").read(value));
    EXPECT_FALSE(joint->plug("message").read(value));
    EXPECT_FALSE(scene().setValue(joint->plug("objectColor"), 1e12));
}

TEST_F(AttributeValues, SnapshotsUndoWritesAndCreatedElements) {
    NodePtr cluster = scene().createNode("skinCluster");
    Plug weights = cluster->plug("normalizeWeights");
    runtime::ValueSnapshot before = scene().snapshot(weights);
    scene().setValue(weights, 0);
    scene().restoreSnapshot(before);
    EXPECT_EQ(read<int>(weights), 1);
    EXPECT_FALSE(weights.exists());

    Plug element = cluster->plug("lockVertex").element(4);
    scene().setValue(element, true);
    runtime::ValueSnapshot set = scene().snapshot(element);
    runtime::ValueSnapshot missing = scene().snapshot(cluster->plug("lockVertex").element(9));
    scene().setValue(cluster->plug("lockVertex").element(9), true);
    scene().setValue(element, false);
    scene().restoreSnapshot(missing);
    scene().restoreSnapshot(set);
    EXPECT_EQ(cluster->plug("lockVertex").elementIndices(), (std::vector<unsigned>{4}));
    EXPECT_TRUE(read<bool>(element));
}

TEST_F(AttributeValues, DynamicAttributesRefuseTakenNamesAndComeBackWhole) {
    NodePtr cluster = scene().createNode("skinCluster");
    NodePtr set = scene().createNode("objectSet");
    HStatus status =
        scene().addAttribute(*cluster, AttributeDef::numeric("nw", "extra", ValueType::kInt));
    EXPECT_STREQ(status.errorString().asChar(),
                 "Attribute name nw is invalid or already used on skinCluster1.");
    ASSERT_TRUE(scene().addAttribute(*cluster, fixture::cellLockAttribute()));
    EXPECT_FALSE(scene().addAttribute(*cluster, fixture::cellLockAttribute()));

    Plug joints = cluster->plug("lockedLocalJoints");
    joints.selectAncestor(5);
    scene().setValue(joints.element(0), std::string("|hip"));
    scene().connect(set->plug("memberWireframeColor"), cluster->plug("maxInfluences"));
    ASSERT_TRUE(scene().connect(cluster->plug("lockedCellIndices").element(5),
                                set->plug("dagSetMembers").element(0)));

    auto removed = scene().removeAttribute(*cluster, cluster->findAttribute("lockedCellIndices"));
    ASSERT_TRUE(removed);
    EXPECT_EQ(cluster->findAttribute("lockedLocalJoints"), nullptr);
    EXPECT_TRUE(joints.isNull());
    EXPECT_EQ(scene().connectedPlugs(set->plug("dagSetMembers").element(0), true, false).size(),
              0u);
    EXPECT_EQ(scene().connectedPlugs(cluster->plug("maxInfluences"), true, false).size(), 1u);

    ASSERT_TRUE(scene().restoreAttribute(*removed));
    EXPECT_EQ(read<std::string>(joints.element(0)), "|hip");
    EXPECT_EQ(scene().connectedPlugs(set->plug("dagSetMembers").element(0), true, false).size(),
              1u);
    EXPECT_FALSE(scene().removeAttribute(*cluster, cluster->findAttribute("normalizeWeights")));
}

using Connections = FreshScene;

TEST_F(Connections, ADestinationHasOneSource) {
    NodePtr a = scene().createNode("groupId", "a");
    NodePtr b = scene().createNode("groupId", "b");
    NodePtr set = scene().createNode("objectSet", "set");
    Plug target = set->plug("memberWireframeColor");
    ASSERT_TRUE(scene().connect(a->plug("groupId"), target));
    HStatus status = scene().connect(b->plug("groupId"), target);
    EXPECT_STREQ(status.errorString().asChar(),
                 "set.memberWireframeColor already has an incoming connection from a.groupId.");
    status = scene().connect(a->plug("groupId"), target);
    EXPECT_STREQ(status.errorString().asChar(),
                 "a.groupId is already connected to set.memberWireframeColor.");

    runtime::ConnectionPtr replaced;
    ASSERT_TRUE(scene().connect(b->plug("groupId"), target, true, &replaced));
    ASSERT_TRUE(replaced);
    EXPECT_EQ(replaced->source.node(), a);
    EXPECT_EQ(scene().connectedPlugs(target, true, false).front().node(), b);
    EXPECT_TRUE(scene().connectedPlugs(a->plug("groupId"), false, true).empty());
    EXPECT_EQ(scene().connections().size(), 1u);

    EXPECT_FALSE(scene().disconnect(a->plug("groupId"), target));
    EXPECT_TRUE(scene().disconnect(b->plug("groupId"), target));
    EXPECT_TRUE(scene().connections().empty());
}

TEST_F(Connections, KindsMustFitAndWholeArraysAreRefused) {
    NodePtr mesh = scene().createNode("mesh");
    NodePtr set = scene().createNode("objectSet");
    NodePtr cluster = scene().createNode("skinCluster");
    EXPECT_FALSE(scene().connect(cluster->plug("outputGeometry").element(0),
                                 set->plug("memberWireframeColor")));
    EXPECT_FALSE(scene().connect(cluster->plug("message"), set->plug("usedBy")));
    EXPECT_FALSE(scene().connect(set->plug("memberWireframeColor"), mesh->plug("inMesh")));
    // A message destination takes anything, even a compound element.
    Plug group = mesh->plug("instObjGroups").element(0).child(size_t(0)).element(3);
    ASSERT_TRUE(scene().connect(group, set->plug("dagSetMembers").element(0)));
    // Connecting makes the elements on the way exist.
    EXPECT_EQ(mesh->plug("instObjGroups").elementIndices(), (std::vector<unsigned>{0}));
    EXPECT_EQ(mesh->plug("instObjGroups").element(0).child(size_t(0)).elementIndices(),
              (std::vector<unsigned>{3}));
}
