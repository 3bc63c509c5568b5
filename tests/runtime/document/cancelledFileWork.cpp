#include "document/SceneDocument.h"
#include "documentTesting.h"
#include "scene/Scene.h"
#include "undo/UndoQueue.h"

#include <QDir>

using namespace documenttest;

namespace {

// Asks to stop at the first report of one stage, and remembers every stage it saw.
class StoppingReporter : public runtime::ProgressReporter {
public:
    explicit StoppingReporter(std::string stopAt) : m_stopAt(std::move(stopAt)) {}
    bool update(double, const std::string& stage) override {
        if (stages.empty() || stages.back() != stage)
            stages.push_back(stage);
        return stage != m_stopAt;
    }
    Texts stages;

private:
    std::string m_stopAt;
};

// Work on files stopped at each of its stages: the scene, its selection, its undo queue, its
// name and the files on disk stay as they were.
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
    }
    unsigned undoCount() const { return runtime::host().get<runtime::UndoQueue>().undoCount(); }
    void expectUnchanged() {
        const Texts after = fixture::sceneState();
        EXPECT_TRUE(after == m_before) << fixture::differences(after, m_before);
        EXPECT_EQ(undoCount(), m_undoable);
        EXPECT_EQ(runtime::sceneDocument().name(), path("open.vscene"));
        EXPECT_TRUE(runtime::scene().isModified());
    }

    Texts m_before;
    unsigned m_undoable = 0;
};

TEST_F(CancelledFileWork, OpenAndImportLeaveTheSceneAsItWas) {
    const std::pair<const char*, Texts> files[] = {
        {"leg.vscene", {"Reading the scene's text", "Building the scene"}},
        {"leg.glb", {"Reading the document", "Reading skin weights", "Binding skins"}},
    };
    runtime::SceneDocument& document = runtime::sceneDocument();
    for (const auto& [name, stages] : files) {
        for (const std::string& stage : stages) {
            SCOPED_TRACE(std::string(name) + " at " + stage);
            const std::string file = path(name);
            StoppingReporter opening(stage);
            const runtime::FileResult opened = document.open(file, opening);
            EXPECT_EQ(opened.outcome, runtime::FileResult::Outcome::kCancelled);
            EXPECT_EQ(opened.message, "Reading \"" + file + "\" was cancelled.");
            EXPECT_EQ(opening.stages.back(), stage);
            expectUnchanged();

            StoppingReporter importing(stage);
            std::vector<runtime::NodePtr> added;
            EXPECT_EQ(document.import(file, added, importing).outcome,
                      runtime::FileResult::Outcome::kCancelled);
            EXPECT_TRUE(added.empty());
            expectUnchanged();
        }
    }
}

TEST_F(CancelledFileWork, SaveStoppedBeforeTheRenameLeavesThePreviousFile) {
    runtime::SceneDocument& document = runtime::sceneDocument();
    for (const char* name : {"leg.vscene", "leg.glb"}) {
        SCOPED_TRACE(name);
        const std::string file = path(name);
        const std::string previous = readText(file);
        document.rename(file);
        for (const char* stage : {"Writing the file", "Replacing the file"}) {
            StoppingReporter saving(stage);
            const runtime::FileResult saved = document.save(saving);
            EXPECT_EQ(saved.outcome, runtime::FileResult::Outcome::kCancelled) << stage;
            EXPECT_EQ(saved.message,
                      "Writing \"" + file + "\" was cancelled; the file was left as it was.");
            EXPECT_EQ(readText(file), previous) << stage;
            EXPECT_TRUE(runtime::scene().isModified());
        }
    }
    EXPECT_EQ(QDir(QString::fromStdString(path(""))).entryList(QDir::Files | QDir::Hidden),
              (QStringList{"leg.glb", "leg.vscene"}));
}

} // namespace
