#include "scene/MeshData.h"

#include "scene/MeshPrimitives.h"

#include <algorithm>
#include <gtest/gtest.h>

using runtime::MeshData;
using runtime::MeshGeometry;

namespace {

MeshData meshOf(const MeshGeometry& geometry) {
    MeshData mesh;
    EXPECT_TRUE(mesh.setGeometry(geometry));
    return mesh;
}

// Every polygon of a closed convex mesh centred at the origin faces away from the centre.
void expectOutwardAndCentred(const MeshData& mesh) {
    HPoint low(1e9, 1e9, 1e9), high(-1e9, -1e9, -1e9);
    for (const HPoint& p : mesh.points()) {
        low = HPoint(std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z));
        high = HPoint(std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z));
    }
    EXPECT_NEAR(low.x + high.x, 0.0, 1e-12);
    EXPECT_NEAR(low.y + high.y, 0.0, 1e-12);
    EXPECT_NEAR(low.z + high.z, 0.0, 1e-12);
    for (unsigned f = 0; f < mesh.polygonCount(); ++f) {
        runtime::IndexRange polygon = mesh.polygon(f);
        HPoint a = mesh.point(polygon[0]), b = mesh.point(polygon[1]), c = mesh.point(polygon[2]);
        HPoint u(b.x - a.x, b.y - a.y, b.z - a.z), w(c.x - a.x, c.y - a.y, c.z - a.z);
        HPoint normal(u.y * w.z - u.z * w.y, u.z * w.x - u.x * w.z, u.x * w.y - u.y * w.x);
        HPoint centre;
        for (int v : polygon)
            centre = HPoint(centre.x + mesh.point(v).x, centre.y + mesh.point(v).y,
                            centre.z + mesh.point(v).z);
        EXPECT_GT(normal.x * centre.x + normal.y * centre.y + normal.z * centre.z, 0.0)
            << "polygon " << f;
    }
}

} // namespace

TEST(MeshPrimitives, HaveTheExpectedCountsAndFaceOutward) {
    MeshGeometry geometry;
    ASSERT_TRUE(runtime::makePlane({}, geometry));
    MeshData plane = meshOf(geometry);
    EXPECT_EQ(plane.vertexCount(), 121u);
    EXPECT_EQ(plane.polygonCount(), 100u);
    EXPECT_EQ(plane.edgeCount(), 220u);
    for (const HPoint& p : plane.points())
        EXPECT_EQ(p.y, 0.0);

    runtime::CubeParameters cube;
    cube.subdivisionsX = cube.subdivisionsY = cube.subdivisionsZ = 2;
    ASSERT_TRUE(runtime::makeCube(cube, geometry));
    MeshData box = meshOf(geometry);
    EXPECT_EQ(box.vertexCount(), 26u);
    EXPECT_EQ(box.polygonCount(), 24u);
    // A closed surface: V - E + F = 2.
    EXPECT_EQ(int(box.vertexCount()) - int(box.edgeCount()) + int(box.polygonCount()), 2);
    expectOutwardAndCentred(box);

    ASSERT_TRUE(runtime::makeCylinder({}, geometry));
    MeshData cylinder = meshOf(geometry);
    EXPECT_EQ(cylinder.vertexCount(), 42u);
    EXPECT_EQ(
        int(cylinder.vertexCount()) - int(cylinder.edgeCount()) + int(cylinder.polygonCount()), 2);
    expectOutwardAndCentred(cylinder);
    double top = 0.0;
    for (const HPoint& p : cylinder.points())
        top = std::max(top, p.y);
    EXPECT_EQ(top, 1.0);

    ASSERT_TRUE(runtime::makeSphere({}, geometry));
    MeshData sphere = meshOf(geometry);
    EXPECT_EQ(sphere.vertexCount(), 382u);
    EXPECT_EQ(int(sphere.vertexCount()) - int(sphere.edgeCount()) + int(sphere.polygonCount()), 2);
    expectOutwardAndCentred(sphere);
}

TEST(MeshPrimitives, RefuseBadParameters) {
    MeshGeometry geometry;
    runtime::PlaneParameters plane;
    plane.width = 0.0;
    EXPECT_STREQ(runtime::makePlane(plane, geometry).errorString().asChar(),
                 "The width must be a positive number.");
    plane.width = 1.0;
    plane.subdivisionsX = 100000;
    plane.subdivisionsY = 100000;
    EXPECT_FALSE(runtime::makePlane(plane, geometry));
    runtime::CylinderParameters cylinder;
    cylinder.subdivisionsAround = 2;
    EXPECT_STREQ(runtime::makeCylinder(cylinder, geometry).errorString().asChar(),
                 "The around subdivisions must be at least 3.");
    runtime::SphereParameters sphere;
    sphere.radius = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(runtime::makeSphere(sphere, geometry));
}

TEST(MeshTopology, NeighboursAreTheEdgeEndsOfEachVertex) {
    // Two quads sharing the edge 1-4:  0-1-2 over 3-4-5.
    MeshGeometry geometry;
    for (int i = 0; i < 6; ++i)
        geometry.points.emplace_back(i % 3, 0, i / 3);
    geometry.polygonSizes = {4, 4};
    geometry.polygonVertices = {0, 3, 4, 1, 1, 4, 5, 2};
    MeshData mesh = meshOf(geometry);
    EXPECT_EQ(mesh.edgeCount(), 7u);
    auto neighbours = [&](unsigned v) {
        runtime::IndexRange range = mesh.neighbours(v);
        return std::vector<int>(range.begin(), range.end());
    };
    EXPECT_EQ(neighbours(1), (std::vector<int>{0, 2, 4}));
    EXPECT_EQ(neighbours(3), (std::vector<int>{0, 4}));
    EXPECT_EQ(neighbours(4), (std::vector<int>{1, 3, 5}));

    // Changing the polygons replaces the cached neighbours.
    geometry.polygonSizes = {3};
    geometry.polygonVertices = {0, 1, 2};
    ASSERT_TRUE(mesh.setGeometry(geometry));
    EXPECT_EQ(neighbours(1), (std::vector<int>{0, 2}));
    EXPECT_TRUE(neighbours(4).empty());
}

TEST(MeshTopology, MalformedGeometryIsRefusedAndChangesNothing) {
    MeshGeometry good;
    runtime::makePlane({}, good);
    MeshData mesh = meshOf(good);
    MeshGeometry bad = good;
    bad.polygonVertices[5] = 121;
    EXPECT_STREQ(mesh.setGeometry(bad).errorString().asChar(),
                 "Polygon vertex index 121 is out of range.");
    bad = good;
    bad.polygonSizes[0] = 2;
    EXPECT_FALSE(mesh.setGeometry(bad));
    bad = good;
    bad.polygonSizes.pop_back();
    EXPECT_FALSE(mesh.setGeometry(bad));
    EXPECT_EQ(mesh.polygonCount(), 100u);
    EXPECT_FALSE(mesh.setPoint(121, HPoint()));
    EXPECT_FALSE(mesh.setPoints({HPoint()}));
}
