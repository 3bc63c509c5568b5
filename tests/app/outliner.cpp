#include "Outliner.h"

#include "HGlobal.h"
#include "HPxCommand.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "OutputRecorder.h"
#include "ScopedCommand.h"
#include "lang/BuiltInCommand.h"
#include "scene/Selection.h"
#include "windowFixture.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

class FailingSelect : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return runtime::commandError("select: refused."); }
};

class OutlinerTest : public appfixture::WindowTest {
protected:
    void SetUp() override {
        appfixture::WindowTest::SetUp();
        mesh = fixture::makeSkinnedMesh();
    }

    app::Outliner& outliner() const { return *window().outliner(); }
    QTreeWidgetItem* item(const runtime::NodePtr& node) const { return outliner().itemOf(*node); }
    QStringList selectedNames() const {
        QStringList names;
        for (QTreeWidgetItem* selected : outliner().selectedItems())
            names.append(selected->text(app::Outliner::kNameColumn));
        names.sort();
        return names;
    }
    void click(const runtime::NodePtr& node, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QRect rect = outliner().visualItemRect(item(node));
        QTest::mouseClick(outliner().viewport(), Qt::LeftButton, modifiers, rect.center());
    }
    std::vector<std::string> selectedInScene() const {
        std::vector<std::string> names;
        HSelectionList list;
        HGlobal::getActiveSelectionList(list);
        for (unsigned i = 0; i < list.length(); ++i) {
            HDagPath path;
            HObject component;
            list.getDagPath(i, path, component);
            names.push_back(path.partialPathName().asChar());
        }
        return names;
    }

    fixture::SkinnedMesh mesh;
};

std::vector<std::string> childNames(const QTreeWidgetItem* parent) {
    std::vector<std::string> names;
    for (int i = 0; i < parent->childCount(); ++i)
        names.push_back(parent->child(i)->text(0).toStdString());
    return names;
}

std::vector<std::string> topNames(const QTreeWidget& tree) {
    return childNames(tree.invisibleRootItem());
}

TEST_F(OutlinerTest, ShowsTheHierarchyWithDependencyNodesInTheirOwnSection) {
    EXPECT_EQ(topNames(outliner()),
              (std::vector<std::string>{"body", "bodyJoint1", "Dependency nodes"}));
    EXPECT_EQ(childNames(item(mesh.transform)), (std::vector<std::string>{"bodyShape"}));
    EXPECT_EQ(childNames(item(mesh.joints[0])), (std::vector<std::string>{"bodyJoint2"}));
    EXPECT_EQ(childNames(item(mesh.joints[1])), (std::vector<std::string>{"bodyJoint3"}));
    EXPECT_EQ(item(mesh.shape)->text(app::Outliner::kTypeColumn), "mesh");
    EXPECT_EQ(item(mesh.joints[2])->text(app::Outliner::kTypeColumn), "joint");

    QTreeWidgetItem* section = outliner().dependencySection();
    EXPECT_FALSE(section->isHidden());
    EXPECT_EQ(item(mesh.cluster)->parent(), section);
    std::vector<std::string> types;
    for (int i = 0; i < section->childCount(); ++i)
        types.push_back(section->child(i)->text(app::Outliner::kTypeColumn).toStdString());
    std::sort(types.begin(), types.end());
    EXPECT_EQ(types, (std::vector<std::string>{"groupId", "objectSet", "skinCluster"}));
}

