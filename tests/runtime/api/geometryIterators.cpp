#include "HItGeometry.h"
#include "HItMeshVertex.h"
#include "scene/MeshData.h"
#include "scene/Scene.h"
#include "sceneFixture.h"

#include <gtest/gtest.h>

using fixture::FreshScene;

using GeometryIterators = FreshScene;

TEST_F(GeometryIterators, VisitEveryVertexInOrderOrAComponentsInItsOrder) {
    fixture::SkinnedMeshOptions options;
    options.vertices = 10;
    fixture::SkinnedMesh body = fixture::makeSkinnedMesh(options);
    std::vector<int> visited;
    for (HItGeometry it(body.shapePath()); !it.isDone(); it.next())
        visited.push_back(it.index());
    EXPECT_EQ(visited, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));

    HDagPath transform = fixture::pathOf(body.transform);
    HItMeshVertex vertices(transform, fixture::vertexComponent({7, 2, 40, 5}));
    EXPECT_EQ(vertices.count(), 3);
    visited.clear();
    for (; !vertices.isDone(); vertices.next()) {
        visited.push_back(vertices.index());
        HPoint expected = body.shape->mesh()->point(static_cast<unsigned>(vertices.index()));
        EXPECT_EQ(vertices.position().x, expected.x);
        EXPECT_EQ(vertices.position().z, expected.z);
    }
    EXPECT_EQ(visited, (std::vector<int>{7, 2, 5}));
    EXPECT_EQ(vertices.next().statusCode(), HS::kInvalidParameter);
    vertices.reset();
    EXPECT_EQ(vertices.index(), 7);
}

TEST_F(GeometryIterators, NothingToVisitOnOtherObjects) {
    HStatus status;
    HItMeshVertex onJoint(fixture::objectOf(scene().createNode("joint")), &status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_TRUE(onJoint.isDone());
    EXPECT_EQ(onJoint.count(), 0);
    HItGeometry onNothing(HDagPath(), HObject(), &status);
    EXPECT_FALSE(status);
    EXPECT_TRUE(onNothing.isDone());

    fixture::SkinnedMesh body = fixture::makeSkinnedMesh();
    HItMeshVertex it(body.shapePath());
    scene().deleteNodes({body.transform});
    it.position(&status);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
}
