// select, ls and selectType: what they leave in the active selection and the component
// modes, what they answer, how often "SelectionChanged" fires, and their errors.
#include "HEventMessage.h"
#include "HMessage.h"
#include "OutputRecorder.h"
#include "commandTesting.h"

using commandtest::run;
using commandtest::selectionTexts;
using commandtest::Texts;

namespace {

class SelectionCommands : public commandtest::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(run("polyPlane -n body -sx 3 -sy 3; polyCube -n box; joint -n root; "
                        "joint -n spine; select -cl"));
        m_callback = HEventMessage::addEventCallback("SelectionChanged", count, &m_changes);
        m_changes = 0;
    }
    void TearDown() override { HMessage::removeCallback(m_callback); }

    Texts ls(const std::string& command) {
        HStringArray names;
        EXPECT_TRUE(HGlobal::executeCommand(HString(command), names)) << command;
        return commandtest::texts(names);
    }

    static void count(void* changes) { ++*static_cast<int*>(changes); }

    int m_changes = 0;
    HCallbackId m_callback = 0;
};

} // namespace

TEST_F(SelectionCommands, ModesReplaceAddDeselectToggleAndClear) {
    ASSERT_TRUE(run("select body"));
    EXPECT_EQ(selectionTexts(), (Texts{"|body"}));
    ASSERT_TRUE(run("select -add box spine"));
    EXPECT_EQ(selectionTexts(), (Texts{"|body", "|box", "|root|spine"}));
    ASSERT_TRUE(run("select -d box"));
    EXPECT_EQ(selectionTexts(), (Texts{"|body", "|root|spine"}));
    ASSERT_TRUE(run("select -tgl body box"));
    EXPECT_EQ(selectionTexts(), (Texts{"|root|spine", "|box"}));
    ASSERT_TRUE(run("select -r root"));
    EXPECT_EQ(selectionTexts(), (Texts{"|root"}));
    ASSERT_TRUE(run("select -cl"));
    EXPECT_TRUE(selectionTexts().empty());
    EXPECT_EQ(m_changes, 6);
}

TEST_F(SelectionCommands, ComponentsAndRangesMergeIntoTheirShape) {
    ASSERT_TRUE(run("select -r body.vtx[3] body.vtx[7] ;"));
    EXPECT_EQ(selectionTexts(), (Texts{"bodyShape.vtx[3]", "bodyShape.vtx[7]"}));
    ASSERT_TRUE(run("select -add body.vtx[4:6] body.vtx[3]"));
    EXPECT_EQ(selectionTexts(),
              (Texts{"bodyShape.vtx[3]", "bodyShape.vtx[7]", "bodyShape.vtx[4:6]"}));
    ASSERT_TRUE(run("select -tgl body.vtx[5:8]"));
    EXPECT_EQ(selectionTexts(), (Texts{"bodyShape.vtx[3:4]", "bodyShape.vtx[8]"}));
    ASSERT_TRUE(run("select -d body.vtx[3]"));
    EXPECT_EQ(selectionTexts(), (Texts{"bodyShape.vtx[4]", "bodyShape.vtx[8]"}));
    EXPECT_EQ(m_changes, 4);
}

TEST_F(SelectionCommands, EachSelectFiresOnceEvenForManyObjectsOrNoChange) {
    ASSERT_TRUE(run("select -r body.vtx[0:15] box root spine"));
    EXPECT_EQ(m_changes, 1);
    ASSERT_TRUE(run("select -r body.vtx[0:15] box root spine"));
    EXPECT_EQ(m_changes, 2);
}

TEST_F(SelectionCommands, SelectIsUndoneAndRedone) {
    ASSERT_TRUE(run("select -r body.vtx[1:2]"));
    ASSERT_TRUE(run("select -add box"));
    m_changes = 0;
    ASSERT_TRUE(run("undo", false));
    EXPECT_EQ(selectionTexts(), (Texts{"bodyShape.vtx[1:2]"}));
    ASSERT_TRUE(run("redo", false));
    EXPECT_EQ(selectionTexts(), (Texts{"bodyShape.vtx[1:2]", "|box"}));
    EXPECT_EQ(m_changes, 2);
}

