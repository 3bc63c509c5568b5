// What the table shows: texts, colours, which cells may be edited, the "Filter" button's
// hiding of columns without weight, and the "Highlight" button's mirroring of the table's
// selection into the scene.
#include "HFnDagNode.h"
#include "HFnDependencyNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HGlobal.h"
#include "HSelectionList.h"
#include "OutputRecorder.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

using vorel::run;

namespace {

const std::vector<std::string> kNoWeightList{"There is no weight list displayed in the window."};

QColor colorOf(const QVariant& value) {
    return value.value<QColor>();
}

class Presentation : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 6, 1);
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(Presentation, ShapeRowShowsEachInfluencesOwnColourAndNoText) {
    selectAndLoad("body");
    for (int column = 0; column < 6; ++column) {
        const HColor joint = HFnDagNode(body.jointPath(column)).dormantColor();
        EXPECT_EQ(colorOf(cellData(0, column, Qt::BackgroundRole)),
                  QColor::fromRgbF(joint.r, joint.g, joint.b))
            << column;
        EXPECT_EQ(cellText(0, column), "");
    }
    EXPECT_FALSE(rowHeader(0, Qt::BackgroundRole).isValid());
}

// vtx[0] has a weight too small to show, vtx[1] two that show, vtx[2] does not sum to one and
// vtx[3] has five weights, one over the default limit of four.
TEST_F(Presentation, ColoursMarkShownWeightsUnnormalisedVerticesAndTheInfluenceLimit) {
    vorel::setWeights(body, {{0.9996, 0.0004, 0, 0, 0, 0},
                             {0.998, 0.002, 0, 0, 0, 0},
                             {0.5, 0.498, 0, 0, 0, 0},
                             {0.2, 0.2, 0.2, 0.2, 0.2, 0}});
    selectAndLoad("body");
    EXPECT_EQ(cellText(1, 1), "0.000");
    EXPECT_FALSE(cellData(1, 1, Qt::BackgroundRole).isValid());
    EXPECT_FALSE(cellData(1, 2, Qt::BackgroundRole).isValid());
    EXPECT_EQ(cellText(2, 1), "0.002");
    EXPECT_EQ(colorOf(cellData(2, 1, Qt::BackgroundRole)), QColor(Qt::darkCyan));
    EXPECT_EQ(colorOf(cellData(2, 0, Qt::BackgroundRole)), QColor(Qt::darkCyan));
    EXPECT_FALSE(cellData(2, 0, Qt::ForegroundRole).isValid());
    EXPECT_FALSE(rowHeader(2, Qt::BackgroundRole).isValid());
    EXPECT_FALSE(rowHeader(2, Qt::ForegroundRole).isValid());

    for (int column = 0; column < 6; ++column)
        EXPECT_EQ(colorOf(cellData(3, column, Qt::ForegroundRole)), QColor(Qt::red)) << column;
    EXPECT_EQ(colorOf(rowHeader(3, Qt::BackgroundRole)), QColor(Qt::red));
    EXPECT_EQ(colorOf(rowHeader(0, Qt::BackgroundRole)), QColor(Qt::red));

    EXPECT_EQ(colorOf(rowHeader(4, Qt::BackgroundRole)), QColor(Qt::yellow));
    EXPECT_EQ(colorOf(rowHeader(4, Qt::ForegroundRole)), QColor(Qt::black));
    EXPECT_EQ(colorOf(cellData(4, 0, Qt::BackgroundRole)), QColor(Qt::darkCyan));
}

TEST_F(Presentation, EmptyTableAnswersNothing) {
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(model->columnCount(), 0);
    EXPECT_FALSE(cellData(0, 0, Qt::DisplayRole).isValid());
    EXPECT_FALSE(rowHeader(0, Qt::DisplayRole).isValid());
    EXPECT_FALSE(columnHeader(0, Qt::DisplayRole).isValid());
}

