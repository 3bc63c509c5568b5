#include "HDoubleArray.h"
#include "HFnDependencyNode.h"
#include "HFnSingleIndexedComponent.h"
#include "HFnSkinCluster.h"
#include "HIntArray.h"
#include "HPlug.h"
#include "scene/MeshPrimitives.h"
#include "scene/Scene.h"
#include "scene/SkinBinding.h"
#include "scene/Transforms.h"
#include "sceneFixture.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

using fixture::vertexComponent;
using runtime::NodePtr;

namespace {

// Four joints on the X axis at x = 0, 10, 20, 30 and a mesh of four vertices at x = 1, 9, 15
// and 29 (vertex 2 lies as near joint 1 as joint 2). Every vertex starts with the weights of
// `start` (one row of four per vertex).
class WeightRules : public fixture::FreshScene {
protected:
    void SetUp() override {
        FreshScene::SetUp();
        runtime::MeshGeometry geometry;
        for (double x : {1.0, 9.0, 15.0, 29.0})
            geometry.points.emplace_back(x, 0.0, 0.0);
        geometry.polygonSizes = {4};
        geometry.polygonVertices = {0, 1, 2, 3};
        NodePtr transform = runtime::createMeshObject(scene(), geometry, "body");
        shape = transform->children().front();
        for (int j = 0; j < 4; ++j) {
            joints.push_back(scene().createNode("joint", "j" + std::to_string(j)));
            runtime::setWorldPosition(scene(), *joints.back(), HPoint(10.0 * j, 0, 0));
        }
        runtime::SkinWeights weights(4);
        const double start[4][4] = {{0.5, 0.3, 0.2, 0.0},
                                    {0.1, 0.6, 0.3, 0.0},
                                    {0.0, 0.0, 1.0, 0.0},
                                    {0.25, 0.25, 0.25, 0.25}};
        for (unsigned v = 0; v < 4; ++v)
            weights.assignDense(v, start[v], 4);
        cluster = runtime::createSkinCluster(scene(), joints, *shape, std::move(weights));
        fn.setObject(fixture::objectOf(cluster));
        path = fixture::pathOf(shape);
    }

    std::vector<double> weightsOf(int vertex) {
        HDoubleArray weights;
        unsigned count = 0;
        EXPECT_TRUE(fn.getWeights(path, vertexComponent({vertex}), weights, count));
        return std::vector<double>(weights.begin(), weights.end());
    }
    void lock(int joint, bool on = true) {
        HFnDependencyNode(fixture::objectOf(joints[joint])).findPlug("liw").setBool(on);
    }
    void setClusterInt(const char* attribute, int value) {
        HFnDependencyNode(fixture::objectOf(cluster)).findPlug(attribute).setInt(value);
    }

    NodePtr shape, cluster;
    std::vector<NodePtr> joints;
    HFnSkinCluster fn;
    HDagPath path;
};

void expectWeights(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (size_t i = 0; i < actual.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-12) << "influence " << i;
}

} // namespace

TEST_F(WeightRules, RemainderGoesToUnlockedInfluencesInProportion) {
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 0, 0.2));
    // 0.8 left for influences 1 and 2, which held 0.3 and 0.2.
    expectWeights(weightsOf(0), {0.2, 0.48, 0.32, 0.0});
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 0, 1.7));
    expectWeights(weightsOf(0), {1.0, 0.0, 0.0, 0.0});
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({1}), 1, -3.0));
    expectWeights(weightsOf(1), {0.25, 0.0, 0.75, 0.0});
}

TEST_F(WeightRules, LockedInfluencesKeepTheirWeights) {
    lock(1);
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 0, 0.9));
    // Capped at 1 - 0.3; the locked 0.3 stays; nothing is left for influence 2.
    expectWeights(weightsOf(0), {0.7, 0.3, 0.0, 0.0});
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 0, 0.4));
    // The unlocked others hold nothing now, so the rest goes to the nearest unlocked joint
    // that is not the one written: joint 2 (19 away) rather than joint 3 (29 away).
    expectWeights(weightsOf(0), {0.4, 0.3, 0.3, 0.0});
    // Writing the locked influence itself is allowed: it is the one written.
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({1}), 1, 0.2));
    expectWeights(weightsOf(1), {0.2, 0.2, 0.6, 0.0});
}