TEST_F(OutlinerTest, FollowsSceneChangesRowByRow) {
    runtime::Scene& scene = runtime::scene();
    QTreeWidgetItem* bodyRow = item(mesh.transform);

    scene.rename(*mesh.joints[1], "knee");
    EXPECT_EQ(item(mesh.joints[1])->text(0), "knee");

    // Deleting a joint takes the rows below it along; restoring puts them back in place.
    std::shared_ptr<runtime::DeletedNodes> deleted = scene.deleteNodes({mesh.joints[1]});
    EXPECT_EQ(item(mesh.joints[1]), nullptr);
    EXPECT_EQ(item(mesh.joints[2]), nullptr);
    EXPECT_TRUE(childNames(item(mesh.joints[0])).empty());
    ASSERT_TRUE(static_cast<bool>(scene.restore(*deleted)));
    EXPECT_EQ(childNames(item(mesh.joints[0])), (std::vector<std::string>{"knee"}));
    EXPECT_EQ(childNames(item(mesh.joints[1])), (std::vector<std::string>{"bodyJoint3"}));

    ASSERT_TRUE(static_cast<bool>(scene.reparent(*mesh.joints[2], nullptr)));
    EXPECT_EQ(topNames(outliner()),
              (std::vector<std::string>{"body", "bodyJoint1", "bodyJoint3", "Dependency nodes"}));
    // Rows that did not change are the same rows.
    EXPECT_EQ(item(mesh.transform), bodyRow);

    scene.reset();
    EXPECT_EQ(topNames(outliner()), (std::vector<std::string>{"Dependency nodes"}));
    EXPECT_TRUE(outliner().dependencySection()->isHidden());
    scene.createNode("joint", "solo");
    EXPECT_EQ(topNames(outliner()), (std::vector<std::string>{"solo", "Dependency nodes"}));
}

TEST_F(OutlinerTest, FollowsASelectionMadeByACommand) {
    ASSERT_TRUE(static_cast<bool>(HGlobal::executeCommand("select -r bodyJoint2 body.vtx[3]")));
    EXPECT_EQ(selectedNames(), (QStringList{"bodyJoint2", "bodyShape"}));
    ASSERT_TRUE(static_cast<bool>(HGlobal::executeCommand("select -cl")));
    EXPECT_TRUE(selectedNames().isEmpty());
}

TEST_F(OutlinerTest, ClickingSelectsThroughTheSelectCommandAndUndoRevertsIt) {
    OutputRecorder recorder;
    click(mesh.joints[0]);
    click(mesh.joints[1], Qt::ControlModifier);
    EXPECT_EQ(
        recorder.texts(HCommandMessage::kHistory),
        (std::vector<std::string>{"select -r |bodyJoint1", "select -add |bodyJoint1|bodyJoint2"}));
    EXPECT_EQ(selectedInScene(), (std::vector<std::string>{"bodyJoint1", "bodyJoint2"}));

    ASSERT_TRUE(static_cast<bool>(HGlobal::executeCommand("undo")));
    EXPECT_EQ(selectedInScene(), (std::vector<std::string>{"bodyJoint1"}));
    EXPECT_EQ(selectedNames(), (QStringList{"bodyJoint1"}));

    click(mesh.joints[2]);
    click(mesh.joints[0], Qt::ControlModifier);
    EXPECT_EQ(recorder.texts(HCommandMessage::kHistory).back(), "select -add |bodyJoint1");
    click(mesh.joints[2], Qt::ControlModifier);
    EXPECT_EQ(recorder.texts(HCommandMessage::kHistory).back(),
              "select -d |bodyJoint1|bodyJoint2|bodyJoint3");

    click(mesh.joints[0], Qt::ControlModifier);
    EXPECT_EQ(recorder.texts(HCommandMessage::kHistory).back(), "select -cl");
    EXPECT_TRUE(selectedInScene().empty());
}

TEST_F(OutlinerTest, ShowsTheSceneSelectionAgainWhenSelectFails) {
    ScopedCommand select("select", runtime::createCommand<FailingSelect>);
    HSelectionList joint;
    joint.add(fixture::pathOf(mesh.joints[2]));
    HGlobal::setActiveSelectionList(joint);
    click(mesh.joints[0]);
    EXPECT_EQ(selectedNames(), (QStringList{"bodyJoint3"}));
}

} // namespace
