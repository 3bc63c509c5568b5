// Following the scene: reloading on selection changes with "Auto Update", selecting the rows
// of the scene's vertices without it, and dropping the table when a scene is opened.
#include "core/EventBus.h"
#include "vorelSession.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QTableView>
#include <algorithm>
#include <gtest/gtest.h>

using vorel::run;

namespace {

class SceneFollowing : public vorel::VorelWindowTest {
protected:
    void SetUp() override {
        VorelWindowTest::SetUp();
        body = vorel::makeMesh(6, 3, 2);
    }
    void switchAutoUpdate() {
        for (QAction* action : window->findChildren<QAction*>())
            if (action->text() == "Auto Update")
                action->trigger();
    }
    // What opening a file does to a plug-in: the scene is replaced, its selection emptied
    // without a selection event, and "SceneOpened" follows.
    void openEmptyScene() {
        scene().reset();
        runtime::host().get<runtime::EventBus>().fire(runtime::events::kSceneOpened);
    }
    std::vector<int> selectedRows() const {
        std::vector<int> rows;
        for (const QModelIndex& index : table->selectionModel()->selectedRows())
            rows.push_back(index.row());
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    fixture::SkinnedMesh body;
};

} // namespace

TEST_F(SceneFollowing, AutoUpdateReloadsOnEverySelectionChangeButKeepsTheTableOnEmptySpace) {
    switchAutoUpdate();
    ASSERT_TRUE(run("select -r body.vtx[4] body.vtx[1]"));
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[4]", "vtx[1]"}));
    ASSERT_TRUE(run("select -r body"));
    EXPECT_EQ(model->rowCount(), 7);
    ASSERT_TRUE(run("select -cl"));
    EXPECT_EQ(model->rowCount(), 7);
    switchAutoUpdate();
    ASSERT_TRUE(run("select -r body.vtx[2]"));
    EXPECT_EQ(model->rowCount(), 7);
}

// Without automatic updating, the scene's vertices select their rows where they were loaded,
// in a whole mesh's table or a component table; vertices of a shape not loaded select nothing.
TEST_F(SceneFollowing, WithoutAutoUpdateSceneVerticesSelectTheirRows) {
    selectAndLoad("body");
    ASSERT_TRUE(run("select -r body.vtx[3] body.vtx[2]"));
    EXPECT_EQ(selectedRows(), (std::vector<int>{3, 4}));
    EXPECT_EQ(table->selectionModel()->currentIndex().row(), 4);
    EXPECT_EQ(model->rowCount(), 7);
    ASSERT_TRUE(run("select -r body"));
    EXPECT_TRUE(selectedRows().empty());

    selectAndLoad("body.vtx[5] body.vtx[0] body.vtx[3]");
    ASSERT_TRUE(run("select -r body.vtx[3] body.vtx[1]"));
    EXPECT_EQ(selectedRows(), std::vector<int>{3});

    vorel::makeMesh(4, 2, 1, "arm");
    selectAndLoad("arm");
    ASSERT_TRUE(run("select -r body.vtx[1]"));
    EXPECT_TRUE(selectedRows().empty());
}

TEST_F(SceneFollowing, OpeningASceneEmptiesTheTableAndSkipsTheSelectionThatFollows) {
    switchAutoUpdate();
    ASSERT_TRUE(run("select -r body"));
    ASSERT_GT(model->rowCount(), 0);
    openEmptyScene();
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(model->columnCount(), 0);

    vorel::makeMesh(6, 3, 2);
    ASSERT_TRUE(run("select -r body"));
    EXPECT_EQ(model->rowCount(), 0);
    ASSERT_TRUE(run("select -r body"));
    EXPECT_EQ(model->rowCount(), 7);
}

TEST_F(SceneFollowing, PaintSmoothingModeLeavesTheTableAlone) {
    switchAutoUpdate();
    ASSERT_TRUE(run("select -r body.vtx[1]"));
    QMetaObject::invokeMethod(model, "setSkinPaintSmoothMode", Q_ARG(bool, true));
    ASSERT_TRUE(run("select -r body"));
    EXPECT_EQ(rowNames(), (QStringList{"bodyShape", "vtx[1]"}));
    QMetaObject::invokeMethod(model, "setSkinPaintSmoothMode", Q_ARG(bool, false));
}
