#include "HFnDependencyNode.h"
#include "HLibrary.h"
#include "HPlug.h"
#include "scene/Scene.h"
#include "scene/SkinLinks.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;
using runtime::NodePtr;
using runtime::Plug;
using runtime::Value;

namespace {

Value valueAt(const Plug& plug) {
    Value value;
    EXPECT_TRUE(plug.read(value)) << plug.name();
    return value;
}

} // namespace

using NodeDeletion = FreshScene;

TEST_F(NodeDeletion, RestoreBringsBackValuesAttributesConnectionsAndPlace) {
    NodePtr root = scene().createNode("transform", "root");
    NodePtr first = scene().createNode("joint", "first", root.get());
    NodePtr middle = scene().createNode("joint", "middle", root.get());
    NodePtr last = scene().createNode("joint", "last", root.get());
    NodePtr set = scene().createNode("objectSet", "set");
    ASSERT_TRUE(scene().setValue(middle->plug("translateY"), 2.5));
    ASSERT_TRUE(scene().addAttribute(
        *middle, runtime::AttributeDef::typed("note", "note", runtime::ValueType::kString)));
    ASSERT_TRUE(scene().setValue(middle->plug("note"), std::string("keep me")));
    ASSERT_TRUE(scene().connect(middle->plug("message"), set->plug("usedBy").element(3)));
    ASSERT_TRUE(scene().connect(first->plug("objectColor"), middle->plug("objectColor")));

    auto record = scene().deleteNodes({middle});
    EXPECT_FALSE(middle->isAlive());
    EXPECT_EQ(root->children().size(), 2u);
    EXPECT_TRUE(scene().connectedPlugs(set->plug("usedBy").element(3), true, false).empty());
    EXPECT_EQ(scene().findNode("middle"), nullptr);

    ASSERT_TRUE(scene().restore(*record));
    EXPECT_EQ(root->children()[1], middle);
    EXPECT_EQ(std::get<double>(valueAt(middle->plug("translateY"))), 2.5);
    EXPECT_EQ(std::get<std::string>(valueAt(middle->plug("note"))), "keep me");
    std::vector<Plug> sources = scene().connectedPlugs(set->plug("usedBy").element(3), true, false);
    ASSERT_EQ(sources.size(), 1u);
    EXPECT_EQ(sources[0], middle->plug("message"));
    EXPECT_EQ(scene().connectedPlugs(middle->plug("objectColor"), true, false).size(), 1u);
    EXPECT_EQ(scene().findNode("middle"), middle);
    (void)last;
}

TEST_F(NodeDeletion, HandlesReadAsNullWhileDeletedAndWorkAfterRestore) {
    NodePtr joint = scene().createNode("joint", "hip");
    HObject object = fixture::objectOf(joint);
    HDagPath path = fixture::pathOf(joint);
    HPlug plug = HFnDependencyNode(object).findPlug("lockInfluenceWeights");

    auto record = scene().deleteNodes({joint});
    EXPECT_TRUE(object.isNull());
    EXPECT_EQ(object.apiType(), HFn::kInvalid);
    EXPECT_FALSE(path.isValid());
    EXPECT_TRUE(plug.isNull());
    EXPECT_EQ(plug.setBool(true).statusCode(), HS::kInvalidParameter);
    HStatus status;
    HFnDependencyNode fn(object, &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);

    scene().restore(*record);
    EXPECT_FALSE(object.isNull());
    EXPECT_EQ(object.apiType(), HFn::kJoint);
    EXPECT_STREQ(path.fullPathName().asChar(), "|hip");
    EXPECT_TRUE(plug.setBool(true));
}

TEST_F(NodeDeletion, SubtreesGoTogetherAndComeBackInOrder) {
    NodePtr hip = scene().createNode("joint", "hip");
    NodePtr knee = scene().createNode("joint", "knee", hip.get());
    NodePtr ankle = scene().createNode("joint", "ankle", knee.get());
    NodePtr other = scene().createNode("joint", "other");
    auto record = scene().deleteNodes({hip});
    EXPECT_EQ(record->nodes().size(), 3u);
    EXPECT_FALSE(ankle->isAlive());
    EXPECT_EQ(scene().topLevelNodes().size(), 1u);
    scene().restore(*record);
    EXPECT_EQ(scene().topLevelNodes().front(), hip);
    EXPECT_EQ(ankle->fullPathName(), "|hip|knee|ankle");
    EXPECT_EQ(scene().nodes().back(), other);
}

TEST_F(NodeDeletion, SkinClusterTakesItsSetAndGroupId) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    NodePtr set = runtime::skinClusterSet(*body.cluster);
    NodePtr group = runtime::setGroupId(*set);
    ASSERT_TRUE(set && group);
    size_t before = scene().nodeCount();

    auto record = scene().deleteNodes({body.cluster});
    EXPECT_EQ(scene().nodeCount(), before - 3);
    EXPECT_FALSE(set->isAlive());
    EXPECT_FALSE(group->isAlive());
    EXPECT_EQ(runtime::skinClusterOfGeometry(*body.shape), nullptr);
    EXPECT_TRUE(body.shape->connections().empty());

    scene().restore(*record);
    EXPECT_EQ(runtime::skinClusterOfGeometry(*body.shape), body.cluster);
    EXPECT_EQ(runtime::skinClusterSet(*body.cluster), set);
    EXPECT_EQ(runtime::setGroupId(*set), group);
}

TEST_F(NodeDeletion, MeshTakesItsSkinCluster) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    auto record = scene().deleteNodes({body.transform});
    EXPECT_FALSE(body.cluster->isAlive());
    for (const NodePtr& joint : body.joints)
        EXPECT_TRUE(joint->isAlive());
    EXPECT_EQ(scene().nodeCount(), body.joints.size());
}

TEST_F(NodeDeletion, RestoredNameTakenMeanwhileIsMadeUnique) {
    NodePtr hip = scene().createNode("joint", "hip");
    auto record = scene().deleteNodes({hip});
    scene().createNode("joint", "hip");
    scene().restore(*record);
    EXPECT_EQ(hip->name(), "hip1");
    EXPECT_FALSE(scene().restore(*record));
}

TEST_F(NodeDeletion, HandlesOutliveAResetWithoutDangling) {
    NodePtr root = scene().createNode("joint", "root");
    NodePtr child = scene().createNode("joint", "child", root.get());
    HObject object = fixture::objectOf(child);
    HPlug plug = HFnDependencyNode(object).findPlug("translateX");
    root.reset();
    child.reset();
    scene().reset();
    EXPECT_TRUE(object.isNull());
    EXPECT_TRUE(plug.isNull());
    EXPECT_STREQ(plug.name().asChar(), "child.translateX");
    EXPECT_FALSE(scene().isModified());
}

TEST(HostShutdown, HandlesReadAsNullOnceTheHostStops) {
    NodePtr joint = runtime::scene().createNode("joint", "survivor");
    HObject object = fixture::objectOf(joint);
    HDagPath path = fixture::pathOf(joint);
    HPlug plug = HFnDependencyNode(object).findPlug("liw");
    joint.reset();
    HLibrary::cleanup();
    EXPECT_TRUE(object.isNull());
    EXPECT_FALSE(path.isValid());
    EXPECT_EQ(plug.setBool(true).statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(HFnDependencyNode(object).setName("other"), HString());
    ASSERT_TRUE(HLibrary::initialize("vorel-tests"));
    EXPECT_EQ(runtime::scene().nodeCount(), 0u);
}
