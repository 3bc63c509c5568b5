#include "scene/Transforms.h"

#include "scene/Matrix.h"
#include "scene/NodeValues.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;
using runtime::Matrix;
using runtime::NodePtr;

namespace {

void expectNear(const HPoint& actual, const HPoint& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
    EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

} // namespace

TEST(Matrices, RotateXFirstThenYThenZ) {
    // 90 degrees about X takes +Y to +Z; then 90 about Z leaves +Z alone.
    expectNear(Matrix::rotationXYZ(HPoint(90, 0, 90)).transformPoint(HPoint(0, 1, 0)),
               HPoint(0, 0, 1));
    // 90 about Z takes +X to +Y; X first would have left +X alone.
    expectNear(Matrix::rotationXYZ(HPoint(90, 0, 90)).transformPoint(HPoint(1, 0, 0)),
               HPoint(0, 1, 0));
    Matrix m = Matrix::translation(HPoint(1, 2, 3)) * Matrix::rotationXYZ(HPoint(10, 20, 30)) *
               Matrix::scaling(HPoint(2, 2, 2));
    Matrix inverse;
    ASSERT_TRUE(m.inverse(inverse));
    expectNear((inverse * m).transformPoint(HPoint(4, 5, 6)), HPoint(4, 5, 6));
    EXPECT_FALSE(Matrix::scaling(HPoint(1, 0, 1)).inverse(inverse));
    double columns[16];
    m.toColumnMajor(columns);
    EXPECT_EQ(columns[12], 1.0);
    EXPECT_EQ(Matrix::fromColumnMajor(columns), m);
}

using JointTransforms = FreshScene;

TEST_F(JointTransforms, WorldPositionsFollowTheChain) {
    NodePtr hip = scene().createNode("joint", "hip");
    NodePtr knee = scene().createNode("joint", "knee", hip.get());
    runtime::setTripleValue(scene(), *hip, "translate", HPoint(0, 10, 0));
    runtime::setTripleValue(scene(), *hip, "rotate", HPoint(0, 0, 90));
    runtime::setTripleValue(scene(), *knee, "translate", HPoint(5, 0, 0));
    expectNear(runtime::worldPosition(*knee), HPoint(0, 15, 0));
    // jointOrient turns like rotate, before it.
    runtime::setTripleValue(scene(), *hip, "rotate", HPoint(0, 0, 0));
    runtime::setTripleValue(scene(), *hip, "jointOrient", HPoint(0, 0, -90));
    expectNear(runtime::worldPosition(*knee), HPoint(0, 5, 0));

    ASSERT_TRUE(runtime::setWorldPosition(scene(), *knee, HPoint(1, 2, 3)));
    expectNear(runtime::worldPosition(*knee), HPoint(1, 2, 3));
    expectNear(runtime::tripleValue(*knee, "translate"), HPoint(8, 1, 3));
}