TEST_F(SelectionCommands, FailuresNameTheProblemAndLeaveTheSelection) {
    ASSERT_TRUE(run("select box"));
    m_changes = 0;
    OutputRecorder output;
    EXPECT_FALSE(run("select -r nothing"));
    EXPECT_FALSE(run("select -r body.vtx[99]"));
    EXPECT_FALSE(run("select -add"));
    EXPECT_FALSE(run("select -add -d box"));
    EXPECT_FALSE(run("select -x box"));
    EXPECT_EQ(
        output.texts(HCommandMessage::kError),
        (Texts{"No object matches name: nothing", "select: Index out of range: body.vtx[99]",
               "select: Give the objects to add, deselect or toggle.",
               "select: Use only one of -r, -add, -d and -tgl.", "select: Invalid flag: -x"}));
    EXPECT_EQ(selectionTexts(), (Texts{"|box"}));
    EXPECT_EQ(m_changes, 0);
}

TEST_F(SelectionCommands, AnAmbiguousNameIsRefusedAndAPathServes) {
    ASSERT_TRUE(run("joint -n spine"));
    OutputRecorder output;
    EXPECT_FALSE(run("select spine"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"More than one object matches name: spine"}));
    ASSERT_TRUE(run("select |root|spine"));
    EXPECT_EQ(selectionTexts(), (Texts{"|root|spine"}));
}

TEST_F(SelectionCommands, ListsNamesBySelectionTypeAndPattern) {
    EXPECT_EQ(ls("ls -type joint"), (Texts{"root", "spine"}));
    EXPECT_EQ(ls("ls -type joint -long"), (Texts{"|root", "|root|spine"}));
    EXPECT_EQ(ls("ls -type mesh -type joint"), (Texts{"bodyShape", "boxShape", "root", "spine"}));
    EXPECT_EQ(ls("ls -type shape"), (Texts{"bodyShape", "boxShape"}));
    EXPECT_EQ(ls("ls b*"), (Texts{"body", "bodyShape", "box", "boxShape"}));
    EXPECT_EQ(ls("ls").size(), runtime::scene().nodeCount());

    ASSERT_TRUE(run("select -r spine body.vtx[2:4] box"));
    EXPECT_EQ(ls("ls -sl"), (Texts{"spine", "bodyShape.vtx[2:4]", "box"}));
    EXPECT_EQ(ls("ls -sl -l"), (Texts{"|root|spine", "bodyShape.vtx[2:4]", "|box"}));
    EXPECT_EQ(ls("ls -sl -type transform"), (Texts{"box"}));
    EXPECT_EQ(ls("ls -selection -type mesh"), (Texts{"bodyShape.vtx[2:4]"}));

    OutputRecorder output;
    EXPECT_FALSE(run("ls -type bone"));
    EXPECT_FALSE(run("ls ghost"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"ls: Unknown node type: bone.", "No object matches name: ghost"}));
}

TEST_F(SelectionCommands, ComponentModesAreSetQueriedAndNotRecorded) {
    unsigned recorded = runtime::host().get<runtime::UndoQueue>().undoCount();
    int allComponents = -1, vertex = -1;
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -alc", allComponents));
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -vertex", vertex));
    EXPECT_EQ(allComponents, 0);
    EXPECT_EQ(vertex, 1);

    ASSERT_TRUE(run("selectType -ocm -alc true;\nselectType -ocm -vertex false;\n"));
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -ocm -alc", allComponents));
    ASSERT_TRUE(HGlobal::executeCommand("selectType -q -vertex", vertex));
    EXPECT_EQ(allComponents, 1);
    EXPECT_EQ(vertex, 0);
    EXPECT_TRUE(runtime::selection().allComponents());
    EXPECT_FALSE(runtime::selection().vertices());
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), recorded);

    ASSERT_TRUE(run("selectType -allComponents 0 -v 1"));
    EXPECT_FALSE(runtime::selection().allComponents());
    EXPECT_TRUE(runtime::selection().vertices());

    OutputRecorder output;
    EXPECT_FALSE(run("selectType -ocm"));
    EXPECT_FALSE(run("selectType -ocm -alc maybe"));
    EXPECT_FALSE(run("selectType -q -ocm"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"selectType: Give -allComponents or -vertex.",
                     "selectType: Flag -alc needs a truth value, not \"maybe\".",
                     "selectType: Give -allComponents or -vertex."}));
}
