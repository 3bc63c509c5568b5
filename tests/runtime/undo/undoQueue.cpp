#include "undo/UndoQueue.h"

#include "HEventMessage.h"
#include "HGlobal.h"
#include "HMessage.h"
#include "HPxCommand.h"
#include "OutputRecorder.h"
#include "ScopedCommand.h"
#include "lang/BuiltInCommand.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

// What the test commands change, and what happened to them.
struct World {
    int value = 0;
    int outer = 0;
    Lines log;
    int created = 0;
    int deleted = 0;
    // Whether the plug-in of a command counted as running while its undoIt ran.
    bool ownerRunningInUndo = false;
};
World g_world;

class Counted : public HPxCommand {
public:
    Counted() { ++g_world.created; }
    ~Counted() override { ++g_world.deleted; }
};

// testSet N: sets the value to N; undoable.
class SetCommand : public Counted {
public:
    HStatus doIt(const HArgList& args) override {
        m_new = args.asInt(0);
        m_old = g_world.value;
        return redoIt();
    }
    HStatus undoIt() override {
        g_world.log.push_back("undo set " + std::to_string(m_new));
        g_world.ownerRunningInUndo =
            runtime::host().get<runtime::CommandRegistry>().isRunning(ScopedCommand::kTestOwner);
        g_world.value = m_old;
        return HS::kSuccess;
    }
    HStatus redoIt() override {
        g_world.log.push_back("set " + std::to_string(m_new));
        g_world.value = m_new;
        return HS::kSuccess;
    }
    bool isUndoable() const override { return true; }

private:
    int m_old = 0, m_new = 0;
};

// testOuter N: sets outer to N and runs "testSet N" with undo on, in doIt and in redoIt.
class OuterCommand : public Counted {
public:
    HStatus doIt(const HArgList& args) override {
        m_new = args.asInt(0);
        m_old = g_world.outer;
        return redoIt();
    }
    HStatus undoIt() override {
        g_world.log.push_back("undo outer");
        g_world.outer = m_old;
        return HS::kSuccess;
    }
    HStatus redoIt() override {
        g_world.log.push_back("outer");
        g_world.outer = m_new;
        return HGlobal::executeCommand("testSet " + HString().set(double(m_new)), false, true);
    }
    bool isUndoable() const override { return true; }

private:
    int m_old = 0, m_new = 0;
};

// testScript A B: not undoable itself; runs two recorded commands.
class ScriptCommand : public Counted {
public:
    HStatus doIt(const HArgList& args) override {
        HGlobal::executeCommand("testSet " + args.asString(0), false, true);
        return HGlobal::executeCommand("testOuter " + args.asString(1), false, true);
    }
};

// testBroken N [keep]: runs "testSet N" recorded, then fails; undoable with "keep".
class BrokenCommand : public Counted {
public:
    HStatus doIt(const HArgList& args) override {
        m_keep = args.asString(1) == "keep";
        HGlobal::executeCommand("testSet " + args.asString(0), false, true);
        return HStatus(HS::kFailure, "half done");
    }
    HStatus undoIt() override {
        g_world.log.push_back("undo broken");
        return HS::kSuccess;
    }
    bool isUndoable() const override { return m_keep; }

private:
    bool m_keep = false;
};

void countEvent(void* counter) {
    ++*static_cast<int*>(counter);
}

runtime::UndoQueue& queue() {
    return runtime::host().get<runtime::UndoQueue>();
}

bool run(const char* text) {
    return static_cast<bool>(HGlobal::executeCommand(text, false, true));
}

class UndoQueueTest : public testing::Test {
protected:
    void SetUp() override {
        queue().flush();
        g_world = World();
    }
    void TearDown() override {
        queue().flush();
        EXPECT_EQ(g_world.created, g_world.deleted) << "every command object is deleted once";
    }

    ScopedCommand m_set{"testSet", runtime::createCommand<SetCommand>};
    ScopedCommand m_outer{"testOuter", runtime::createCommand<OuterCommand>};
    ScopedCommand m_script{"testScript", runtime::createCommand<ScriptCommand>};
    ScopedCommand m_broken{"testBroken", runtime::createCommand<BrokenCommand>};
    ScopedCommand m_otherSet{"otherSet", runtime::createCommand<SetCommand>, nullptr,
                             "otherPlugin"};
    OutputRecorder m_output;
};

} // namespace

