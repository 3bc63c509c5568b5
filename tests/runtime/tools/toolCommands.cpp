// The tool commands as a script uses them: which context is current, the skin paint tool's
// set-up commands, its settings with their queries, and the exact error of every refused
// value, which changes nothing. Tool changes are never recorded for undo.
#include "HGlobal.h"
#include "OutputRecorder.h"
#include "sceneFixture.h"
#include "tools/ToolContexts.h"
#include "undo/UndoQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::StartsWith;

namespace {

runtime::UndoQueue& undoQueue() {
    return runtime::host().get<runtime::UndoQueue>();
}

std::string stringResult(const char* command) {
    HString result;
    EXPECT_TRUE(HGlobal::executeCommand(command, result)) << command;
    return result.str();
}

class ToolCommands : public fixture::FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        runtime::ToolContexts& tools = runtime::toolContexts();
        tools.setCurrent(runtime::ToolContexts::kSelectContext);
        tools.skinPaint() = runtime::SkinPaintSettings();
        undoQueue().flush();
    }

    // Runs a failing statement with undo on and gives the errors it printed.
    static std::vector<std::string> errorsOf(const std::string& statement) {
        OutputRecorder output;
        EXPECT_FALSE(HGlobal::executeCommand(statement.c_str(), false, true)) << statement;
        return output.texts(HCommandMessage::kError);
    }
};

TEST_F(ToolCommands, SelectionToolIsTheDefaultAndSetToolToSwitchesByEitherName) {
    EXPECT_STREQ(runtime::ToolContexts().current().asChar(), "selectSuperContext");
    EXPECT_EQ(stringResult("currentCtx"), "selectSuperContext");

    ASSERT_TRUE(HGlobal::executeCommand("PntPaintSkinWeightsTool", false, true));
    EXPECT_EQ(stringResult("currentCtx"), "pntAttrSkinContext");
    ASSERT_TRUE(HGlobal::executeCommand("setToolTo selectSuperContext;\n", false, true));
    EXPECT_EQ(stringResult("currentCtx"), "selectSuperContext");
    ASSERT_TRUE(HGlobal::executeCommand("setToolTo pntAttrSkinPaintCtx", false, true));
    EXPECT_EQ(stringResult("currentCtx"), "pntAttrSkinContext");

    EXPECT_THAT(errorsOf("setToolTo moveSuperContext"),
                ElementsAre("setToolTo: No tool context named \"moveSuperContext\"."));
    EXPECT_THAT(errorsOf("setToolTo"),
                ElementsAre("setToolTo: Give the name of one tool context."));
    EXPECT_EQ(stringResult("currentCtx"), "pntAttrSkinContext");
    EXPECT_EQ(undoQueue().undoCount(), 0u) << "switching tools is not an edit";
}

TEST_F(ToolCommands, SkinPaintSetUpCommandsMakeTheToolReady) {
    ASSERT_TRUE(HGlobal::executeCommand("pntAttrSkinToolScript 4;\n"
                                        "pntAttrSkinJointMenu(\"pntJoinListPopupMenu\", "
                                        "\"pntAttrSkinPaintCtx\" );\n"));
    EXPECT_EQ(stringResult("currentCtx"), "pntAttrSkinContext");
    EXPECT_TRUE(runtime::toolContexts().skinPaintReady());

    EXPECT_THAT(errorsOf("pntAttrSkinToolScript"),
                ElementsAre("pntAttrSkinToolScript: Give one set-up number."));
    EXPECT_THAT(errorsOf("pntAttrSkinToolScript four"),
                ElementsAre(StartsWith("pntAttrSkinToolScript: Argument 1 needs an integer")));
    EXPECT_THAT(errorsOf("pntAttrSkinJointMenu(\"menu\", \"selectSuperContext\")"),
                ElementsAre("pntAttrSkinJointMenu: \"selectSuperContext\" is not the skin paint "
                            "context (pntAttrSkinContext)."));
    EXPECT_THAT(errorsOf("pntAttrSkinJointMenu(\"menu\")"),
                ElementsAre("pntAttrSkinJointMenu: Give a menu name and the skin paint context."));
}

