#include "scene/SkinBinding.h"

#include "HFnDependencyNode.h"
#include "HPlug.h"
#include "HPlugArray.h"
#include "scene/MeshPrimitives.h"
#include "scene/PlugPath.h"
#include "scene/Scene.h"
#include "scene/SkinClusterData.h"
#include "scene/SkinLinks.h"
#include "scene/Transforms.h"
#include "sceneFixture.h"

#include <cmath>
#include <gtest/gtest.h>

using fixture::FreshScene;
using runtime::NodePtr;

namespace {

// How a weight editor finds a shape's skin cluster: through instObjGroups, child 0, each
// object group's child 2, its sources of kind kSet, their usedBy sources of kind
// kSkinClusterFilter.
std::vector<HObject> clustersFoundFrom(const HObject& shape) {
    std::vector<HObject> found;
    HPlug groups = HFnDependencyNode(shape).findPlug("instObjGroups", true);
    for (unsigned i = 0; i < groups.numElements(); ++i) {
        HPlug objectGroups = groups[i].child(0);
        for (unsigned j = 0; j < objectGroups.numElements(); ++j) {
            HPlugArray sources;
            objectGroups[j].child(2).connectedTo(sources, true, false);
            for (unsigned s = 0; s < sources.length(); ++s) {
                if (sources[s].node().apiType() != HFn::kSet)
                    continue;
                HPlug usedBy = HFnDependencyNode(sources[s].node()).findPlug("usedBy", true);
                for (unsigned k = 0; k < usedBy.numElements(); ++k) {
                    HPlugArray users;
                    usedBy[k].connectedTo(users, true, false);
                    for (unsigned u = 0; u < users.length(); ++u)
                        if (users[u].node().apiType() == HFn::kSkinClusterFilter)
                            found.push_back(users[u].node());
                }
            }
        }
    }
    return found;
}

NodePtr plane(runtime::Scene& scene, const std::string& name) {
    runtime::MeshGeometry geometry;
    runtime::PlaneParameters parameters;
    parameters.width = 4.0;
    parameters.subdivisionsX = 8;
    parameters.subdivisionsY = 2;
    runtime::makePlane(parameters, geometry);
    return runtime::createMeshObject(scene, geometry, name);
}

std::vector<NodePtr> jointsAlongX(runtime::Scene& scene, int count) {
    std::vector<NodePtr> joints;
    for (int j = 0; j < count; ++j) {
        joints.push_back(
            scene.createNode("joint", "", joints.empty() ? nullptr : joints.back().get()));
        runtime::setWorldPosition(scene, *joints.back(),
                                  HPoint(-2.0 + 4.0 * j / (count - 1), 0, 0));
    }
    return joints;
}

} // namespace

using SkinBinding = FreshScene;

TEST_F(SkinBinding, TheWalkFromTheMeshFindsTheCluster) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    std::vector<HObject> found = clustersFoundFrom(fixture::objectOf(body.shape));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0], body.clusterObject());
    EXPECT_EQ(body.cluster->name(), "skinCluster1");
    NodePtr set = scene().findNode("skinCluster1Set");
    NodePtr group = scene().findNode("skinCluster1GroupId");
    ASSERT_TRUE(set && group);
    EXPECT_EQ(set->apiType(), HFn::kSet);
    EXPECT_EQ(group->apiType(), HFn::kGroupId);
    // The transform leads nowhere: only the shape carries the groups.
    EXPECT_TRUE(clustersFoundFrom(fixture::objectOf(body.transform)).empty());
}