TEST_F(UndoQueueTest, OnlyCommandsRunWithUndoOnAreRecorded) {
    ASSERT_TRUE(HGlobal::executeCommand("testSet 1"));
    EXPECT_EQ(queue().undoCount(), 0u);
    EXPECT_EQ(g_world.deleted, 1);
    ASSERT_TRUE(run("testSet 2; print done"));
    EXPECT_EQ(queue().undoCount(), 1u);
    EXPECT_EQ(g_world.deleted, 1);
}

TEST_F(UndoQueueTest, OneUndoRevertsACommandAndWhatItRan) {
    ASSERT_TRUE(run("testOuter 5"));
    EXPECT_EQ(g_world.value, 5);
    EXPECT_EQ(g_world.outer, 5);
    EXPECT_EQ(queue().undoCount(), 1u);
    EXPECT_STREQ(queue().undoName().asChar(), "testOuter 5");

    ASSERT_TRUE(run("undo"));
    EXPECT_EQ(g_world.value, 0);
    EXPECT_EQ(g_world.outer, 0);
    EXPECT_EQ(g_world.log, (Lines{"outer", "set 5", "undo set 5", "undo outer"}));
    EXPECT_TRUE(g_world.ownerRunningInUndo);
    EXPECT_FALSE(
        runtime::host().get<runtime::CommandRegistry>().isRunning(ScopedCommand::kTestOwner));
    EXPECT_EQ(queue().undoCount(), 0u);
    EXPECT_EQ(queue().redoCount(), 1u);
}

TEST_F(UndoQueueTest, RedoRunsTheCommandAgainAndKeepsItsFirstInnerRecords) {
    ASSERT_TRUE(run("testOuter 5; undo; redo"));
    EXPECT_EQ(g_world.value, 5);
    EXPECT_EQ(g_world.outer, 5);
    // The inner command ran again from redoIt and was deleted at once: not recorded twice.
    EXPECT_EQ(g_world.created - g_world.deleted, 2);
    g_world.log.clear();
    ASSERT_TRUE(run("undo"));
    EXPECT_EQ(g_world.log, (Lines{"undo set 5", "undo outer"}));
    EXPECT_EQ(g_world.value, 0);
    EXPECT_EQ(g_world.outer, 0);
}

TEST_F(UndoQueueTest, RecordsOfACommandThatIsNotKeptStayUndoable) {
    ASSERT_TRUE(run("testScript 3 4"));
    EXPECT_EQ(g_world.value, 4);
    EXPECT_EQ(queue().undoCount(), 1u);
    EXPECT_STREQ(queue().undoName().asChar(), "testScript 3 4");
    ASSERT_TRUE(run("undo"));
    EXPECT_EQ(g_world.value, 0);
    EXPECT_EQ(g_world.outer, 0);
    ASSERT_TRUE(run("redo"));
    EXPECT_EQ(g_world.value, 4);
    EXPECT_EQ(g_world.outer, 4);

    EXPECT_FALSE(run("testBroken 9"));
    EXPECT_EQ(queue().undoCount(), 2u);
    ASSERT_TRUE(run("undo"));
    EXPECT_EQ(g_world.value, 4);
}

TEST_F(UndoQueueTest, AnUndoableCommandIsKeptEvenWhenItFails) {
    // It may have changed things before it failed; its undoIt knows what.
    EXPECT_FALSE(run("testBroken 9 keep"));
    EXPECT_EQ(queue().undoCount(), 1u);
    EXPECT_EQ(m_output.texts(HCommandMessage::kError), (Lines{"testBroken: half done"}));
    g_world.log.clear();
    ASSERT_TRUE(run("undo"));
    EXPECT_EQ(g_world.log, (Lines{"undo set 9", "undo broken"}));
    EXPECT_EQ(g_world.value, 0);
}

