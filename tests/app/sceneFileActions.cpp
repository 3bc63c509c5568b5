#include "SceneFileActions.h"

#include "CommandRunner.h"
#include "HGlobal.h"
#include "HQtUtil.h"
#include "OutputRecorder.h"
#include "RecentFiles.h"
#include "windowFixture.h"

#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <gtest/gtest.h>

namespace {

// The File menu's actions against the real `file` command: what they run (the statements
// echoed into the script output) and what that leaves on disk and in the scene.
class SceneFileTest : public appfixture::WindowTest {
protected:
    void SetUp() override {
        appfixture::WindowTest::SetUp();
        ASSERT_TRUE(HGlobal::executeCommand("file -force -new"));
        files().setPathChooser([this](app::PathPurpose purpose) {
            chosenFor.push_back(purpose);
            return chosenPath;
        });
        recorder.clear();
    }

    app::SceneFileActions& files() const { return window().files(); }
    QStringList calls() const {
        QStringList statements;
        for (const std::string& text : recorder.texts(HCommandMessage::kHistory))
            statements.append(QString::fromStdString(text));
        return statements;
    }
    static QString quoted(const QString& path) { return app::CommandRunner::quoted(path); }
    static bool run(const QString& statements) {
        return static_cast<bool>(HGlobal::executeCommand(HQtUtil::toHString(statements)));
    }
    static bool hasNode(const char* name) { return runtime::scene().findNode(name) != nullptr; }
    void modifyScene() { scene().createNode("joint", "changed"); }
    bool sceneHasChanges() const { return hasNode("changed"); }
    // Saves a scene of one joint, `node`, at `path`, and goes back to an empty untitled one;
    // nothing of it reaches the script output.
    void writeSceneFile(const QString& path, const char* node) {
        scene().createNode("joint", node);
        ASSERT_TRUE(run("file -rename " + quoted(path) + "; file -save; file -new"));
        recorder.clear();
    }
    // Whether `path` holds a scene with the joint `node`; leaves that scene open.
    bool savedWith(const QString& path, const char* node) {
        return run("file -force -open " + quoted(path)) && hasNode(node);
    }

    OutputRecorder recorder;
    QString chosenPath;
    std::vector<app::PathPurpose> chosenFor;
};

TEST_F(SceneFileTest, AnUnchangedSceneIsReplacedWithoutAsking) {
    appfixture::QuestionAnswerer answerer(QMessageBox::Cancel);
    EXPECT_TRUE(files().newScene());
    EXPECT_EQ(answerer.asked(), 0);
    EXPECT_EQ(calls(), (QStringList{"file -new"}));
}

TEST_F(SceneFileTest, CancelKeepsTheChangedScene) {
    QString other = temporaryPath("other.vscene");
    writeSceneFile(other, "other");
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Cancel);
    EXPECT_FALSE(files().newScene());
    EXPECT_FALSE(files().openScene(other));
    EXPECT_EQ(answerer.asked(), 2);
    EXPECT_TRUE(answerer.text().startsWith("The scene has unsaved changes."));
    EXPECT_TRUE(calls().isEmpty());
    EXPECT_TRUE(sceneHasChanges());
}

TEST_F(SceneFileTest, DontSaveDiscardsTheChangesWithForce) {
    QString path = temporaryPath("a \"b\".vscene");
    writeSceneFile(path, "fromFile");
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Discard);
    EXPECT_TRUE(files().openScene(path));
    EXPECT_EQ(calls(), (QStringList{"file -force -open " + quoted(path)}));
    EXPECT_FALSE(sceneHasChanges());
    EXPECT_TRUE(hasNode("fromFile"));
}

TEST_F(SceneFileTest, SaveSavesUnderTheSceneNameBeforeReplacing) {
    QString path = temporaryPath("body.vscene");
    ASSERT_TRUE(run("file -rename " + quoted(path)));
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Save);
    EXPECT_TRUE(files().newScene());
    EXPECT_EQ(calls(), (QStringList{"file -save", "file -new"}));
    EXPECT_TRUE(chosenFor.empty());
    EXPECT_FALSE(sceneHasChanges());
    EXPECT_TRUE(savedWith(path, "changed"));
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
    EXPECT_EQ(calls(),
              (QStringList{"file -rename " + quoted(chosenPath), "file -save", "file -new"}));
    EXPECT_EQ(chosenFor, (std::vector<app::PathPurpose>{app::PathPurpose::kSaveAs,
                                                        app::PathPurpose::kSaveAs}));
    EXPECT_TRUE(savedWith(chosenPath, "changed"));
}

TEST_F(SceneFileTest, AFailedSaveKeepsTheScene) {
    QString path = temporaryPath("no such folder/body.vscene");
    ASSERT_TRUE(run("file -rename " + quoted(path)));
    modifyScene();
    appfixture::QuestionAnswerer answerer(QMessageBox::Save);
    EXPECT_FALSE(files().newScene());
    EXPECT_EQ(calls().value(0), "file -save");
    EXPECT_FALSE(calls().contains("file -new"));
    EXPECT_TRUE(sceneHasChanges());
    EXPECT_FALSE(QFileInfo::exists(path));
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
    scene().createNode("joint", "exported");
    chosenPath = temporaryPath("extra.vscene");
    EXPECT_TRUE(files().exportAll());
    ASSERT_TRUE(run("file -force -new"));
    EXPECT_TRUE(files().importFile());
    EXPECT_TRUE(hasNode("exported"));
    chosenPath.clear();
    EXPECT_FALSE(files().importFile());
    const QString path = temporaryPath("extra.vscene");
    EXPECT_EQ(calls(),
              (QStringList{"file -exportAll " + quoted(path), "file -import " + quoted(path)}));
}

TEST_F(SceneFileTest, OpenedAndSavedFilesBecomeRecentNewestFirst) {
    app::RecentFiles recent(settings());
    QString a = temporaryPath("a.vscene"), b = temporaryPath("b.vscene");
    writeSceneFile(a, "a");
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
