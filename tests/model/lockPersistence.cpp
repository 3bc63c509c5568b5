// The locks stored on skin clusters: created on first load, read back on every load and shown
// on the rows, columns and cells they belong to.
#include "HFnAttribute.h"
#include "HFnCompoundAttribute.h"
#include "HFnDependencyNode.h"
#include "HFnStringArrayData.h"
#include "HPlug.h"
#include "OutputRecorder.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QTableView>
#include <gtest/gtest.h>

namespace {

class LockPersistence : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(16, 3, 3);
    }

    static void storeVertexLock(const fixture::SkinnedMesh& mesh, unsigned vertex) {
        HPlug plug = HFnDependencyNode(mesh.clusterObject()).findPlug("lockedVertexIndices");
        ASSERT_TRUE(plug.elementByLogicalIndex(vertex).setBool(true));
    }
    static void storeCellLock(const fixture::SkinnedMesh& mesh, unsigned vertex,
                              const HString& path) {
        HFnDependencyNode cluster(mesh.clusterObject());
        HPlug joints = cluster.findPlug("lockedLocalJoints");
        ASSERT_TRUE(
            joints.selectAncestorLogicalIndex(vertex, cluster.attribute("lockedCellIndices")));
        ASSERT_TRUE(joints.elementByLogicalIndex(joints.numElements()).setString(path));
    }

    // The table rows whose vertex is shown locked.
    std::vector<int> lockedRows() const {
        std::vector<int> rows;
        for (int row = 0; row < model->rowCount(); ++row)
            if (rowHeader(row, Qt::BackgroundRole).value<QColor>() == QColor(Qt::gray))
                rows.push_back(row);
        return rows;
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(LockPersistence, FirstLoadGivesTheSkinClusterEmptyLockAttributes) {
    selectAndLoad("body");
    HFnDependencyNode cluster(body.clusterObject());

    HObject data;
    ASSERT_TRUE(cluster.findPlug("lockedJointNames").getValue(data));
    EXPECT_EQ(HFnStringArrayData(data).length(), 0u);

    HFnAttribute vertices(cluster.attribute("lockedVertexIndices"));
    EXPECT_TRUE(vertices.isArray());
    EXPECT_EQ(vertices.shortName(), "lockedVertexIndices");
    EXPECT_EQ(cluster.findPlug("lockedVertexIndices").numElements(), 0u);

    HFnCompoundAttribute cells(cluster.attribute("lockedCellIndices"));
    EXPECT_TRUE(cells.isArray());
    ASSERT_EQ(cells.numChildren(), 1u);
    HFnAttribute joints(cells.child(0));
    EXPECT_EQ(joints.name(), "lockedLocalJoints");
    EXPECT_TRUE(joints.isArray());

    EXPECT_TRUE(lockedRows().empty());
    EXPECT_TRUE(editable(1, 0));
}

TEST_F(LockPersistence, StoredJointLockLocksTheColumnOfEveryMeshWithThatInfluence) {
    runtime::NodePtr armJoint = scene().createNode("joint", "armJoint");
    fixture::SkinnedMesh arm = vorel::bindMesh("arm", {armJoint, body.joints[1]}, {{0.5, 0.5}});
    selectAndLoad("body arm");
    vorel::storeJointLocks(body, {body.jointPath(1).fullPathName(), "|gone"});
    vorel::storeJointLocks(arm, {body.jointPath(1).fullPathName()});

    selectAndLoad("arm");
    EXPECT_EQ(columnNames(), (QStringList{"armJoint", "bodyJoint2"}));
    // Gray with black text and not editable, header and cells; the free column keeps its look.
    EXPECT_FALSE(editable(1, 1));
    EXPECT_EQ(cellData(1, 1, Qt::BackgroundRole).value<QColor>(), QColor(Qt::gray));
    EXPECT_EQ(cellData(1, 1, Qt::ForegroundRole).value<QColor>(), QColor(Qt::black));
    EXPECT_EQ(columnHeader(1, Qt::BackgroundRole).value<QColor>(), QColor(Qt::gray));
    EXPECT_EQ(columnHeader(1, Qt::ForegroundRole).value<QColor>(), QColor(Qt::black));
    EXPECT_TRUE(editable(1, 0));
    EXPECT_EQ(cellData(1, 0, Qt::BackgroundRole).value<QColor>(), QColor(Qt::darkCyan));
    EXPECT_FALSE(cellData(1, 0, Qt::ForegroundRole).isValid());
    EXPECT_FALSE(columnHeader(0, Qt::BackgroundRole).isValid());

    selectAndLoad("body");
    EXPECT_FALSE(editable(1, 1));
    EXPECT_TRUE(editable(1, 0));
    EXPECT_TRUE(editable(1, 2));
}

TEST_F(LockPersistence, JointUnlockedWhileAnotherMeshWasNotLoadedIsNotLockedThere) {
    runtime::NodePtr armJoint = scene().createNode("joint", "armJoint");
    fixture::SkinnedMesh arm = vorel::bindMesh("arm", {armJoint, body.joints[1]}, {{0.5, 0.5}});
    selectAndLoad("body arm");
    table->selectColumn(1);
    clickButton("Lock");
    selectAndLoad("body");
    table->selectColumn(1);
    clickButton("UnLock");

    // The arm's cluster still names the joint, which the host no longer holds locked.
    selectAndLoad("arm");
    EXPECT_EQ(columnNames(), (QStringList{"armJoint", "bodyJoint2"}));
    EXPECT_TRUE(editable(1, 1));
    EXPECT_FALSE(columnHeader(1, Qt::BackgroundRole).isValid());
}

TEST_F(LockPersistence, StoredVertexAndCellLocksFollowTheRowsThatAreLoaded) {
    selectAndLoad("body");
    storeVertexLock(body, 12);
    storeCellLock(body, 3, body.jointPath(1).fullPathName());

    clickButton("LoadComponent");
    EXPECT_EQ(lockedRows(), std::vector<int>{13});
    EXPECT_FALSE(editable(13, 0));

    selectAndLoad("body.vtx[10] body.vtx[12] body.vtx[14]");
    EXPECT_EQ(lockedRows(), std::vector<int>{2});

    selectAndLoad("body.vtx[10] body.vtx[14]");
    EXPECT_TRUE(lockedRows().empty());

    // The cell lock locks only its cell.
    selectAndLoad("body.vtx[5] body.vtx[3]");
    EXPECT_FALSE(editable(2, 1));
    EXPECT_EQ(cellData(2, 1, Qt::BackgroundRole).value<QColor>(), QColor(Qt::gray));
    EXPECT_TRUE(editable(2, 0));
    EXPECT_TRUE(editable(1, 1));
    EXPECT_TRUE(lockedRows().empty());
}

TEST_F(LockPersistence, LocksOfUnknownInfluencesAndUnloadedVerticesAreIgnoredSilently) {
    selectAndLoad("body");
    storeCellLock(body, 3, "|gone");
    storeVertexLock(body, 40);
    storeCellLock(body, 40, body.jointPath(0).fullPathName());

    OutputRecorder output;
    clickButton("LoadComponent");
    EXPECT_TRUE(output.lines().empty());
    EXPECT_TRUE(lockedRows().empty());
    for (int row = 1; row < model->rowCount(); ++row)
        for (int column = 0; column < model->columnCount(); ++column)
            EXPECT_TRUE(editable(row, column)) << row << ", " << column;
}
