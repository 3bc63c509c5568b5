#include "OutputRecorder.h"
#include "core/ProgressMonitor.h"
#include "document/SceneDocument.h"
#include "documentTesting.h"
#include "scene/Scene.h"
#include "undo/UndoQueue.h"

#include <QDir>

using namespace documenttest;

namespace {

// The application's progress display as the user sees it: the titles of the work shown, and a
// Cancel pressed at the first report of one stage.
class CancellingDisplay : public runtime::ProgressDisplay {
public:
    void begin(const HString& title) override { titles.push_back(title.str()); }
    bool update(double, const HString& stage) override {
        m_reached = m_reached || stage.str() == stopAt;
        return !m_reached;
    }
    void end() override { m_reached = false; }

    std::string stopAt;
    Texts titles;

private:
    bool m_reached = false;
};

// The file command's work on files cancelled at each of its stages: the scene, its selection,
// its undo queue, its name and the files on disk stay as they were, and the command fails
// saying so.
class CancelledFileWork : public DocumentTest {
protected:
    void SetUp() override {
        DocumentTest::SetUp();
        makeLegScene();
        for (const char* name : {"leg.vscene", "leg.glb"})
            ASSERT_TRUE(run("file -ea \"" + path(name) + "\""));
        ASSERT_TRUE(run("file -rename \"" + path("open.vscene") +
                        "\"; select -r leg.vtx[2:4]; setAttr rig.tx 5"));
        m_before = fixture::sceneState();
        m_undoable = undoCount();
        monitor().setDisplay(&m_display);
    }
    void TearDown() override { monitor().setDisplay(nullptr); }
    static runtime::ProgressMonitor& monitor() {
        return runtime::host().get<runtime::ProgressMonitor>();
    }
    static unsigned undoCount() { return runtime::host().get<runtime::UndoQueue>().undoCount(); }
    // Runs the command with Cancel pressed at the stage; gives the errors it printed.
    Texts cancelled(const std::string& command, const std::string& stage) {
        m_display.stopAt = stage;
        OutputRecorder output;
        EXPECT_FALSE(run(command)) << command;
        return output.texts(HCommandMessage::kError);
    }
    void expectUnchanged() {
        const Texts after = fixture::sceneState();
        EXPECT_TRUE(after == m_before) << fixture::differences(after, m_before);
        EXPECT_EQ(undoCount(), m_undoable);
        EXPECT_TRUE(runtime::scene().isModified());
    }

    CancellingDisplay m_display;
    Texts m_before;
    unsigned m_undoable = 0;
};

TEST_F(CancelledFileWork, OpenAndImportLeaveTheSceneAsItWas) {
    const std::pair<const char*, Texts> files[] = {
        {"leg.vscene", {"Reading the scene's text", "Building the scene"}},
        {"leg.glb", {"Reading the document", "Reading skin weights", "Binding skins"}},
    };
    for (const auto& [name, stages] : files) {
        const std::string file = path(name);
        const Texts message = {"Reading \"" + file + "\" was cancelled."};
        for (const std::string& stage : stages) {
            SCOPED_TRACE(std::string(name) + " at " + stage);
            EXPECT_EQ(cancelled("file -f -o \"" + file + "\"", stage), message);
            expectUnchanged();
            EXPECT_EQ(runtime::sceneDocument().name(), path("open.vscene"));
            EXPECT_EQ(cancelled("file -i \"" + file + "\"", stage), message);
            expectUnchanged();
        }
        EXPECT_EQ(m_display.titles.back(), "Importing " + std::string(name));
    }
}

// Stopped while the new file is written, or once it is written but not yet renamed over the
// old one: the old file stays, and no temporary file is left beside it.
TEST_F(CancelledFileWork, SaveStoppedBeforeTheRenameLeavesThePreviousFile) {
    for (const char* name : {"leg.vscene", "leg.glb"}) {
        const std::string file = path(name);
        const std::string previous = readText(file);
        ASSERT_TRUE(run("file -rename \"" + file + "\""));
        for (const char* stage : {"Writing the file", "Replacing the file"}) {
            SCOPED_TRACE(std::string(name) + " at " + stage);
            EXPECT_EQ(
                cancelled("file -save", stage),
                Texts{"Writing \"" + file + "\" was cancelled; the file was left as it was."});
            EXPECT_EQ(readText(file), previous);
            expectUnchanged();
        }
        EXPECT_EQ(m_display.titles.back(), "Saving " + std::string(name));
    }
    EXPECT_EQ(QDir(QString::fromStdString(path(""))).entryList(QDir::Files | QDir::Hidden),
              (QStringList{"leg.glb", "leg.vscene"}));
}

} // namespace
