#include "HEventMessage.h"
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "HMessage.h"
#include "scene/Scene.h"
#include "scene/SceneChange.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;
using runtime::NodePtr;
using runtime::SceneChange;

namespace {

class ChangeLog : public FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        m_id = scene().addListener(
            [this](const SceneChange& change) { kinds.push_back(change.kind); });
    }
    void TearDown() override { scene().removeListener(m_id); }

    std::vector<SceneChange::Kind> kinds;

private:
    runtime::Scene::ListenerId m_id = 0;
};

} // namespace

TEST_F(ChangeLog, EveryEditSendsOneNoticeAndMarksTheSceneModified) {
    EXPECT_FALSE(scene().isModified());
    NodePtr joint = scene().createNode("joint", "hip");
    EXPECT_TRUE(scene().isModified());
    scene().setModified(false);
    scene().rename(*joint, "pelvis");
    NodePtr root = scene().createNode("transform", "root");
    scene().reparent(*joint, root.get());
    scene().setValue(joint->plug("tx"), 1.0);
    scene().deleteNodes({root});
    EXPECT_EQ(kinds, (std::vector<SceneChange::Kind>{
                         SceneChange::kNodesAdded, SceneChange::kNodeRenamed,
                         SceneChange::kNodesAdded, SceneChange::kNodeReparented,
                         SceneChange::kValueChanged, SceneChange::kNodesRemoved}));
    EXPECT_TRUE(scene().isModified());
    scene().reset();
    EXPECT_EQ(kinds.back(), SceneChange::kSceneReset);
    EXPECT_FALSE(scene().isModified());
}

TEST_F(ChangeLog, AWeightWriteIsOneNoticeAndSelectionIsNone) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    scene().setModified(false);
    kinds.clear();
    HSelectionList list;
    list.add("body");
    HGlobal::setActiveSelectionList(list);
    EXPECT_TRUE(kinds.empty());
    EXPECT_FALSE(scene().isModified());
    HFnSkinCluster fn(body.clusterObject());
    ASSERT_TRUE(fn.setWeights(body.shapePath(), HObject(), 0, 0.5));
    EXPECT_EQ(kinds, (std::vector<SceneChange::Kind>{SceneChange::kWeightsChanged}));
    EXPECT_TRUE(scene().isModified());
}

TEST_F(ChangeLog, AListenerRemovedDuringANoticeIsNotCalledAgain) {
    int calls = 0;
    runtime::Scene::ListenerId second = 0;
    runtime::Scene::ListenerId first = scene().addListener([&](const SceneChange&) {
        ++calls;
        scene().removeListener(second);
    });
    second = scene().addListener([&](const SceneChange&) { calls += 100; });
    scene().createNode("joint");
    EXPECT_EQ(calls, 1);
    scene().removeListener(first);
}

namespace {

// The vertices named by the weight notices that follow, in order; "all" for a notice that
// names none.
class WeightNotices : public FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        m_id = scene().addListener([this](const SceneChange& change) {
            if (change.kind != SceneChange::kWeightsChanged)
                return;
            if (!change.vertices) {
                notices.push_back({-1});
                return;
            }
            notices.emplace_back(change.vertices->begin(), change.vertices->end());
        });
    }
    void TearDown() override { scene().removeListener(m_id); }

    std::vector<std::vector<int>> notices;

private:
    runtime::Scene::ListenerId m_id = 0;
};

} // namespace

TEST_F(WeightNotices, NameTheVerticesAWriteChangedAndItsUndoRestored) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    notices.clear();
    HFnSkinCluster fn(body.clusterObject());
    ASSERT_TRUE(fn.setWeights(body.shapePath(), fixture::vertexComponent({7, 2}), 0, 0.5));
    ASSERT_TRUE(fn.setWeights(body.shapePath(), HObject(), 0, 0.5));
    EXPECT_EQ(notices, (std::vector<std::vector<int>>{{7, 2}, {-1}}));

    notices.clear();
    ASSERT_TRUE(HGlobal::executeCommand("skinPercent -t bodyJoint1 -tv 1 skinCluster1 body.vtx[5]",
                                        false, true));
    ASSERT_TRUE(HGlobal::executeCommand("undo"));
    ASSERT_TRUE(HGlobal::executeCommand(
        "select -r body.vtx[3]; skinCluster -e -sw 0 -swi 1 skinCluster1;"
        "skinPercent -t bodyJoint1 -tv 0.9 -nrm false skinCluster1 body.vtx[4];"
        "skinPercent -nrm true skinCluster1 body.vtx[4]"));
    EXPECT_EQ(notices, (std::vector<std::vector<int>>{{5}, {5}, {3}, {4}, {4}}));
}

namespace {

void countEvent(void* count) {
    ++*static_cast<int*>(count);
}

} // namespace

TEST_F(WeightNotices, EveryWeightChangeAndOnlyThatFiresSkinWeightsChanged) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    int events = 0;
    const HCallbackId id =
        HEventMessage::addEventCallback("SkinWeightsChanged", countEvent, &events);
    ASSERT_NE(id, 0u);
    ASSERT_TRUE(HGlobal::executeCommand("select -r body.vtx[5]; setAttr skinCluster1.normalizeWeights 2"));
    EXPECT_EQ(events, 0);
    ASSERT_TRUE(HGlobal::executeCommand("skinPercent -t bodyJoint1 -tv 1 skinCluster1 body.vtx[5]",
                                        false, true));
    EXPECT_EQ(events, 1);
    ASSERT_TRUE(HGlobal::executeCommand("undo"));
    ASSERT_TRUE(HGlobal::executeCommand("redo"));
    EXPECT_EQ(events, 3);
    ASSERT_TRUE(
        HFnSkinCluster(body.clusterObject()).setWeights(body.shapePath(), HObject(), 0, 0.5));
    EXPECT_EQ(events, 4);
    HMessage::removeCallback(id);
}