TEST_F(SkinBinding, ClusterIsWiredAsDescribed) {
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    auto sourceOf = [&](const std::string& plug) {
        std::vector<runtime::Plug> sources =
            scene().connectedPlugs(runtime::findPlug(scene(), plug), true, false);
        return sources.size() == 1 ? sources[0].name() : std::string("none");
    };
    EXPECT_EQ(sourceOf("bodyShape.instObjGroups[0].objectGroups[0].objectGrpColor"),
              "skinCluster1Set.memberWireframeColor");
    EXPECT_EQ(sourceOf("bodyShape.instObjGroups[0].objectGroups[0].objectGroupId"),
              "skinCluster1GroupId.groupId");
    EXPECT_EQ(sourceOf("skinCluster1Set.dagSetMembers[0]"),
              "bodyShape.instObjGroups[0].objectGroups[0]");
    EXPECT_EQ(sourceOf("skinCluster1Set.groupNodes[0]"), "skinCluster1GroupId.message");
    EXPECT_EQ(sourceOf("skinCluster1Set.usedBy[0]"), "skinCluster1.message");
    EXPECT_EQ(sourceOf("bodyShape.inMesh"), "skinCluster1.outputGeometry[0]");
    EXPECT_EQ(runtime::skinClusterGeometry(*body.cluster), body.shape);
}

TEST_F(SkinBinding, WeightsFallOffWithDistanceUpToMaxInfluences) {
    NodePtr mesh = plane(scene(), "sheet");
    std::vector<NodePtr> joints = jointsAlongX(scene(), 5);
    runtime::BindOptions options;
    options.maxInfluences = 2;
    HStatus status;
    NodePtr cluster = runtime::bindSkin(scene(), joints, *mesh, options, &status);
    ASSERT_TRUE(status) << status.errorString().asChar();
    const runtime::SkinClusterData& data = *cluster->skinCluster();
    const runtime::MeshData& geometry = *mesh->children()[0]->mesh();
    ASSERT_EQ(data.weights().vertexCount(), geometry.vertexCount());
    for (unsigned v = 0; v < geometry.vertexCount(); ++v) {
        unsigned count = data.weights().entryCount(v);
        EXPECT_GE(count, 1u);
        EXPECT_LE(count, 2u);
        double sum = 0.0, heaviest = 0.0;
        unsigned heaviestJoint = 0;
        for (unsigned e = 0; e < count; ++e) {
            sum += data.weights().weights(v)[e];
            if (data.weights().weights(v)[e] > heaviest) {
                heaviest = data.weights().weights(v)[e];
                heaviestJoint = data.weights().influences(v)[e];
            }
        }
        EXPECT_NEAR(sum, 1.0, 1e-12);
        // A vertex level with a joint along X is mostly that joint's.
        double x = geometry.point(v).x;
        if (x == std::round(x)) {
            EXPECT_EQ(heaviestJoint, static_cast<unsigned>(x + 2.0)) << "vertex " << v;
        }
    }
    EXPECT_EQ(data.bindPosition(4).x, 2.0);
}

TEST_F(SkinBinding, RefusesWhatCannotBeBound) {
    NodePtr mesh = plane(scene(), "sheet");
    std::vector<NodePtr> joints = jointsAlongX(scene(), 2);
    HStatus status;
    runtime::bindSkin(scene(), {}, *mesh, {}, &status);
    EXPECT_STREQ(status.errorString().asChar(), "A skin cluster needs at least one joint.");
    runtime::bindSkin(scene(), {joints[0], joints[0]}, *mesh, {}, &status);
    EXPECT_STREQ(status.errorString().asChar(), "joint1 is listed twice.");
    runtime::bindSkin(scene(), joints, *joints[0], {}, &status);
    EXPECT_STREQ(status.errorString().asChar(), "joint1 is not a mesh.");
    size_t before = scene().nodeCount();

    ASSERT_TRUE(runtime::bindSkin(scene(), joints, *mesh, {}, &status));
    EXPECT_EQ(scene().nodeCount(), before + 3);
    runtime::bindSkin(scene(), joints, *mesh, {}, &status);
    EXPECT_STREQ(status.errorString().asChar(), "sheetShape is already bound to skinCluster1.");

    NodePtr second = plane(scene(), "other");
    NodePtr cluster = runtime::bindSkin(scene(), joints, *second, {}, &status);
    EXPECT_EQ(cluster->name(), "skinCluster2");
    EXPECT_TRUE(scene().findNode("skinCluster2Set"));
    EXPECT_TRUE(scene().findNode("skinCluster2GroupId"));
}