namespace {

// "body": joints 1 and 2 hold the weight of vertices 0 and 1, joint 3 only that of vertex 2.
class ColumnFilter : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 1);
        vorel::setWeights(body, {{0.5, 0.5, 0}, {0.2, 0.8, 0}, {0, 0, 1}, {1, 0, 0}});
    }
    std::vector<bool> hidden() const {
        std::vector<bool> columns;
        for (int column = 0; column < model->columnCount(); ++column)
            columns.push_back(table->isColumnHidden(column));
        return columns;
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(ColumnFilter, HidesColumnsWithoutWeightInTheLoadedRowsAndShowsThemAgain) {
    selectAndLoad("body.vtx[0] body.vtx[1]");
    clickButton("Filter");
    EXPECT_EQ(hidden(), (std::vector<bool>{false, false, true}));
    table->horizontalHeader()->resizeSection(0, 90);
    clickButton("Filter");
    EXPECT_EQ(hidden(), (std::vector<bool>{false, false, false}));
    // The default width: 40 pixels, or what the weights' text needs in the table's font.
    const int width = table->horizontalHeader()->defaultSectionSize();
    EXPECT_GE(width, 40);
    EXPECT_EQ(table->horizontalHeader()->sectionSize(0), width);
    EXPECT_EQ(table->horizontalHeader()->sectionSize(2), width);
}

TEST_F(ColumnFilter, OnAnEmptyTableSaysSoAndStaysOnAcrossLoads) {
    OutputRecorder output;
    clickButton("Filter");
    EXPECT_EQ(output.texts(HCommandMessage::kError), kNoWeightList);
    EXPECT_TRUE(button("Filter")->isChecked());
    selectAndLoad("body");
    EXPECT_EQ(hidden(), (std::vector<bool>{false, false, false}));
    selectAndLoad("body.vtx[0] body.vtx[1]");
    EXPECT_EQ(hidden(), (std::vector<bool>{false, false, true}));
}

namespace {

class Highlight : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(4, 3, 2);
        selectAndLoad("body");
    }

    // The vertices of the active selection's one item.
    static std::vector<int> selectedVertices() {
        HSelectionList list;
        HGlobal::getActiveSelectionList(list);
        HDagPath path;
        HObject component;
        if (list.length() != 1 || !list.getDagPath(0, path, component) || component.isNull())
            return {};
        HIntArray elements;
        HFnSingleIndexedComponent(component).getElements(elements);
        return std::vector<int>(elements.begin(), elements.end());
    }
    static std::vector<std::string> hilitedNodes() {
        HSelectionList list;
        HGlobal::getHiliteList(list);
        std::vector<std::string> names;
        for (unsigned i = 0; i < list.length(); ++i) {
            HObject node;
            list.getDependNode(i, node);
            names.push_back(HFnDependencyNode(node).name().asChar());
        }
        return names;
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(Highlight, SelectedVertexCellsBecomeTheScenesSelectionWithoutAReload) {
    QMetaObject::invokeMethod(model, "setAutoUpdate", Q_ARG(bool, true));
    selectCells({{1, 0}, {3, 1}, {0, 2}});
    clickButton("Highlight");
    EXPECT_EQ(selectedVertices(), (std::vector<int>{0, 2}));
    EXPECT_EQ(model->rowCount(), 5);
}

TEST_F(Highlight, SelectedColumnHilitesItsInfluenceUntilSwitchedOff) {
    table->selectColumn(1);
    clickButton("Highlight");
    EXPECT_EQ(hilitedNodes(), std::vector<std::string>{"bodyJoint2"});
    ASSERT_TRUE(run("select -r body.vtx[3]"));
    clickButton("Highlight");
    EXPECT_TRUE(hilitedNodes().empty());
    EXPECT_EQ(selectedVertices(), std::vector<int>{3});
}

TEST_F(Highlight, CellAndRowSelectionsFollowWhileItIsOn) {
    clickButton("Highlight");
    selectCells({{2, 0}, {4, 2}});
    QMetaObject::invokeMethod(model, "multiCellSelected");
    EXPECT_EQ(selectedVertices(), (std::vector<int>{1, 3}));
    table->selectRow(3);
    QMetaObject::invokeMethod(model, "rowHeaderSelected");
    EXPECT_EQ(selectedVertices(), std::vector<int>{2});
}

TEST_F(Highlight, OnAnEmptyTableSaysSo) {
    selectAndLoad("bodyJoint1");
    OutputRecorder output;
    clickButton("Highlight");
    EXPECT_EQ(output.texts(HCommandMessage::kError), kNoWeightList);
}