TEST_F(WeightRules, NearestJointTakesTheRemainderWhenOthersHoldNothing) {
    // Vertex 2 (x = 15) holds everything on influence 2; joints 1 and 2 are equally near.
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({2}), 2, 0.25));
    expectWeights(weightsOf(2), {0.0, 0.75, 0.25, 0.0});
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({2}), 2, 1.0));
    lock(1);
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({2}), 2, 0.25));
    // Joint 1 is locked (and holds 0); of joints 0 (15 away) and 3 (15 away) the lower wins.
    expectWeights(weightsOf(2), {0.75, 0.0, 0.25, 0.0});
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({2}), 0, 0.0));
    expectWeights(weightsOf(2), {0.0, 0.0, 1.0, 0.0});
    lock(0);
    lock(3);
    // No unlocked influence is left: the written one takes the remainder back.
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({2}), 2, 0.25));
    expectWeights(weightsOf(2), {0.0, 0.0, 1.0, 0.0});
}

TEST_F(WeightRules, ModesZeroAndTwoAndNormalizeOffStoreAsGiven) {
    setClusterInt("normalizeWeights", 0);
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 0, 0.2));
    expectWeights(weightsOf(0), {0.2, 0.3, 0.2, 0.0});
    setClusterInt("normalizeWeights", 2);
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 3, 0.9));
    expectWeights(weightsOf(0), {0.2, 0.3, 0.2, 0.9});
    setClusterInt("normalizeWeights", 1);
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 1, 0.0, false));
    expectWeights(weightsOf(0), {0.2, 0.0, 0.2, 0.9});
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({0}), 1, 2.0, false));
    expectWeights(weightsOf(0), {0.2, 1.0, 0.2, 0.9});
}

TEST_F(WeightRules, ArrayFormRestoresExactlyWhateverTheSum) {
    HObject component = vertexComponent({3, 1});
    HDoubleArray saved;
    unsigned count = 0;
    ASSERT_TRUE(fn.getWeights(path, component, saved, count));
    ASSERT_EQ(count, 4u);
    HIntArray all;
    for (int k = 0; k < 4; ++k)
        all.append(k);
    HDoubleArray odd;
    for (double w : {0.1, 0.1, 0.1, 0.1, 1.0 / 3.0, 0.0, 0.7, 0.2})
        odd.append(w);
    ASSERT_TRUE(fn.setWeights(path, component, all, odd));
    expectWeights(weightsOf(3), {0.1, 0.1, 0.1, 0.1});
    ASSERT_TRUE(fn.setWeights(path, component, all, saved));
    HDoubleArray again;
    fn.getWeights(path, component, again, count);
    ASSERT_EQ(again.length(), saved.length());
    for (unsigned i = 0; i < saved.length(); ++i)
        EXPECT_EQ(again[i], saved[i]) << i;
}

TEST_F(WeightRules, ArrayFormSpreadsTheRestOverUnlistedUnlockedInfluences) {
    lock(3);
    HIntArray listed;
    listed.append(0);
    listed.append(2);
    HDoubleArray values;
    values.append(0.15);
    values.append(0.05);
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({3}), listed, values));
    // Locked influence 3 keeps 0.25; influence 1 takes what is left.
    expectWeights(weightsOf(3), {0.15, 0.55, 0.05, 0.25});
    values[0] = 0.9;
    values[1] = 0.6;
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({3}), listed, values));
    // The listed values are scaled down to the 0.75 the lock leaves.
    expectWeights(weightsOf(3), {0.45, 0.0, 0.3, 0.25});
}

