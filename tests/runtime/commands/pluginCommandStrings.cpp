// The command texts the Vorel plug-in runs, character for character, against the real
// commands: its influence and vertex locks, the selection state its paint smoothing keeps and
// puts back, and its smoothing text run from inside an edit command, which one undo reverts.
#include "HPxCommand.h"
#include "ScopedCommand.h"
#include "commandTesting.h"
#include "lang/BuiltInCommand.h"

using commandtest::run;
using commandtest::selectionTexts;
using commandtest::Texts;

namespace {

const auto& kStart = commandtest::kStripStart;

HString g_smoothingText;

// Runs the prepared smoothing text as the plug-in's edit command does: in doIt with undo on,
// so that what it changes belongs to this command's undo entry; redo runs it again.
class EditCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return redoIt(); }
    HStatus redoIt() override { return HGlobal::executeCommand(g_smoothingText, false, true); }
    HStatus undoIt() override { return HS::kSuccess; }
    bool isUndoable() const override { return true; }
};

class PluginCommandStrings : public commandtest::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        commandtest::makeWeightedStrip(kStart);
        ASSERT_TRUE(run("select -r a; joint -n spine1 -p 0 1 0; select -cl"));
    }

    int intResult(const HString& command) {
        int value = -1;
        EXPECT_TRUE(HGlobal::executeCommand(command, value)) << command.asChar();
        return value;
    }
};

} // namespace

TEST_F(PluginCommandStrings, InfluenceLocksAreAskedSetAndUndone) {
    HString path = "|a|spine1";
    EXPECT_EQ(intResult("getAttr " + path + ".lockInfluenceWeights"), 0);
    ASSERT_TRUE(
        HGlobal::executeCommand("setAttr " + path + ".lockInfluenceWeights 1", false, true));
    EXPECT_EQ(intResult("getAttr " + path + ".lockInfluenceWeights"), 1);
    ASSERT_TRUE(
        HGlobal::executeCommand("setAttr " + path + ".lockInfluenceWeights 0", false, true));
    EXPECT_EQ(intResult("getAttr " + path + ".lockInfluenceWeights"), 0);
    ASSERT_TRUE(run("undo", false));
    EXPECT_EQ(intResult("getAttr " + path + ".lockInfluenceWeights"), 1);
    ASSERT_TRUE(run("undo", false));
    EXPECT_EQ(intResult("getAttr " + path + ".lockInfluenceWeights"), 0);
}

TEST_F(PluginCommandStrings, VertexLocksAreAskedAndSet) {
    HString cluster = "cluster1";
    HString n = HString().set(4.0);
    EXPECT_EQ(intResult("getAttr " + cluster + ".lockVertex[" + n + "]"), 0);
    ASSERT_TRUE(HGlobal::executeCommand("setAttr " + cluster + ".lockVertex[" + n + "]" + " 1",
                                        false, true));
    EXPECT_EQ(intResult("getAttr " + cluster + ".lockVertex[" + n + "]"), 1);
}

TEST_F(PluginCommandStrings, PaintSmoothingPutsTheSelectionStateBack) {
    ASSERT_TRUE(run("selectType -ocm -alc true; select -r body.vtx[0] b"));
    unsigned recorded = runtime::host().get<runtime::UndoQueue>().undoCount();
    Texts selected = selectionTexts();
    int allComponents = intResult("selectType -q -ocm -alc");
    int vertex = intResult("selectType -q -ocm -vertex");
    HSelectionList kept;
    HGlobal::getActiveSelectionList(kept);

    HString script = "selectType -ocm -alc false;\n";
    script += "selectType -ocm -vertex true;\n";
    script += "select -r ";
    for (const char* row : {"vtx[3]", "vtx[5]"})
        script += HString("body.") + row + " ";
    script += ";\n";
    ASSERT_TRUE(HGlobal::executeCommand(script, false, false));
    EXPECT_EQ(selectionTexts(), (Texts{"bodyShape.vtx[3]", "bodyShape.vtx[5]"}));
    EXPECT_FALSE(runtime::selection().allComponents());

    HString restore = "selectType -ocm -alc " + HString().set(double(allComponents)) + ";\n" +
                      "selectType -ocm -vertex " + HString().set(double(vertex)) + ";\n";
    ASSERT_TRUE(HGlobal::executeCommand(restore, false, false));
    HGlobal::setActiveSelectionList(kept);
    EXPECT_TRUE(runtime::selection().allComponents());
    EXPECT_TRUE(runtime::selection().vertices());
    EXPECT_EQ(selectionTexts(), selected);
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), recorded);
}

TEST_F(PluginCommandStrings, SmoothingFromAnEditCommandIsOneUndoStep) {
    ScopedCommand edit("editCmd", runtime::createCommand<EditCommand>);
    g_smoothingText = "select -r body.vtx[1] body.vtx[4] ;skinCluster -e -sw " +
                      HString().set(0.01) + " -swi " + HString().set(2.0) + " -omi 1 cluster1;";
    ASSERT_TRUE(run("select -r b"));
    Texts before = commandtest::sceneState();
    ASSERT_TRUE(HGlobal::executeCommand("editCmd", true, true));
    commandtest::expectStripWeights(1, {4.1 / 9, 4.0 / 9, 0.9 / 9});
    Texts after = commandtest::sceneState();

    ASSERT_TRUE(run("undo", false));
    EXPECT_EQ(commandtest::sceneState(), before);
    EXPECT_EQ(selectionTexts(), (Texts{"|b"}));
    ASSERT_TRUE(run("redo", false));
    EXPECT_EQ(commandtest::sceneState(), after);
    ASSERT_TRUE(run("undo", false));
    EXPECT_EQ(commandtest::sceneState(), before);
}
