// Loading the table from the scene's selection with "Load Component".
#include "HFnSingleIndexedComponent.h"
#include "HGlobal.h"
#include "HSelectionList.h"
#include "OutputRecorder.h"
#include "scene/MeshPrimitives.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QColor>
#include <gtest/gtest.h>

using vorel::run;

namespace {

// "body": four vertices on three joints.
class Loading : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 3);
        vorel::setWeights(body,
                          {{0.5, 0.3, 0.2}, {0.1, 0.6, 0.3}, {0.0, 0.0, 1.0}, {0.25, 0.25, 0.5}});
    }

    QStringList rowTexts(int row) const {
        QStringList texts;
        for (int column = 0; column < model->columnCount(); ++column)
            texts.append(cellText(row, column));
        return texts;
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(Loading, WholeMeshGivesItsHeaderRowThenEveryVertexInIndexOrder) {
    selectAndLoad("body");
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[0]", "vtx[1]", "vtx[2]", "vtx[3]"}));
    EXPECT_EQ(columnNames(), (QStringList{"bodyJoint1", "bodyJoint2", "bodyJoint3"}));
    EXPECT_EQ(rowTexts(0), (QStringList{"", "", ""}));
    EXPECT_EQ(rowTexts(1), (QStringList{"0.500", "0.300", "0.200"}));
    EXPECT_EQ(rowTexts(3), (QStringList{"0.000", "0.000", "1.000"}));
    EXPECT_EQ(rowTexts(4), (QStringList{"0.250", "0.250", "0.500"}));
}

TEST_F(Loading, TransformAndShapeLoadTheSameRows) {
    selectAndLoad("body");
    const QStringList names = rowNames();
    const QStringList lastRow = rowTexts(4);
    selectAndLoad("bodyShape");
    EXPECT_EQ(rowNames(), names);
    EXPECT_EQ(rowTexts(4), lastRow);
}

TEST_F(Loading, SelectedVerticesKeepTheOrderTheHostListsThem) {
    selectAndLoad("body.vtx[3] body.vtx[0] body.vtx[2]");
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[3]", "vtx[0]", "vtx[2]"}));
    EXPECT_EQ(rowTexts(1), (QStringList{"0.250", "0.250", "0.500"}));
    EXPECT_EQ(rowTexts(2), (QStringList{"0.500", "0.300", "0.200"}));
    EXPECT_EQ(rowTexts(3), (QStringList{"0.000", "0.000", "1.000"}));
}

TEST_F(Loading, SharedInfluencesShareOneColumnAndMissingOnesStayBlank) {
    runtime::NodePtr armJoint = scene().createNode("joint", "armJoint");
    vorel::bindMesh("arm", {body.joints[1], armJoint}, {{0.4, 0.6}, {1.0, 0.0}});
    selectAndLoad("body arm");
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[0]", "vtx[1]", "vtx[2]", "vtx[3]",
                                       "armShape", "vtx[0]", "vtx[1]"}));
    EXPECT_EQ(columnNames(), (QStringList{"bodyJoint1", "bodyJoint2", "bodyJoint3", "armJoint"}));
    EXPECT_EQ(rowTexts(1), (QStringList{"0.500", "0.300", "0.200", ""}));
    EXPECT_EQ(rowTexts(6), (QStringList{"", "0.400", "", "0.600"}));
    EXPECT_EQ(rowTexts(7), (QStringList{"", "1.000", "", "0.000"}));
    // A missing influence is neither a weight nor part of the vertex's sum.
    EXPECT_FALSE(cellData(6, 0, Qt::BackgroundRole).isValid());
    EXPECT_FALSE(cellData(6, 0, Qt::ForegroundRole).isValid());
}

TEST_F(Loading, VertexThatDoesNotSumToOneMarksItsShapeRow) {
    runtime::NodePtr armJoint = scene().createNode("joint", "armJoint");
    vorel::bindMesh("arm", {body.joints[0], armJoint}, {{0.4, 0.5995}});
    vorel::setWeights(body, {{0.5, 0.3, 0.2}, {0.1, 0.6, 0.298}});
    selectAndLoad("body arm");
    EXPECT_EQ(rowHeader(0, Qt::BackgroundRole).value<QColor>(), QColor(Qt::red));
    // 0.9995 is one within the precision of three places.
    EXPECT_FALSE(rowHeader(5, Qt::BackgroundRole).isValid());
}

TEST_F(Loading, NothingSelectedEmptiesTheTable) {
    selectAndLoad("body");
    ASSERT_TRUE(run("select -cl"));
    clickButton("LoadComponent");
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(model->columnCount(), 0);
}

TEST_F(Loading, AutomaticUpdatingKeepsTheTableWhenNothingIsSelected) {
    selectAndLoad("body.vtx[1]");
    QMetaObject::invokeMethod(model, "setAutoUpdate", Q_ARG(bool, true));
    ASSERT_TRUE(run("select -cl"));
    clickButton("LoadComponent");
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[1]"}));
    EXPECT_EQ(rowTexts(1), (QStringList{"0.100", "0.600", "0.300"}));
}

TEST_F(Loading, MeshesWithoutSkinAndComponentsOtherThanVerticesAreSkipped) {
    runtime::MeshGeometry geometry;
    geometry.points = {HPoint(0, 0, 0), HPoint(1, 0, 0), HPoint(1, 0, 1)};
    runtime::createMeshObject(scene(), geometry, "rock");
    HFnSingleIndexedComponent faces;
    HObject face = faces.create(HFn::kMeshPolygonComponent);
    faces.addElement(0);
    HSelectionList selection;
    ASSERT_TRUE(selection.add("rock"));
    ASSERT_TRUE(selection.add(body.shapePath(), face));
    ASSERT_TRUE(HGlobal::setActiveSelectionList(selection));

    OutputRecorder output;
    clickButton("LoadComponent");
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_TRUE(output.lines().empty());

    selectAndLoad("rock body.vtx[2]");
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[2]"}));
}
