#include "HEventMessage.h"
#include "HFnSingleIndexedComponent.h"
#include "HGlobal.h"
#include "HItSelectionList.h"
#include "HMessage.h"
#include "HSelectionList.h"
#include "HStringArray.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;

namespace {

std::vector<int> elementsOf(const HObject& component) {
    HIntArray elements;
    HFnSingleIndexedComponent(component).getElements(elements);
    return std::vector<int>(elements.begin(), elements.end());
}

std::vector<std::string> textsOf(const HSelectionList& list) {
    HStringArray texts;
    list.getSelectionStrings(texts);
    std::vector<std::string> result;
    for (const HString& text : texts)
        result.push_back(text.str());
    return result;
}

void count(void* data) {
    ++*static_cast<int*>(data);
}

// Counts "SelectionChanged" while the test runs.
class SelectionEvents : public FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        m_id = HEventMessage::addEventCallback("SelectionChanged", count, &changes);
        body = fixture::makeSkinnedMesh();
    }
    void TearDown() override { HMessage::removeCallback(m_id); }

    int changes = 0;
    fixture::SkinnedMesh body;

private:
    HCallbackId m_id = 0;
};

} // namespace

using SelectionLists = FreshScene;

TEST_F(SelectionLists, ComponentsOfAShapeMergeInTheOrderAdded) {
    fixture::makeSkinnedMesh();
    HSelectionList list;
    ASSERT_TRUE(list.add("body.vtx[7]"));
    ASSERT_TRUE(list.add("body.vtx[3]"));
    ASSERT_TRUE(list.add("bodyShape.vtx[5:6]"));
    ASSERT_TRUE(list.add("|body|bodyShape.vtx[3]"));
    ASSERT_TRUE(list.add("body"));
    ASSERT_TRUE(list.add("body"));
    ASSERT_EQ(list.length(), 2u);
    HDagPath path;
    HObject component;
    ASSERT_TRUE(list.getDagPath(0, path, component));
    EXPECT_STREQ(path.fullPathName().asChar(), "|body|bodyShape");
    EXPECT_EQ(component.apiType(), HFn::kMeshVertComponent);
    EXPECT_EQ(elementsOf(component), (std::vector<int>{7, 3, 5, 6}));
    ASSERT_TRUE(list.getDagPath(1, path, component));
    EXPECT_STREQ(path.fullPathName().asChar(), "|body");
    EXPECT_TRUE(component.isNull());
    EXPECT_EQ(textsOf(list), (std::vector<std::string>{"bodyShape.vtx[7]", "bodyShape.vtx[3]",
                                                       "bodyShape.vtx[5:6]", "|body"}));
    ASSERT_TRUE(list.add("bodyShape.e[0:1]"));
    EXPECT_EQ(list.length(), 3u);
}

TEST_F(SelectionLists, AComponentAddedStaysTheCallersOwn) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    HObject mine = fixture::vertexComponent({1, 2});
    HSelectionList list;
    list.add(body.shapePath(), mine);
    list.add(body.shapePath(), fixture::vertexComponent({4}));
    HSelectionList copy = list;
    copy.add(body.shapePath(), fixture::vertexComponent({9}));
    EXPECT_EQ(elementsOf(mine), (std::vector<int>{1, 2}));
    HDagPath path;
    HObject merged;
    list.getDagPath(0, path, merged);
    EXPECT_EQ(elementsOf(merged), (std::vector<int>{1, 2, 4}));
    copy.getDagPath(0, path, merged);
    EXPECT_EQ(elementsOf(merged), (std::vector<int>{1, 2, 4, 9}));
}

TEST_F(SelectionLists, BadNamesAreRefusedWithTheirMessage) {
    fixture::makeSkinnedMesh();
    scene().createNode("mesh", "bodyShape", scene().createNode("transform", "other").get());
    HSelectionList list;
    HStatus status = list.add("ghost");
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_STREQ(status.errorString().asChar(), "No object matches name: ghost");
    status = list.add("bodyShape.vtx[1]");
    EXPECT_STREQ(status.errorString().asChar(), "More than one object matches name: bodyShape");
    status = list.add("body.vtx[16]");
    EXPECT_STREQ(status.errorString().asChar(), "Index out of range: body.vtx[16]");
    status = list.add("body.vtx[2");
    EXPECT_STREQ(status.errorString().asChar(), "Invalid component: body.vtx[2");
    EXPECT_FALSE(list.add("bodyJoint1.vtx[0]"));
    EXPECT_FALSE(list.add("body*"));
    EXPECT_TRUE(list.isEmpty());
    ASSERT_TRUE(list.add("body|bodyShape.vtx[*]"));
    HDagPath path;
    HObject component;
    list.getDagPath(0, path, component);
    EXPECT_EQ(HFnSingleIndexedComponent(component).elementCount(), 16u);
}

