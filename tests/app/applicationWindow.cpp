#include "CommandRunner.h"
#include "HGlobal.h"
#include "HPxCommand.h"
#include "HQtUtil.h"
#include "HSelectionList.h"
#include "OutputRecorder.h"
#include "ScopedCommand.h"
#include "Screenshot.h"
#include "StatusReporter.h"
#include "lang/BuiltInCommand.h"
#include "windowFixture.h"

#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <gtest/gtest.h>

namespace {

class NothingCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return HS::kSuccess; }
};

// Takes a command out of the registry for the life of the object.
class CommandTakenAway {
public:
    explicit CommandTakenAway(const char* name)
        : m_entry(runtime::host().get<runtime::CommandRegistry>().remove(name)) {}
    ~CommandTakenAway() {
        if (m_entry)
            runtime::host().get<runtime::CommandRegistry>().add(*m_entry);
    }

private:
    std::shared_ptr<const runtime::CommandEntry> m_entry;
};

class ApplicationWindowTest : public appfixture::WindowTest {
protected:
    QMainWindow& mainWindow() const { return window().window(); }
    QAction* action(const char* name) const {
        QAction* found = mainWindow().findChild<QAction*>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
};

TEST_F(ApplicationWindowTest, TitleNamesTheSceneAndMarksUnsavedChanges) {
    window().runner().run("file -force -new");
    EXPECT_EQ(mainWindow().windowTitle(), "untitled - vorel-host");
    scene().createNode("joint");
    EXPECT_EQ(mainWindow().windowTitle(), "untitled* - vorel-host");
    window().runner().run("file -rename " +
                          app::CommandRunner::quoted(temporaryPath("body.vscene")) +
                          "; file -save");
    EXPECT_EQ(mainWindow().windowTitle(), "body.vscene - vorel-host");
}

TEST_F(ApplicationWindowTest, EntriesWaitForTheCommandsTheyRun) {
    {
        CommandTakenAway noFile("file");
        CommandTakenAway noVorel("vorelCmd");
        window().runner().run("print refresh");
        EXPECT_FALSE(action("newSceneAction")->isEnabled());
        EXPECT_FALSE(action("saveSceneAction")->isEnabled());
        EXPECT_FALSE(action("vorelWindowAction")->isEnabled());
        EXPECT_TRUE(action("quitAction")->isEnabled());
    }
    ScopedCommand vorel("vorelCmd", runtime::createCommand<NothingCommand>);
    window().runner().run("print refresh");
    EXPECT_TRUE(action("newSceneAction")->isEnabled());
    EXPECT_TRUE(action("exportAllAction")->isEnabled());
    EXPECT_TRUE(action("vorelWindowAction")->isEnabled());

    OutputRecorder recorder;
    action("vorelWindowAction")->trigger();
    EXPECT_EQ(recorder.texts(HCommandMessage::kHistory), std::vector<std::string>{"vorelCmd"});
}

TEST_F(ApplicationWindowTest, EditEntriesRunUndoAndRedo) {
    OutputRecorder recorder;
    action("undoAction")->trigger();
    action("redoAction")->trigger();
    EXPECT_EQ(recorder.texts(HCommandMessage::kHistory),
              (std::vector<std::string>{"undo", "redo"}));
    EXPECT_EQ(recorder.texts(HCommandMessage::kWarning),
              (std::vector<std::string>{"There are no more commands to undo.",
                                        "There are no more commands to redo."}));
}

TEST_F(ApplicationWindowTest, WindowsMenuBringsBackAClosedDock) {
    QDockWidget* dock = mainWindow().findChild<QDockWidget*>("scriptEditorDock");
    ASSERT_NE(dock, nullptr);
    dock->close();
    EXPECT_TRUE(dock->isHidden());
    action("scriptEditorAction")->trigger();
    EXPECT_FALSE(dock->isHidden());
}

TEST_F(ApplicationWindowTest, StatusBarShowsTheLastMessageAndTheSelection) {
    QLabel* selection = window().status().selectionLabel();
    EXPECT_EQ(selection->text().toStdString(), "Nothing selected");
    HGlobal::displayWarning("Careful.");
    EXPECT_EQ(mainWindow().statusBar()->currentMessage(), "// Warning: Careful.");
    HGlobal::executeCommand("print done", true);
    EXPECT_EQ(mainWindow().statusBar()->currentMessage(), "done");

    fixture::SkinnedMesh mesh = fixture::makeSkinnedMesh();
    HSelectionList list;
    list.add("body.vtx[2:4]");
    list.add(fixture::pathOf(mesh.joints[0]));
    HGlobal::setActiveSelectionList(list);
    EXPECT_EQ(selection->text().toStdString(), "Selected: bodyShape.vtx[2:4] |bodyJoint1");
    for (const char* more : {"bodyJoint2", "bodyJoint3", "body"})
        list.add(more);
    list.add("body.vtx[9]");
    HGlobal::setActiveSelectionList(list);
    EXPECT_EQ(selection->text().toStdString(),
              "Selected: bodyShape.vtx[2:4] bodyShape.vtx[9] |bodyJoint1 |bodyJoint1|bodyJoint2 "
              "and 2 more");
}

TEST_F(ApplicationWindowTest, TakesEveryDecorationOffAgain) {
    QMainWindow& host = mainWindow();
    QStatusBar* bar = host.statusBar();
    destroyWindow();
    EXPECT_TRUE(host.menuBar()->actions().isEmpty());
    EXPECT_TRUE(host.findChildren<QDockWidget*>().isEmpty());
    EXPECT_EQ(host.centralWidget(), nullptr);
    EXPECT_TRUE(bar->findChildren<QLabel*>("selectionSummary").isEmpty());
    EXPECT_EQ(host.windowTitle(), "vorel-host");
    // Nothing listens any more.
    HGlobal::displayWarning("nobody hears this");
    scene().createNode("joint");
}

TEST_F(ApplicationWindowTest, PictureShowsOtherWindowsOverTheMainWindow) {
    mainWindow().show();
    QWidget other(&mainWindow(), Qt::Window);
    other.setAutoFillBackground(true);
    QPalette colours = other.palette();
    colours.setColor(QPalette::Window, QColor(255, 0, 255));
    other.setPalette(colours);
    QRect main = mainWindow().geometry();
    other.setGeometry(main.right() - 100, main.bottom() - 50, 300, 200);
    other.show();

    QImage picture = app::takeScreenshot(mainWindow());
    EXPECT_EQ(picture.size(), main.united(other.geometry()).size());
    QPoint inOther = other.geometry().center() - main.topLeft();
    EXPECT_EQ(picture.pixelColor(inOther), QColor(255, 0, 255));
    QPoint inMainOnly = QPoint(10, main.height() / 2);
    EXPECT_NE(picture.pixelColor(inMainOnly), QColor(255, 0, 255));
    // Where neither window is, the picture stays dark.
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, 0), QColor(0x30, 0x30, 0x30));

    HStatus unwritable = app::saveScreenshot(mainWindow(), "/nonexistent/folder/picture.png");
    EXPECT_FALSE(static_cast<bool>(unwritable));
    EXPECT_STREQ(unwritable.errorString().asChar(),
                 "Cannot write the picture /nonexistent/folder/picture.png");
}

} // namespace
