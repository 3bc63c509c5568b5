#include "SceneFileActions.h"

#include "HQtUtil.h"
#include "RecentFiles.h"
#include "fileCommandStandIn.h"
#include "windowFixture.h"

#include <QFile>
#include <QMainWindow>
#include <gtest/gtest.h>

namespace {

class SceneFileTest : public appfixture::WindowTest {
protected:
    void SetUp() override {
        appfixture::WindowTest::SetUp();
        files().setPathChooser([this](app::PathPurpose purpose) {
            chosenFor.push_back(purpose);
            return chosenPath;
        });
    }

    app::SceneFileActions& files() const { return window().files(); }
    QStringList& calls() { return standIn.state().calls; }
    void modifyScene() { scene().createNode("joint", "changed"); }
    bool sceneHasChanges() const { return runtime::scene().findNode("changed") != nullptr; }

    appfixture::FileCommandStandIn standIn;
    QString chosenPath;
    std::vector<app::PathPurpose> chosenFor;
};

TEST_F(SceneFileTest, AnUnchangedSceneIsReplacedWithoutAsking) {
    appfixture::QuestionAnswerer answerer(QMessageBox::Cancel);
    EXPECT_TRUE(files().newScene());
    EXPECT_EQ(answerer.asked(), 0);
    EXPECT_EQ(calls(), (QStringList{"-new"}));
}

TEST_F(SceneFileTest, CancelKeepsTheChangedScene) {
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Cancel);
    EXPECT_FALSE(files().newScene());
    EXPECT_FALSE(files().openScene("/scenes/other.vscene"));
    EXPECT_EQ(answerer.asked(), 2);
    EXPECT_TRUE(answerer.text().startsWith("The scene has unsaved changes."));
    EXPECT_TRUE(calls().isEmpty());
    EXPECT_TRUE(sceneHasChanges());
}

TEST_F(SceneFileTest, DontSaveDiscardsTheChangesWithForce) {
    modifyScene();
    QString path = temporaryPath("a \"b\".vscene");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    appfixture::QuestionAnswerer answerer(QMessageBox::Discard);
    EXPECT_TRUE(files().openScene(path));
    EXPECT_EQ(calls(), (QStringList{"-force -open " + path}));
    EXPECT_FALSE(sceneHasChanges());
}

TEST_F(SceneFileTest, SaveSavesUnderTheSceneNameBeforeReplacing) {
    standIn.state().sceneName = "/scenes/body.vscene";
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Save);
    EXPECT_TRUE(files().newScene());
    EXPECT_EQ(calls(), (QStringList{"-save", "-new"}));
    EXPECT_TRUE(chosenFor.empty());
}

TEST_F(SceneFileTest, SavingAnUntitledSceneAsksForAName) {
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Save);
    // No name chosen: nothing is saved and nothing replaced.
    EXPECT_FALSE(files().newScene());
    EXPECT_TRUE(calls().isEmpty());
    EXPECT_TRUE(sceneHasChanges());

    chosenPath = temporaryPath("body.vscene");
    EXPECT_TRUE(files().newScene());
    EXPECT_EQ(calls(), (QStringList{"-rename " + chosenPath, "-save", "-new"}));
    EXPECT_EQ(chosenFor, (std::vector<app::PathPurpose>{app::PathPurpose::kSaveAs,
                                                        app::PathPurpose::kSaveAs}));
}

TEST_F(SceneFileTest, AFailedSaveKeepsTheScene) {
    standIn.state().sceneName = "/scenes/body.vscene";
    standIn.state().failSave = true;
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Save);
    EXPECT_FALSE(files().newScene());
    EXPECT_EQ(calls(), (QStringList{"-save"}));
    EXPECT_TRUE(sceneHasChanges());
}

TEST_F(SceneFileTest, ClosingTheWindowAsksFirst) {
    modifyScene();
    QMainWindow& mainWindow = *HQtUtil::mainWindow();
    mainWindow.show();
    {
        appfixture::QuestionAnswerer answerer(QMessageBox::Cancel);
        EXPECT_FALSE(mainWindow.close());
        EXPECT_EQ(answerer.asked(), 1);
    }
    EXPECT_TRUE(mainWindow.isVisible());
    appfixture::QuestionAnswerer answerer(QMessageBox::Discard);
    EXPECT_TRUE(mainWindow.close());
    EXPECT_FALSE(mainWindow.isVisible());
}

TEST_F(SceneFileTest, ImportAndExportTakeTheChosenPath) {
    chosenPath = "/scenes/extra.glb";
    EXPECT_TRUE(files().importFile());
    EXPECT_TRUE(files().exportAll());
    chosenPath.clear();
    EXPECT_FALSE(files().importFile());
    EXPECT_EQ(calls(), (QStringList{"-import /scenes/extra.glb", "-exportAll /scenes/extra.glb"}));
}

TEST_F(SceneFileTest, OpenedAndSavedFilesBecomeRecentNewestFirst) {
    app::RecentFiles recent(settings());
    QString a = temporaryPath("a.vscene"), b = temporaryPath("b.vscene");
    for (const QString& path : {a, b}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    EXPECT_TRUE(files().openScene(a));
    chosenPath = b;
    EXPECT_TRUE(files().saveAs());
    EXPECT_TRUE(files().openScene(a));
    EXPECT_EQ(recent.paths(), (QStringList{a, b}));

    // A file that is gone leaves the list when opening it fails.
    QFile::remove(b);
    EXPECT_FALSE(files().openScene(b));
    EXPECT_EQ(recent.paths(), (QStringList{a}));
}

TEST(RecentFiles, KeepsEachPathOnceUpToTheLimit) {
    QTemporaryDir directory;
    QSettings settings(directory.filePath("settings.ini"), QSettings::IniFormat);
    app::RecentFiles recent(settings);
    for (int i = 0; i < app::RecentFiles::kLimit + 3; ++i)
        recent.add(directory.filePath(QString("%1.vscene").arg(i)));
    recent.add(directory.filePath("5.vscene"));
    QStringList paths = recent.paths();
    ASSERT_EQ(paths.size(), app::RecentFiles::kLimit);
    EXPECT_EQ(paths.first(), directory.filePath("5.vscene"));
    EXPECT_EQ(paths.count(directory.filePath("5.vscene")), 1);
    EXPECT_FALSE(paths.contains(directory.filePath("0.vscene")));
    // The list is in the settings, for the next session.
    QSettings reread(directory.filePath("settings.ini"), QSettings::IniFormat);
    EXPECT_EQ(reread.value(app::RecentFiles::kKey).toStringList(), paths);
}

} // namespace
