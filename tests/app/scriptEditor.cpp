#include "ScriptEditor.h"

#include "CommandHistory.h"
#include "HPxCommand.h"
#include "ScopedCommand.h"
#include "ScriptInput.h"
#include "ScriptOutputPane.h"
#include "core/ScriptOutput.h"
#include "lang/BuiltInCommand.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "windowFixture.h"

#include <QTest>
#include <QTextBlock>
#include <gtest/gtest.h>
#include <set>

namespace {

int g_counter = 0;

// answer: gives 42.
class AnswerCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        setResult(42);
        return HS::kSuccess;
    }
};

// bump: adds one to the counter; undoable.
class BumpCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override { return redoIt(); }
    HStatus redoIt() override {
        ++g_counter;
        return HS::kSuccess;
    }
    HStatus undoIt() override {
        --g_counter;
        return HS::kSuccess;
    }
    bool isUndoable() const override { return true; }
};

class ScriptEditorTest : public appfixture::WindowTest {
protected:
    app::ScriptInput& input() const { return *window().scriptEditor()->input(); }
    QStringList output() const { return appfixture::linesOf(*window().scriptEditor()->output()); }
    void type(const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClicks(&input(), text);
        QTest::keyClick(&input(), Qt::Key_Return, modifiers);
    }
};

TEST_F(ScriptEditorTest, EnterRunsTheTypedLineAndShowsItsResult) {
    ScopedCommand answer("answer", runtime::createCommand<AnswerCommand>);
    type("answer");
    EXPECT_EQ(output(), (QStringList{"answer", "// Result: 42"}));
    EXPECT_TRUE(input().toPlainText().isEmpty());
}

TEST_F(ScriptEditorTest, CtrlEnterRunsEveryLineEnterOnlyTheCursorLine) {
    QTest::keyClicks(&input(), "print a");
    QTest::keyClick(&input(), Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(&input(), "print b");
    QTest::keyClick(&input(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(output(), (QStringList{"print a", "a", "print b", "b"}));
    EXPECT_TRUE(input().toPlainText().isEmpty());

    input().setPlainText("print c\nprint d");
    input().moveCursor(QTextCursor::Start);
    QTest::keyClick(&input(), Qt::Key_Return);
    EXPECT_EQ(output().mid(4), (QStringList{"print c", "c"}));
    EXPECT_EQ(input().toPlainText(), "print d");
}

TEST_F(ScriptEditorTest, TypedStatementsAreRecordedForUndo) {
    ScopedCommand bump("bump", runtime::createCommand<BumpCommand>);
    g_counter = 0;
    type("bump; bump");
    EXPECT_EQ(g_counter, 2);
    type("undo");
    EXPECT_EQ(g_counter, 1);
    EXPECT_EQ(output(), (QStringList{"bump", "bump", "undo"}));
}

TEST_F(ScriptEditorTest, PipelineWeightEditsShowTheirCountAndUndoInOneStep) {
    type("joint -n a -p -1 0 0; select -cl; joint -n b -p 1 0 0; select -cl; "
         "polyPlane -n body -w 4 -h 1 -sx 4 -sy 1; skinCluster -n c1 a b body");
    const runtime::SkinWeights& weights = runtime::scene().findNode("c1")->skinCluster()->weights();
    const runtime::SkinWeights bound = weights;
    type("skinWeights -limit 1");
    EXPECT_EQ(output().mid(output().size() - 2),
              (QStringList{"skinWeights -limit 1", "// Result: 10"}));
    for (unsigned v = 0; v < weights.vertexCount(); ++v)
        EXPECT_EQ(weights.entryCount(v), 1u) << "vertex " << v;
    type("undo");
    EXPECT_TRUE(weights == bound);
    type("skinWeights -mirror z -tolerance -1");
    EXPECT_EQ(output().last(), "// Error: skinWeights: -tolerance needs 0 or more.");
}

TEST_F(ScriptEditorTest, AFailingStatementStopsTheLineAndShowsTheError) {
    type("print one; nothere 1; print two");
    EXPECT_EQ(output(), (QStringList{"print one", "one", "nothere 1",
                                     "// Error: Cannot find procedure \"nothere\"."}));
}

TEST_F(ScriptEditorTest, EachMessageKindHasItsOwnColour) {
    runtime::ScriptOutput& scriptOutput = runtime::host().get<runtime::ScriptOutput>();
    const HCommandMessage::MessageType kinds[] = {
        HCommandMessage::kHistory, HCommandMessage::kInfo, HCommandMessage::kWarning,
        HCommandMessage::kError, HCommandMessage::kResult};
    for (HCommandMessage::MessageType kind : kinds)
        scriptOutput.write("text", kind);
    ASSERT_EQ(output(), (QStringList{"text", "text", "// Warning: text", "// Error: text",
                                     "// Result: text"}));
    std::set<QRgb> colours;
    QTextBlock block = window().scriptEditor()->output()->document()->begin();
    for (HCommandMessage::MessageType kind : kinds) {
        QTextCursor cursor(block);
        cursor.movePosition(QTextCursor::EndOfBlock);
        QColor shown = cursor.charFormat().foreground().color();
        EXPECT_EQ(shown, app::ScriptOutputPane::colourOf(kind)) << "kind " << kind;
        colours.insert(shown.rgb());
        block = block.next();
    }
    EXPECT_EQ(colours.size(), 5u);
}

TEST_F(ScriptEditorTest, UpAndDownBrowseWhatWasRunAndKeepTheDraft) {
    type("print 1");
    type("print 2");
    QTest::keyClicks(&input(), "pri");
    QTest::keyClick(&input(), Qt::Key_Up);
    EXPECT_EQ(input().toPlainText(), "print 2");
    QTest::keyClick(&input(), Qt::Key_Up);
    QTest::keyClick(&input(), Qt::Key_Up);
    EXPECT_EQ(input().toPlainText(), "print 1");
    QTest::keyClick(&input(), Qt::Key_Down);
    EXPECT_EQ(input().toPlainText(), "print 2");
    QTest::keyClick(&input(), Qt::Key_Down);
    EXPECT_EQ(input().toPlainText(), "pri");
    // Enter runs what was recalled.
    QTest::keyClick(&input(), Qt::Key_Up);
    QTest::keyClick(&input(), Qt::Key_Return);
    EXPECT_EQ(output().mid(4), (QStringList{"print 2", "2"}));
}

TEST(CommandHistory, SkipsEmptyTextsAndRepeatsAndForgetsTheOldest) {
    app::CommandHistory history;
    history.add("a");
    history.add("  ");
    history.add("a");
    history.add("b");
    EXPECT_EQ(history.entries(), (QStringList{"a", "b"}));
    QString text = "unchanged";
    EXPECT_FALSE(history.forward(text));
    EXPECT_EQ(text, "unchanged");

    for (int i = 0; i < app::CommandHistory::kLimit; ++i)
        history.add(QString::number(i));
    EXPECT_EQ(history.entries().size(), app::CommandHistory::kLimit);
    EXPECT_EQ(history.entries().first(), "0");
    ASSERT_TRUE(history.back("draft", text));
    EXPECT_EQ(text, QString::number(app::CommandHistory::kLimit - 1));
}

} // namespace
