// addAttr, connectAttr and disconnectAttr: the attributes and connections they make, their
// errors, and exact undo.
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "scene/PlugPath.h"

using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::Texts;

namespace {

class AttributeEdits : public commandtest::CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_TRUE(run("createNode objectSet -n set1; createNode objectSet -n set2; "
                        "createNode groupId -n group1; select -cl"));
    }

    Texts sourcesOf(const std::string& plug) {
        Texts names;
        for (const runtime::Plug& source :
             scene().connectedPlugs(runtime::findPlug(scene(), plug), true, false))
            names.push_back(source.name());
        return names;
    }
};

} // namespace

TEST_F(AttributeEdits, AddAttrMakesEachKindOfAttribute) {
    ASSERT_TRUE(run("addAttr -ln flag -sn fl -at bool set1;"
                    "addAttr -longName count -attributeType long -defaultValue 7 set1;"
                    "addAttr -ln weight -at double -dv 0.5 -m set1;"
                    "addAttr -ln note -dt string set1;"
                    "addAttr -ln names -dt stringArray set1;"
                    "addAttr -ln link -at message set1;"
                    "addAttr -ln plain set1"));
    runtime::NodePtr set = scene().findNode("set1");
    struct Expected {
        const char* name;
        runtime::ValueType type;
        bool array;
    };
    const Expected expected[] = {{"fl", runtime::ValueType::kBool, false},
                                 {"count", runtime::ValueType::kInt, false},
                                 {"weight", runtime::ValueType::kDouble, true},
                                 {"note", runtime::ValueType::kString, false},
                                 {"names", runtime::ValueType::kStringArray, false},
                                 {"link", runtime::ValueType::kNone, false},
                                 {"plain", runtime::ValueType::kDouble, false}};
    for (const Expected& e : expected) {
        const runtime::AttributeDef* def = set->findAttribute(e.name);
        ASSERT_TRUE(def) << e.name;
        EXPECT_EQ(def->valueType(), e.type) << e.name;
        EXPECT_EQ(def->isArray(), e.array) << e.name;
    }
    int count = 0;
    ASSERT_TRUE(HGlobal::executeCommand("getAttr set1.count", count));
    EXPECT_EQ(count, 7);
    double weight = 0.0;
    ASSERT_TRUE(HGlobal::executeCommand("getAttr set1.weight[4]", weight));
    EXPECT_EQ(weight, 0.5);
}

TEST_F(AttributeEdits, AddAttrUsesTheSelectionWhenNoNodeIsNamed) {
    ASSERT_TRUE(run("select set1 set2; addAttr -ln tag -at long"));
    EXPECT_TRUE(scene().findNode("set1")->findAttribute("tag"));
    EXPECT_TRUE(scene().findNode("set2")->findAttribute("tag"));
}

TEST_F(AttributeEdits, ConnectReplaceAndDisconnect) {
    ASSERT_TRUE(run("connectAttr group1.message set1.groupNodes[0]"));
    EXPECT_EQ(sourcesOf("set1.groupNodes[0]"), (Texts{"group1.message"}));
    OutputRecorder output;
    EXPECT_FALSE(run("connectAttr set2.message set1.groupNodes[0]"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"connectAttr: set1.groupNodes[0] already has an incoming connection from "
                     "group1.message."}));
    ASSERT_TRUE(run("connectAttr -f set2.message set1.groupNodes[0]"));
    EXPECT_EQ(sourcesOf("set1.groupNodes[0]"), (Texts{"set2.message"}));
    ASSERT_TRUE(run("disconnectAttr set2.message set1.groupNodes[0]"));
    EXPECT_TRUE(sourcesOf("set1.groupNodes[0]").empty());
}

TEST_F(AttributeEdits, FailuresNameTheCommandAndTheProblem) {
    std::vector<std::string> before = commandtest::sceneState();
    OutputRecorder output;
    const char* const commands[] = {
        "addAttr -at bool set1",
        "addAttr -ln x -at vector set1",
        "addAttr -ln x -dt matrix set1",
        "addAttr -ln x -at bool -dt string set1",
        "addAttr -ln x -dt string -dv 1 set1",
        "addAttr -ln message set1",
        "addAttr -ln x",
        "addAttr -ln x ghost",
        "connectAttr set1.message",
        "connectAttr set1.message set2.nothing",
        "disconnectAttr set1.message set2.usedBy[0]",
    };
    for (const char* command : commands)
        EXPECT_FALSE(run(command)) << command;
    EXPECT_EQ(
        output.texts(HCommandMessage::kError),
        (Texts{"addAttr: Give the attribute's name with -ln (-longName).",
               "addAttr: Unknown attribute type: vector.", "addAttr: Unknown data type: matrix.",
               "addAttr: Give either -at or -dt, not both.",
               "addAttr: -dv (-defaultValue) is for numeric attributes.",
               "addAttr: Attribute name message is invalid or already used on set1.",
               "addAttr: Name the nodes or select them.", "No object matches name: ghost",
               "connectAttr: Give the source and the destination attribute.",
               "connectAttr: No attribute nothing on set2.",
               "disconnectAttr: set1.message is not connected to set2.usedBy[0]."}));
    EXPECT_EQ(commandtest::sceneState(), before);
}

TEST_F(AttributeEdits, EachEditIsUndoneExactly) {
    expectUndoAndRedoExact("addAttr -ln names -dt stringArray -m set1");
    expectUndoAndRedoExact("connectAttr group1.message set1.groupNodes[3]");
    expectUndoAndRedoExact("connectAttr -f set2.message set1.groupNodes[3]");
    expectUndoAndRedoExact("disconnectAttr set2.message set1.groupNodes[3]");
}