TEST_F(WeightRules, OldValuesAreAppendedVertexMajorForAllInfluences) {
    HDoubleArray old;
    old.append(-1.0);
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({2, 0}), 3, 0.5, true, &old));
    std::vector<double> expected = {-1.0, 0.0, 0.0, 1.0, 0.0, 0.5, 0.3, 0.2, 0.0};
    EXPECT_EQ(std::vector<double>(old.begin(), old.end()), expected);
}

TEST_F(WeightRules, LockedVerticesStayButReportTheirWeights) {
    HFnDependencyNode(fixture::objectOf(cluster))
        .findPlug("lockVertex")
        .elementByLogicalIndex(1)
        .setBool(true);
    HDoubleArray old;
    ASSERT_TRUE(fn.setWeights(path, vertexComponent({1, 0}), 0, 0.0, true, &old));
    expectWeights(weightsOf(1), {0.1, 0.6, 0.3, 0.0});
    expectWeights(weightsOf(0), {0.0, 0.6, 0.4, 0.0});
    EXPECT_EQ(old.length(), 8u);
    EXPECT_EQ(old[1], 0.6);
}

TEST_F(WeightRules, ReadsEveryVertexOrOneInfluence) {
    HDoubleArray weights;
    unsigned count = 0;
    ASSERT_TRUE(fn.getWeights(path, HObject(), weights, count));
    EXPECT_EQ(weights.length(), 16u);
    EXPECT_EQ(weights[1 * 4 + 1], 0.6);
    ASSERT_TRUE(fn.getWeights(path, vertexComponent({3, 0}), 1, weights));
    EXPECT_EQ(std::vector<double>(weights.begin(), weights.end()),
              (std::vector<double>{0.25, 0.3}));
    HDagPathArray influences;
    EXPECT_EQ(fn.influenceObjects(influences), 4u);
    EXPECT_STREQ(influences[2].fullPathName().asChar(), "|j2");
    EXPECT_EQ(fn.indexForInfluenceObject(influences[3]), 3u);
    HDagPath geometry;
    ASSERT_TRUE(fn.getPathAtIndex(0, geometry));
    EXPECT_EQ(geometry, path);
}

TEST_F(WeightRules, BadCallsFailAndWriteNothing) {
    std::vector<double> before = weightsOf(0);
    HDoubleArray weights;
    unsigned count = 0;
    EXPECT_EQ(fn.setWeights(path, vertexComponent({0}), 4, 0.5).statusCode(),
              HS::kInvalidParameter);
    EXPECT_EQ(fn.setWeights(path, vertexComponent({0, 4}), 0, 0.5).statusCode(),
              HS::kInvalidParameter);
    EXPECT_FALSE(fn.setWeights(path, vertexComponent({0}), 0, std::nan("")));
    HFnSingleIndexedComponent edges;
    HObject edge = edges.create(HFn::kMeshEdgeComponent);
    edges.addElement(0);
    EXPECT_FALSE(fn.setWeights(path, edge, 0, 0.5));
    EXPECT_FALSE(fn.getWeights(path, edge, weights, count));
    EXPECT_FALSE(fn.setWeights(fixture::pathOf(joints[0]), vertexComponent({0}), 0, 0.5));
    HDagPath transform = path;
    transform.pop();
    HStatus status = fn.getWeights(transform, HObject(), weights, count);
    EXPECT_STREQ(status.errorString().asChar(), "The path is not the skin cluster's geometry.");
    HIntArray listed;
    listed.append(1);
    listed.append(1);
    HDoubleArray values(2, 0.5);
    EXPECT_FALSE(fn.setWeights(path, vertexComponent({0}), listed, values));
    listed[1] = 2;
    EXPECT_FALSE(fn.setWeights(path, vertexComponent({0, 1}), listed, values));
    EXPECT_EQ(weightsOf(0), before);

    HFnSkinCluster notACluster(fixture::objectOf(joints[0]), &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_FALSE(notACluster.getWeights(path, HObject(), weights, count));
}