TEST_F(UndoQueueTest, NothingToUndoOrRedoWarnsAndChangesNothing) {
    int undos = 0, redos = 0;
    HCallbackId onUndo = HEventMessage::addEventCallback("Undo", countEvent, &undos);
    HCallbackId onRedo = HEventMessage::addEventCallback("Redo", countEvent, &redos);
    EXPECT_TRUE(run("undo; redo"));
    ASSERT_TRUE(run("testSet 1; undo; redo; redo"));
    HMessage::removeCallback(onUndo);
    HMessage::removeCallback(onRedo);
    EXPECT_EQ(undos, 1);
    EXPECT_EQ(redos, 1);
    EXPECT_EQ(m_output.texts(HCommandMessage::kWarning),
              (Lines{"There are no more commands to undo.", "There are no more commands to redo.",
                     "There are no more commands to redo."}));
    EXPECT_EQ(g_world.value, 1);
}

TEST_F(UndoQueueTest, ANewEntryDiscardsWhatCouldBeRedone) {
    ASSERT_TRUE(run("testSet 1; testSet 2; undo"));
    EXPECT_EQ(queue().redoCount(), 1u);
    ASSERT_TRUE(run("testSet 3"));
    EXPECT_EQ(queue().redoCount(), 0u);
    EXPECT_EQ(g_world.created - g_world.deleted, 2);
    ASSERT_TRUE(run("undo; undo"));
    EXPECT_EQ(g_world.value, 0);
}

TEST_F(UndoQueueTest, TheQueueDropsItsOldestEntriesBeyondItsLimit) {
    const int total = static_cast<int>(runtime::UndoQueue::kLimit) + 10;
    for (int i = 1; i <= total; ++i)
        ASSERT_TRUE(run(("testSet " + std::to_string(i)).c_str()));
    EXPECT_EQ(queue().undoCount(), runtime::UndoQueue::kLimit);
    EXPECT_EQ(g_world.deleted, 10);
    for (unsigned i = 0; i < runtime::UndoQueue::kLimit; ++i)
        queue().undo();
    EXPECT_EQ(g_world.value, 10);
    m_output.clear();
    EXPECT_FALSE(queue().undo());
    EXPECT_EQ(m_output.texts(HCommandMessage::kWarning),
              (Lines{"There are no more commands to undo."}));
}

TEST_F(UndoQueueTest, FlushAndOwnerDropDeleteTheirCommands) {
    ASSERT_TRUE(run("testSet 1; testOuter 2; testSet 3; flushUndo"));
    EXPECT_EQ(queue().undoCount(), 0u);
    EXPECT_EQ(g_world.created, g_world.deleted);

    ASSERT_TRUE(run("testSet 4; otherSet 5; testSet 6; undo"));
    queue().dropOwner("otherPlugin");
    EXPECT_EQ(queue().undoCount(), 1u);
    EXPECT_EQ(queue().redoCount(), 1u);
    EXPECT_STREQ(queue().undoName().asChar(), "testSet 4");
    EXPECT_STREQ(queue().redoName().asChar(), "testSet 6");

    queue().dropOwner(ScopedCommand::kTestOwner);
    EXPECT_EQ(queue().undoCount() + queue().redoCount(), 0u);
    EXPECT_EQ(g_world.created, g_world.deleted);
}

TEST_F(UndoQueueTest, UndoInfoNamesTheNextEntries) {
    HString name;
    ASSERT_TRUE(HGlobal::executeCommand("undoInfo -q -undoName", name));
    EXPECT_STREQ(name.asChar(), "");
    ASSERT_TRUE(run("testSet 1;\n   testOuter 2 // note\n"));
    ASSERT_TRUE(HGlobal::executeCommand("undoInfo -q -un", name));
    EXPECT_STREQ(name.asChar(), "testOuter 2");
    ASSERT_TRUE(run("undo"));
    ASSERT_TRUE(HGlobal::executeCommand("undoInfo -q -redoName", name));
    EXPECT_STREQ(name.asChar(), "testOuter 2");

    EXPECT_FALSE(HGlobal::executeCommand("undoInfo -undoName"));
    EXPECT_FALSE(HGlobal::executeCommand("undo -x"));
    EXPECT_EQ(m_output.texts(HCommandMessage::kError),
              (Lines{"undoInfo: Query -undoName or -redoName with -q.", "undo: Invalid flag: -x"}));
}
