// setAttr and getAttr: every value type and plug form, what getAttr gives back, their errors,
// and exact undo of every write (elements the write created included).
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "scene/NodeValues.h"

using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::Texts;

namespace {

class AttributeValues : public commandtest::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(run("joint -n root; joint -n spine1 -p 0 2 0; select -cl; "
                        "polyPlane -n body -sx 2 -sy 2; skinCluster -n cluster1 root spine1 body"));
        runtime::NodePtr cluster = scene().findNode("cluster1");
        ASSERT_TRUE(scene().addAttribute(*cluster, fixture::cellLockAttribute()));
    }

    template <typename T> T get(const std::string& plug) {
        T value{};
        EXPECT_TRUE(HGlobal::executeCommand(HString("getAttr " + plug), value)) << plug;
        return value;
    }
};

} // namespace

TEST_F(AttributeValues, NumbersReadBackWithTheirType) {
    ASSERT_TRUE(run("setAttr |root|spine1.lockInfluenceWeights 1"));
    EXPECT_EQ(get<int>("|root|spine1.lockInfluenceWeights"), 1);
    EXPECT_TRUE(runtime::boolValue(*scene().findNode("spine1"), "lockInfluenceWeights"));
    ASSERT_TRUE(run("setAttr spine1.liw false"));
    EXPECT_EQ(get<int>("spine1.liw"), 0);

    ASSERT_TRUE(run("setAttr cluster1.maxInfluences 3"));
    EXPECT_EQ(get<int>("cluster1.mi"), 3);
    ASSERT_TRUE(run("setAttr body.translateY -0.25"));
    EXPECT_EQ(get<double>("body.translateY"), -0.25);
    // An int attribute reads as an int, which a double result also takes.
    EXPECT_EQ(get<double>("cluster1.normalizeWeights"), 1.0);
}

TEST_F(AttributeValues, CompoundsTakeAndGiveOneNumberPerChild) {
    ASSERT_TRUE(run("setAttr body.translate 1 2.5 -3"));
    HDoubleArray values = get<HDoubleArray>("body.translate");
    ASSERT_EQ(values.length(), 3u);
    EXPECT_EQ(values[0], 1.0);
    EXPECT_EQ(values[1], 2.5);
    EXPECT_EQ(values[2], -3.0);
    EXPECT_EQ(get<double>("body.tz"), -3.0);
}

TEST_F(AttributeValues, ElementsAndChildrenOfArrays) {
    EXPECT_EQ(get<int>("cluster1.lockVertex[4]"), 0);
    ASSERT_TRUE(run("setAttr cluster1.lockVertex[4] 1; setAttr cluster1.lockVertex[2] 1"));
    EXPECT_EQ(get<int>("cluster1.lockVertex[4]"), 1);
    HIntArray whole = get<HIntArray>("cluster1.lockVertex");
    ASSERT_EQ(whole.length(), 2u);
    EXPECT_EQ(whole[0], 1);

    ASSERT_TRUE(run("setAttr -type \"string\" "
                    "cluster1.lockedCellIndices[12].lockedLocalJoints[0] \"|root|spine1\""));
    EXPECT_EQ(
        commandtest::stringResult("getAttr cluster1.lockedCellIndices[12].lockedLocalJoints[0]"),
        "|root|spine1");
    EXPECT_EQ(
        commandtest::texts(get<HStringArray>("cluster1.lockedCellIndices[12].lockedLocalJoints")),
        (Texts{"|root|spine1"}));
}

TEST_F(AttributeValues, StringsAndStringArrays) {
    ASSERT_TRUE(run("addAttr -ln note -dt \"string\" cluster1; "
                    "addAttr -ln lockedJointNames -dt \"stringArray\" cluster1"));
    EXPECT_EQ(commandtest::stringResult("getAttr cluster1.note"), "");
    ASSERT_TRUE(run("setAttr cluster1.note -type \"string\" \"two words; and -a dash\""));
    EXPECT_EQ(commandtest::stringResult("getAttr cluster1.note"), "two words; and -a dash");

    ASSERT_TRUE(
        run("setAttr cluster1.lockedJointNames -type \"stringArray\" 3 |root |root|spine1 x"));
    EXPECT_EQ(commandtest::texts(get<HStringArray>("cluster1.lockedJointNames")),
              (Texts{"|root", "|root|spine1", "x"}));
    ASSERT_TRUE(run("setAttr -type stringArray cluster1.lockedJointNames 0"));
    EXPECT_TRUE(get<HStringArray>("cluster1.lockedJointNames").length() == 0);
}

TEST_F(AttributeValues, FailuresSayWhatIsWrongAndWriteNothing) {
    ASSERT_TRUE(run("addAttr -ln lockedJointNames -dt \"stringArray\" cluster1"));
    std::vector<std::string> before = commandtest::sceneState();
    OutputRecorder output;
    const char* const commands[] = {
        "setAttr ghost.visibility 1",
        "setAttr body.noSuchThing 1",
        "setAttr body.visibility",
        "setAttr body.visibility 1 2",
        "setAttr body.visibility maybe",
        "setAttr body.translate 1 2",
        "setAttr -type \"double3\" body.visibility 1",
        "setAttr -type \"stringArray\" cluster1.lockedJointNames 2 a",
        "setAttr -type \"stringArray\" cluster1.lockedJointNames a b",
        "setAttr -type \"string\" body.visibility on",
        "setAttr",
        "getAttr cluster1.message",
        "getAttr body.instObjGroups",
        "getAttr body.visibility body.translateX",
    };
    for (const char* command : commands)
        EXPECT_FALSE(run(command)) << command;
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"No object matches name: ghost", "setAttr: No attribute noSuchThing on body.",
                     "setAttr: body.visibility takes one value, got 0.",
                     "setAttr: body.visibility takes one value, got 2.",
                     "setAttr: \"maybe\" is not a number.",
                     "setAttr: body.translate takes 3 values, got 2.",
                     "setAttr: Unknown value type: double3.",
                     "setAttr: -type \"stringArray\" announces 2 strings, got 1.",
                     "setAttr: -type \"stringArray\" needs the number of strings first.",
                     "setAttr: Plug body.visibility does not take a value of this type.",
                     "setAttr: Give the attribute as NODE.ATTRIBUTE.",
                     "getAttr: Plug cluster1.message holds no value.",
                     "getAttr: body.instObjGroups is an array; name one element.",
                     "getAttr: It reads one attribute at a time."}));
    EXPECT_EQ(commandtest::sceneState(), before);
}

TEST_F(AttributeValues, EveryWriteIsUndoneExactly) {
    ASSERT_TRUE(run("addAttr -ln lockedJointNames -dt \"stringArray\" cluster1"));
    expectUndoAndRedoExact("setAttr |root|spine1.lockInfluenceWeights 1");
    expectUndoAndRedoExact("setAttr body.translate 4 5 6");
    expectUndoAndRedoExact("setAttr cluster1.lockVertex[7] 1");
    expectUndoAndRedoExact("setAttr -type \"stringArray\" cluster1.lockedJointNames 2 a b");
    expectUndoAndRedoExact(
        "setAttr -type \"string\" cluster1.lockedCellIndices[3].lockedLocalJoints[1] j");
    // The element and its compound parent were created by the write: undo takes them away.
    ASSERT_TRUE(run("undo", false));
    runtime::NodePtr cluster = scene().findNode("cluster1");
    EXPECT_EQ(cluster->plug("lockedCellIndices").elementCount(), 0u);
}