TEST_F(SelectionLists, IteratorFiltersByKindAndDependencyNodesHaveNoPath) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    HSelectionList list;
    ASSERT_TRUE(HGlobal::getSelectionListByName("bodyJoint*", list));
    EXPECT_EQ(list.length(), 3u);
    list.add(body.clusterObject());
    list.add("body.vtx[0]");
    std::vector<std::string> joints;
    for (HItSelectionList it(list, HFn::kJoint); !it.isDone(); it.next()) {
        HDagPath path;
        it.getDagPath(path);
        joints.push_back(path.partialPathName().asChar());
    }
    EXPECT_EQ(joints, (std::vector<std::string>{"bodyJoint1", "bodyJoint2", "bodyJoint3"}));
    HItSelectionList all(list);
    for (int i = 0; i < 3; ++i)
        all.next();
    HDagPath path;
    EXPECT_EQ(all.getDagPath(path).statusCode(), HS::kInvalidParameter);
    HObject node;
    ASSERT_TRUE(all.getDependNode(node));
    EXPECT_EQ(node, body.clusterObject());
    all.next();
    EXPECT_TRUE(all.hasComponents());
    all.next();
    EXPECT_TRUE(all.isDone());
    EXPECT_TRUE(list.hasItem(body.jointPath(1)));
    EXPECT_FALSE(list.hasItem(body.shapePath()));
}

TEST_F(SelectionEvents, FireOncePerChangeAndNeverForTheHiliteList) {
    HSelectionList list;
    list.add("body.vtx[2]");
    ASSERT_TRUE(HGlobal::setActiveSelectionList(list));
    EXPECT_EQ(changes, 1);
    HGlobal::setActiveSelectionList(list);
    EXPECT_EQ(changes, 2);
    HSelectionList more;
    more.add("body.vtx[0]");
    HGlobal::setActiveSelectionList(more, HGlobal::kAddToList);
    EXPECT_EQ(changes, 3);
    HSelectionList active;
    HGlobal::getActiveSelectionList(active);
    EXPECT_EQ(textsOf(active), (std::vector<std::string>{"bodyShape.vtx[2]", "bodyShape.vtx[0]"}));

    HGlobal::setHiliteList(list);
    HGlobal::setHiliteList(HSelectionList());
    EXPECT_EQ(changes, 3);
    HGlobal::clearSelectionList();
    EXPECT_EQ(changes, 4);
    HGlobal::getActiveSelectionList(active);
    EXPECT_TRUE(active.isEmpty());
}

TEST_F(SelectionEvents, RemoveAndToggleAdjustComponents) {
    HSelectionList list;
    list.add("body.vtx[1:4]");
    list.add("bodyJoint1");
    HGlobal::setActiveSelectionList(list);
    HSelectionList change;
    change.add("body.vtx[2]");
    change.add("bodyJoint1");
    HGlobal::setActiveSelectionList(change, HGlobal::kRemoveFromList);
    HSelectionList active;
    HGlobal::getActiveSelectionList(active);
    EXPECT_EQ(textsOf(active),
              (std::vector<std::string>{"bodyShape.vtx[1]", "bodyShape.vtx[3:4]"}));
    change.clear();
    change.add("body.vtx[3:5]");
    change.add("bodyJoint2");
    HGlobal::setActiveSelectionList(change, HGlobal::kXORWithList);
    HGlobal::getActiveSelectionList(active);
    EXPECT_EQ(textsOf(active), (std::vector<std::string>{"bodyShape.vtx[1]", "bodyShape.vtx[5]",
                                                         "|bodyJoint1|bodyJoint2"}));
    EXPECT_EQ(changes, 3);
}

TEST_F(SelectionEvents, ANewSceneEmptiesTheListsSilently) {
    HSelectionList list;
    list.add("body");
    HGlobal::setActiveSelectionList(list);
    HGlobal::setHiliteList(list);
    scene().reset();
    EXPECT_EQ(changes, 1);
    HSelectionList active, hilite;
    HGlobal::getActiveSelectionList(active);
    HGlobal::getHiliteList(hilite);
    EXPECT_TRUE(active.isEmpty());
    EXPECT_TRUE(hilite.isEmpty());
}

TEST_F(SelectionEvents, DeletingSelectedNodesDropsThemOnce) {
    HSelectionList list;
    list.add("body");
    list.add("bodyJoint3");
    HGlobal::setActiveSelectionList(list);
    scene().deleteNodes({body.transform, body.joints[2]});
    EXPECT_EQ(changes, 2);
    HSelectionList active;
    HGlobal::getActiveSelectionList(active);
    EXPECT_TRUE(active.isEmpty());
    scene().deleteNodes({body.joints[0]});
    EXPECT_EQ(changes, 2);
}

TEST(SelectionModes, DefaultToObjectsWithVerticesPickable) {
    runtime::Selection& selection = runtime::selection();
    EXPECT_FALSE(selection.allComponents());
    EXPECT_TRUE(selection.vertices());
}