TEST_F(ToolCommands, PaintSettingsAreSetAndQueriedThroughEitherContextName) {
    fixture::makeSkinnedMesh();
    ASSERT_TRUE(
        HGlobal::executeCommand("PntPaintSkinWeightsTool;\n"
                                "pntAttrPaintOperation pntAttrSkinPaintCtx Smooth;\n"
                                "pntAttrSkinPaintCtx -e -skinPaintMode 1 pntAttrSkinContext;\n"
                                "pntSkinSelectInfluence pntAttrSkinPaintCtx bodyJoint2;\n"
                                "pntAttrSkinPaintCtx -e -opacity 0.25 `currentCtx`;\n",
                                false, true));
    EXPECT_EQ(runtime::toolContexts().skinPaint().operation, runtime::PaintOperation::kSmooth);
    EXPECT_EQ(stringResult("pntAttrSkinPaintCtx -q -influence `currentCtx`"), "bodyJoint2");
    double opacity = 0.0;
    EXPECT_TRUE(HGlobal::executeCommand("pntAttrSkinPaintCtx -q -op pntAttrSkinPaintCtx", opacity));
    EXPECT_EQ(opacity, 0.25);

    ASSERT_TRUE(HGlobal::executeCommand("pntAttrSkinPaintCtx -e -spm 0 pntAttrSkinContext"));
    int mode = -1;
    EXPECT_TRUE(
        HGlobal::executeCommand("pntAttrSkinPaintCtx -q -skinPaintMode pntAttrSkinContext", mode));
    EXPECT_EQ(mode, 0);
    EXPECT_FALSE(runtime::toolContexts().skinPaintReady()) << "picking vertices, not painting";
    EXPECT_EQ(undoQueue().undoCount(), 0u) << "settings are not edits";
}

TEST_F(ToolCommands, RefusedValuesAreNamedAndChangeNothing) {
    fixture::makeSkinnedMesh();
    const std::vector<std::pair<std::string, std::string>> refusals = {
        {"pntAttrPaintOperation pntAttrSkinPaintCtx Blur",
         "pntAttrPaintOperation: Unknown paint operation \"Blur\"; use Replace, Add, Scale or "
         "Smooth."},
        {"pntAttrPaintOperation selectSuperContext Smooth",
         "pntAttrPaintOperation: \"selectSuperContext\" is not the skin paint context "
         "(pntAttrSkinContext)."},
        {"pntSkinSelectInfluence pntAttrSkinPaintCtx nobody",
         "No object matches name: nobody"},
        {"pntSkinSelectInfluence pntAttrSkinPaintCtx skinCluster1",
         "pntSkinSelectInfluence: \"skinCluster1\" is not a joint."},
        {"pntAttrSkinPaintCtx -e -opacity 1.5 pntAttrSkinContext",
         "pntAttrSkinPaintCtx: -opacity takes a value from 0 to 1."},
        {"pntAttrSkinPaintCtx -e -opacity 0.5 -skinPaintMode 2 pntAttrSkinContext",
         "pntAttrSkinPaintCtx: -skinPaintMode takes 0 (pick vertices) or 1 (paint weights)."},
        {"pntAttrSkinPaintCtx -e -opacity 0.5",
         "pntAttrSkinPaintCtx: Give the context to change or read (pntAttrSkinContext)."},
        {"pntAttrSkinPaintCtx -e -opacity 0.5 selectSuperContext",
         "pntAttrSkinPaintCtx: \"selectSuperContext\" is not the skin paint context "
         "(pntAttrSkinContext)."},
        {"pntAttrSkinPaintCtx -opacity 0.5 pntAttrSkinContext",
         "pntAttrSkinPaintCtx: Use -e to change or -q to read the skin paint context."},
        {"pntAttrSkinPaintCtx -q -clear pntAttrSkinContext",
         "pntAttrSkinPaintCtx: -clear paints; it has no value to query."},
        {"pntAttrSkinPaintCtx -q -opacity -skinPaintMode pntAttrSkinContext",
         "pntAttrSkinPaintCtx: Query one of -skinPaintMode, -opacity or -influence."},
        {"pntAttrSkinPaintCtx -e -influence pntAttrSkinContext",
         "pntAttrSkinPaintCtx: -influence can only be queried; select the influence with "
         "pntSkinSelectInfluence."},
    };
    for (const auto& refusal : refusals)
        EXPECT_THAT(errorsOf(refusal.first), ElementsAre(refusal.second));

    const runtime::SkinPaintSettings& settings = runtime::toolContexts().skinPaint();
    EXPECT_EQ(settings.operation, runtime::PaintOperation::kReplace);
    EXPECT_EQ(settings.opacity, 1.0);
    EXPECT_EQ(settings.paintMode, 1);
    EXPECT_EQ(settings.liveInfluence(), nullptr);
}

} // namespace
