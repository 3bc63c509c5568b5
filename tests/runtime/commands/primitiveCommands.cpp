// polyPlane, polyCube, polyCylinder, polySphere and joint: the objects they make, their sizes
// and names, the selection they leave, their errors, and exact undo.
#include "OutputRecorder.h"
#include "commandTesting.h"
#include "scene/NodeValues.h"
#include "scene/Transforms.h"

#include <algorithm>

using commandtest::expectPoint;
using commandtest::expectUndoAndRedoExact;
using commandtest::run;
using commandtest::selectionTexts;
using commandtest::stringResult;
using commandtest::Texts;

namespace {

class Primitives : public commandtest::CommandTest {
protected:
    const runtime::MeshData& meshOf(const std::string& transform) {
        return *scene().findNode(transform + "Shape")->mesh();
    }

    // The largest |x|, |y| and |z| of the mesh's points.
    HPoint extent(const std::string& transform) {
        HPoint most;
        for (const HPoint& p : meshOf(transform).points()) {
            most.x = std::max(most.x, std::abs(p.x));
            most.y = std::max(most.y, std::abs(p.y));
            most.z = std::max(most.z, std::abs(p.z));
        }
        return most;
    }
};

} // namespace

TEST_F(Primitives, SizesAndSubdivisionsShapeTheMesh) {
    EXPECT_EQ(stringResult("polyPlane -n floor -w 4 -h 2 -sx 3 -sy 2"), "floor");
    EXPECT_EQ(meshOf("floor").vertexCount(), 12u);
    EXPECT_EQ(meshOf("floor").polygonCount(), 6u);
    expectPoint(extent("floor"), 2, 0, 1);

    EXPECT_EQ(stringResult("polyCube -name box -width 2 -height 4 -depth 6"), "box");
    EXPECT_EQ(meshOf("box").vertexCount(), 8u);
    expectPoint(extent("box"), 1, 2, 3);
    ASSERT_TRUE(run("polyCube -n fine -sx 2 -sy 2 -sz 2"));
    EXPECT_EQ(meshOf("fine").vertexCount(), 26u);

    ASSERT_TRUE(run("polyCylinder -n body -r 0.5 -h 3 -sx 16 -sy 10"));
    EXPECT_EQ(meshOf("body").vertexCount(), 16u * 11u + 2u);
    expectPoint(extent("body"), 0.5, 1.5, 0.5);

    ASSERT_TRUE(run("polySphere -n ball -r 2 -sx 8 -sy 4"));
    EXPECT_EQ(meshOf("ball").vertexCount(), 8u * 3u + 2u);
    expectPoint(extent("ball"), 2, 2, 2);
}

TEST_F(Primitives, DefaultNamesCountUpAndTheNewObjectIsSelected) {
    EXPECT_EQ(stringResult("polyCube"), "cube1");
    EXPECT_EQ(stringResult("polyCube"), "cube2");
    EXPECT_EQ(selectionTexts(), (Texts{"|cube2"}));
    EXPECT_TRUE(scene().findNode("cube2Shape"));
    EXPECT_EQ(stringResult("polyPlane"), "plane1");
    EXPECT_EQ(stringResult("polySphere"), "sphere1");
    EXPECT_EQ(stringResult("polyCylinder"), "cylinder1");
    EXPECT_EQ(stringResult("polyCylinder -n cylinder1"), "cylinder2");
}

TEST_F(Primitives, FailuresNameTheCommandAndTheProblem) {
    OutputRecorder output;
    EXPECT_FALSE(run("polyCube -w 0"));
    EXPECT_FALSE(run("polySphere -sy 1"));
    EXPECT_FALSE(run("polyPlane -d 2"));
    EXPECT_FALSE(run("polyCylinder -sx 3000000 -sy 3000000"));
    EXPECT_FALSE(run("polyCube extra"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"polyCube: The width must be a positive number.",
                     "polySphere: The height subdivisions must be at least 2.",
                     "polyPlane: Invalid flag: -d",
                     "polyCylinder: The mesh would have more than 20000000 vertices.",
                     "polyCube: It takes no objects, only its flags."}));
    EXPECT_EQ(scene().nodeCount(), 0u);
}

TEST_F(Primitives, JointsChainUnderTheSelectedJointAtWorldPositions) {
    EXPECT_EQ(stringResult("joint -p 1 2 3 -n root"), "root");
    EXPECT_EQ(stringResult("joint -p 1 5 3"), "joint1");
    EXPECT_EQ(stringResult("joint -position 1 5 4"), "joint2");
    EXPECT_EQ(selectionTexts(), (Texts{"|root|joint1|joint2"}));
    expectPoint(runtime::tripleValue(*scene().findNode("joint1"), "translate"), 0, 3, 0);
    expectPoint(runtime::worldPosition(*scene().findNode("joint2")), 1, 5, 4);

    ASSERT_TRUE(run("select -cl; joint -n other"));
    EXPECT_EQ(scene().findNode("other")->fullPathName(), "|other");
    ASSERT_TRUE(run("polyCube -n box; joint -n free"));
    EXPECT_EQ(scene().findNode("free")->fullPathName(), "|free");

    OutputRecorder output;
    EXPECT_FALSE(run("joint -p 1 2"));
    EXPECT_FALSE(run("joint -n 9lives"));
    EXPECT_EQ(output.texts(HCommandMessage::kError),
              (Texts{"joint: Flag -p needs 3 values.", "joint: Invalid node name: 9lives"}));
}

TEST_F(Primitives, EachIsUndoneExactlyWithTheSelection) {
    ASSERT_TRUE(run("joint -n root; polyCube -n box; select -r box.vtx[2]"));
    expectUndoAndRedoExact("polyPlane -sx 4 -sy 4");
    expectUndoAndRedoExact("polyCube -n crate");
    expectUndoAndRedoExact("polyCylinder -n body -sx 8 -sy 3");
    expectUndoAndRedoExact("polySphere");
    ASSERT_TRUE(run("select root"));
    expectUndoAndRedoExact("joint -p 0 1 0");
}
