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

    fixture::SkinnedMesh body;
};

} // namespace

// The transform and the shape load the whole mesh in index order, selected vertices load in
// the order the host lists them; the header row comes first and shows no weights.
TEST_F(Loading, RowsFollowTheSelectionUnderTheirShapesHeaderRow) {
    const QStringList first{"0.500", "0.300", "0.200"};
    const QStringList third{"0.000", "0.000", "1.000"};
    const QStringList fourth{"0.250", "0.250", "0.500"};
    const QStringList whole{"bodyShape", "vtx[0]", "vtx[1]", "vtx[2]", "vtx[3]"};
    const struct {
        const char* items;
        QStringList rows;
        std::vector<std::pair<int, QStringList>> texts;
    } cases[] = {
        {"body", whole, {{0, {"", "", ""}}, {1, first}, {3, third}, {4, fourth}}},
        {"bodyShape", whole, {{1, first}, {4, fourth}}},
        {"body.vtx[3] body.vtx[0] body.vtx[2]",
         {"bodyShape", "vtx[3]", "vtx[0]", "vtx[2]"},
         {{1, fourth}, {2, first}, {3, third}}},
    };
    for (const auto& loaded : cases) {
        SCOPED_TRACE(loaded.items);
        selectAndLoad(loaded.items);
        EXPECT_EQ(rowNames(), loaded.rows);
        EXPECT_EQ(columnNames(), (QStringList{"bodyJoint1", "bodyJoint2", "bodyJoint3"}));
        for (const auto& [row, texts] : loaded.texts)
            EXPECT_EQ(rowTexts(row), texts) << row;
    }
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

// Automatic updating keeps the table when nothing is selected; without it the table empties.
TEST_F(Loading, NothingSelectedEmptiesTheTableUnlessUpdatingAutomatically) {
    selectAndLoad("body.vtx[1]");
    QMetaObject::invokeMethod(model, "setAutoUpdate", Q_ARG(bool, true));
    ASSERT_TRUE(run("select -cl"));
    clickButton("LoadComponent");
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[1]"}));
    EXPECT_EQ(rowTexts(1), (QStringList{"0.100", "0.600", "0.300"}));
    QMetaObject::invokeMethod(model, "setAutoUpdate", Q_ARG(bool, false));
    clickButton("LoadComponent");
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(model->columnCount(), 0);
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
