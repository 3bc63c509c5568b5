// The life of a plug-in's command objects: run with undo on, a command and the commands its
// doIt runs make one undo step; the host keeps the objects in the undo queue and deletes each
// exactly once when the plug-in unloads, leaving other commands' entries alone; and a query or
// edit flag on a command that disables them is refused before any object runs.
#include "HGlobal.h"
#include "OutputRecorder.h"
#include "ScopedCommand.h"
#include "lang/BuiltInCommand.h"
#include "scene/NodeValues.h"
#include "sceneFixture.h"
#include "undo/UndoQueue.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string kPlugin = std::string(TEST_PLUGIN_DIR) + "/sampleCommands.so";

runtime::UndoQueue& undoQueue() {
    return runtime::host().get<runtime::UndoQueue>();
}

// An undoable command of the test itself, whose entries must survive the plug-in's unload.
class MarkCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return HS::kSuccess; }
    HStatus undoIt() override { return HS::kSuccess; }
    HStatus redoIt() override { return HS::kSuccess; }
    bool isUndoable() const override { return true; }
};

class PluginCommandLife : public fixture::FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        undoQueue().flush();
        m_box = scene().createNode("transform", "box");
        ASSERT_TRUE(HGlobal::executeCommand(("loadPlugin " + kPlugin).c_str()));
    }
    void TearDown() override {
        undoQueue().flush();
        HGlobal::executeCommand("unloadPlugin sampleCommands");
    }

    void expectBoxAt(double x, double y) const {
        EXPECT_EQ(runtime::doubleValue(*m_box, "translateX", -1.0), x);
        EXPECT_EQ(runtime::doubleValue(*m_box, "translateY", -1.0), y);
    }

    static int count(const std::vector<std::string>& lines, const std::string& text) {
        return static_cast<int>(std::count(lines.begin(), lines.end(), text));
    }

    runtime::NodePtr m_box;
};

TEST_F(PluginCommandLife, OneUndoRevertsTheCommandAndWhatItsDoItRan) {
    ASSERT_TRUE(HGlobal::executeCommand("sampleNest box 2.5", false, true));
    expectBoxAt(2.5, 2.5);
    EXPECT_EQ(undoQueue().undoCount(), 1u);
    ASSERT_TRUE(HGlobal::executeCommand("undo"));
    expectBoxAt(0.0, 0.0);

    // Redo runs the nested store again from redoIt, unrecorded: still one entry.
    ASSERT_TRUE(HGlobal::executeCommand("redo"));
    expectBoxAt(2.5, 2.5);
    EXPECT_EQ(undoQueue().undoCount(), 1u);
    ASSERT_TRUE(HGlobal::executeCommand("undo"));
    expectBoxAt(0.0, 0.0);
}

TEST_F(PluginCommandLife, UnloadDeletesEveryKeptObjectOnceAndKeepsOtherEntries) {
    ScopedCommand mark("testMark", runtime::createCommand<MarkCommand>);
    ASSERT_TRUE(HGlobal::executeCommand("testMark", false, true));
    for (const char* value : {"1", "2", "3"})
        ASSERT_TRUE(
            HGlobal::executeCommand(HString("sampleStore box.translateZ ") + value, false, true));
    ASSERT_TRUE(HGlobal::executeCommand("sampleNest box 4", false, true));
    ASSERT_TRUE(HGlobal::executeCommand("undo"));
    EXPECT_EQ(undoQueue().undoCount(), 4u);
    EXPECT_EQ(undoQueue().redoCount(), 1u);

    OutputRecorder output;
    ASSERT_TRUE(HGlobal::executeCommand("unloadPlugin sampleCommands"));
    std::vector<std::string> info = output.texts(HCommandMessage::kInfo);
    // Three stores, the nest and the store it ran (also the one waiting for redo).
    EXPECT_EQ(count(info, "sampleStore deleted"), 4);
    EXPECT_EQ(count(info, "sampleNest deleted"), 1);
    ASSERT_FALSE(info.empty());
    EXPECT_EQ(info.back(), "sampleCommands uninitialized") << "objects go before the plug-in stops";
    EXPECT_EQ(undoQueue().undoCount(), 1u) << "the test's own entry stays";
    EXPECT_EQ(undoQueue().redoCount(), 0u);
    EXPECT_EQ(undoQueue().undoName().str(), "testMark");

    output.clear();
    undoQueue().flush();
    EXPECT_THAT(output.texts(HCommandMessage::kInfo), IsEmpty()) << "nothing is deleted twice";
}

TEST_F(PluginCommandLife, DisabledQueryAndEditAreRefusedWithoutRunningDoIt) {
    OutputRecorder output;
    EXPECT_FALSE(HGlobal::executeCommand("sampleGuarded -q"));
    EXPECT_FALSE(HGlobal::executeCommand("sampleGuarded -e -v"));
    EXPECT_FALSE(HGlobal::executeCommand("sampleGuarded -query -verbose"));
    EXPECT_THAT(output.texts(HCommandMessage::kError),
                ElementsAre("sampleGuarded: Invalid flag: -q", "sampleGuarded: Invalid flag: -e",
                            "sampleGuarded: Invalid flag: -query"));
    EXPECT_THAT(output.texts(HCommandMessage::kInfo), IsEmpty());

    EXPECT_TRUE(HGlobal::executeCommand("sampleGuarded -v"));
    EXPECT_THAT(output.texts(HCommandMessage::kInfo), ElementsAre("sampleGuarded ran"));
}

} // namespace
