// createNode, delete, rename and parent: the nodes and hierarchy they leave, the names they
// give, their errors, and exact undo.
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "scene/Transforms.h"

#include <cmath>

using commandtest::expectPoint;
using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::selectionTexts;
using commandtest::stringResult;
using commandtest::Texts;

namespace {

class NodeEdits : public commandtest::CommandTest {
protected:
    HPoint worldPositionOf(const std::string& name) {
        return runtime::worldPosition(*scene().findNode(name));
    }
};

} // namespace

TEST_F(NodeEdits, CreateNodeNamesSelectsAndPlaces) {
    EXPECT_EQ(stringResult("createNode transform"), "transform1");
    EXPECT_EQ(selectionTexts(), (Texts{"|transform1"}));
    EXPECT_EQ(stringResult("createNode transform -n group -p transform1 -ss"), "group");
    EXPECT_EQ(selectionTexts(), (Texts{"|transform1"}));
    EXPECT_EQ(scene().findNode("group")->fullPathName(), "|transform1|group");
    EXPECT_EQ(stringResult("createNode transform -p transform1"), "transform2");
    EXPECT_EQ(stringResult("createNode skinCluster"), "skinCluster1");
    // A shape made on its own comes with a transform, which is selected.
    EXPECT_EQ(stringResult("createNode mesh -n partShape"), "partShape");
    EXPECT_EQ(selectionTexts().size(), 1u);
    EXPECT_EQ(scene().findNode("partShape")->parent(), scene().findNode(selectionTexts()[0]).get());
}

TEST_F(NodeEdits, DeleteTakesDescendantsAndUsesTheSelection) {
    ASSERT_TRUE(run("joint -n a; joint -n b; joint -n c; select -cl; polyCube -n box"));
    ASSERT_TRUE(run("delete b"));
    EXPECT_EQ(runtime::scene().matchNodes("c").size(), 0u);
    EXPECT_TRUE(scene().findNode("a"));
    ASSERT_TRUE(run("delete"));
    EXPECT_EQ(scene().matchNodes("box*").size(), 0u);
    EXPECT_TRUE(selectionTexts().empty());
}

TEST_F(NodeEdits, DeletingABoundMeshTakesItsClusterAndUndoBringsAllBack) {
    ASSERT_TRUE(run("joint -n root; joint -n tip -p 0 1 0; select -cl; "
                    "polyCylinder -n body -sx 6 -sy 2; skinCluster -n cluster1 root tip body; "
                    "select -r body.vtx[2] root"));
    expectUndoAndRedoExact("delete body");
    EXPECT_FALSE(scene().findNode("cluster1Set"));
    ASSERT_TRUE(run("undo", false));
    EXPECT_EQ(selectionTexts(), (Texts{"bodyShape.vtx[2]", "|root"}));
}

TEST_F(NodeEdits, RenameGivesTheNameTheNodeGot) {
    ASSERT_TRUE(run("createNode transform -n a; createNode transform -n b"));
    EXPECT_EQ(stringResult("rename a c"), "c");
    EXPECT_EQ(stringResult("rename c b"), "b1");
    EXPECT_EQ(stringResult("select b; rename d"), "d");
    EXPECT_TRUE(scene().findNode("d"));
    expectUndoAndRedoExact("rename d e");
}

TEST_F(NodeEdits, ParentKeepsTheWorldPlaceUnlessRelative) {
    ASSERT_TRUE(run("createNode transform -n group; setAttr group.translate 1 2 3; "
                    "setAttr group.rotate 0 90 0; setAttr group.scale 2 2 2; "
                    "createNode transform -n item; setAttr item.translate 5 0 0; "
                    "setAttr item.rotate 10 20 30"));
    runtime::Matrix before = runtime::worldMatrix(*scene().findNode("item"));
    HStringArray names;
    ASSERT_TRUE(HGlobal::executeCommand("parent item group", names));
    EXPECT_EQ(commandtest::texts(names), (Texts{"item"}));
    EXPECT_EQ(scene().findNode("item")->fullPathName(), "|group|item");
    runtime::Matrix after = runtime::worldMatrix(*scene().findNode("item"));
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_NEAR(after.m[row][column], before.m[row][column], 1e-9);

    ASSERT_TRUE(run("parent -w item"));
    EXPECT_EQ(scene().findNode("item")->fullPathName(), "|item");
    expectPoint(worldPositionOf("item"), 5, 0, 0);

    ASSERT_TRUE(run("parent -r item group"));
    expectPoint(worldPositionOf("item"), 1, 2, 3 - 10);
    expectUndoAndRedoExact("parent -w item");
}

TEST_F(NodeEdits, ParentUsesTheSelectionAndItsLastObjectIsTheParent) {
    ASSERT_TRUE(run("createNode transform -n a; createNode transform -n b; "
                    "createNode transform -n group; select a b group; parent"));
    EXPECT_EQ(scene().findNode("a")->fullPathName(), "|group|a");
    EXPECT_EQ(scene().findNode("b")->fullPathName(), "|group|b");
    // A child already under the parent keeps its place among its siblings.
    unsigned entries = runtime::host().get<runtime::UndoQueue>().undoCount();
    ASSERT_TRUE(run("parent a group"));
    EXPECT_EQ(scene().childPosition(*scene().findNode("a")), 0u);
    EXPECT_EQ(runtime::host().get<runtime::UndoQueue>().undoCount(), entries);
}

TEST_F(NodeEdits, FailuresNameTheCommandAndTheProblem) {
    ASSERT_TRUE(run("createNode transform -n group; createNode transform -n item -p group; "
                    "polyCube -n box; select -cl"));
    std::vector<std::string> before = commandtest::sceneState();
    OutputRecorder output;
    const char* const commands[] = {
        "createNode",
        "createNode dagNode",
        "createNode transform -n 1x",
        "createNode joint -p ghost",
        "delete",
        "delete box.vtx[0]",
        "rename item",
        "rename item bad|name",
        "parent group item",
        "parent box",
        "parent -w boxShape",
    };
    for (const char* command : commands)
        EXPECT_FALSE(run(command)) << command;
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"createNode: Give one node type.", "createNode: Unknown node type: dagNode",
                     "createNode: Invalid node name: 1x", "No object matches name: ghost",
                     "delete: Nothing to delete: name the objects or select them.",
                     "delete: Components cannot be used here, only objects.",
                     "rename: Name the object or select it.", "rename: Invalid node name: bad|name",
                     "parent: A node cannot be parented under itself or its descendants.",
                     "parent: Give the objects and then their parent.",
                     "parent: A shape must stay under a transform."}));
    EXPECT_EQ(commandtest::sceneState(), before);
}

TEST_F(NodeEdits, EachEditIsUndoneExactly) {
    ASSERT_TRUE(run("createNode transform -n group; setAttr group.translate 0 4 0; "
                    "createNode transform -n item; setAttr item.rotate 0 0 45"));
    expectUndoAndRedoExact("createNode joint -n j -p group");
    expectUndoAndRedoExact("createNode mesh");
    expectUndoAndRedoExact("parent item group");
    expectUndoAndRedoExact("rename group rig");
    expectUndoAndRedoExact("delete rig");
}
