#include "scene/MeshPrimitives.h"

#include "api/StatusReport.h"
#include "scene/Scene.h"

#include <cmath>
#include <vector>

namespace runtime {

namespace {

const double kPi = 3.14159265358979323846;

struct Size {
    double value;
    const char* name;
};
struct Subdivisions {
    int value;
    int least;
    const char* name;
};

// Sizes must be positive finite numbers, subdivisions at least their least, and the mesh no
// larger than kMaxPrimitiveVertices.
HStatus checkParameters(std::initializer_list<Size> sizes,
                        std::initializer_list<Subdivisions> subdivisions, double vertexCount) {
    for (const Size& size : sizes)
        if (!std::isfinite(size.value) || size.value <= 0.0)
            return invalidParameter(std::string("The ") + size.name +
                                    " must be a positive number.");
    for (const Subdivisions& count : subdivisions)
        if (count.value < count.least)
            return invalidParameter(std::string("The ") + count.name +
                                    " subdivisions must be at least " +
                                    std::to_string(count.least) + ".");
    if (vertexCount > kMaxPrimitiveVertices)
        return invalidParameter("The mesh would have more than " +
                                std::to_string(kMaxPrimitiveVertices) + " vertices.");
    return HS::kSuccess;
}

void addPolygon(MeshGeometry& geometry, std::initializer_list<int> vertices) {
    geometry.polygonSizes.push_back(static_cast<int>(vertices.size()));
    geometry.polygonVertices.insert(geometry.polygonVertices.end(), vertices);
}

// Rings of `around` points stacked along Y (ring r at heights[r] with radii[r]), joined by
// quads, with optional single points closing the bottom and the top.
void makeRings(const std::vector<double>& heights, const std::vector<double>& radii, int around,
               const double* bottom, const double* top, MeshGeometry& geometry) {
    int rings = static_cast<int>(heights.size());
    for (int r = 0; r < rings; ++r)
        for (int i = 0; i < around; ++i) {
            double angle = 2.0 * kPi * i / around;
            geometry.points.emplace_back(radii[r] * std::cos(angle), heights[r],
                                         -radii[r] * std::sin(angle));
        }
    auto at = [around](int ring, int i) { return ring * around + (i % around); };
    for (int r = 0; r + 1 < rings; ++r)
        for (int i = 0; i < around; ++i)
            addPolygon(geometry, {at(r, i), at(r, i + 1), at(r + 1, i + 1), at(r + 1, i)});
    if (bottom) {
        int centre = static_cast<int>(geometry.points.size());
        geometry.points.emplace_back(0.0, *bottom, 0.0);
        for (int i = 0; i < around; ++i)
            addPolygon(geometry, {centre, at(0, i + 1), at(0, i)});
    }
    if (top) {
        int centre = static_cast<int>(geometry.points.size());
        geometry.points.emplace_back(0.0, *top, 0.0);
        for (int i = 0; i < around; ++i)
            addPolygon(geometry, {centre, at(rings - 1, i), at(rings - 1, i + 1)});
    }
}

} // namespace

HStatus makePlane(const PlaneParameters& p, MeshGeometry& geometry) {
    HStatus status = checkParameters({{p.width, "width"}, {p.height, "height"}},
                                     {{p.subdivisionsX, 1, "X"}, {p.subdivisionsY, 1, "Y"}},
                                     (p.subdivisionsX + 1.0) * (p.subdivisionsY + 1.0));
    if (!status)
        return status;
    geometry = MeshGeometry();
    int columns = p.subdivisionsX + 1;
    for (int j = 0; j <= p.subdivisionsY; ++j)
        for (int i = 0; i < columns; ++i)
            geometry.points.emplace_back(
                p.width * (static_cast<double>(i) / p.subdivisionsX - 0.5), 0.0,
                p.height * (static_cast<double>(j) / p.subdivisionsY - 0.5));
    for (int j = 0; j < p.subdivisionsY; ++j)
        for (int i = 0; i < p.subdivisionsX; ++i) {
            int a = j * columns + i;
            addPolygon(geometry, {a, a + columns, a + columns + 1, a + 1});
        }
    return HS::kSuccess;
}

HStatus makeCube(const CubeParameters& p, MeshGeometry& geometry) {
    double x = p.subdivisionsX + 1.0, y = p.subdivisionsY + 1.0, z = p.subdivisionsZ + 1.0;
    HStatus status = checkParameters(
        {{p.width, "width"}, {p.height, "height"}, {p.depth, "depth"}},
        {{p.subdivisionsX, 1, "X"}, {p.subdivisionsY, 1, "Y"}, {p.subdivisionsZ, 1, "Z"}},
        2.0 * (x * y + y * z + z * x));
    if (!status)
        return status;
    geometry = MeshGeometry();
    const int n[3] = {p.subdivisionsX, p.subdivisionsY, p.subdivisionsZ};
    const double size[3] = {p.width, p.height, p.depth};
    // Surface points of the lattice, numbered as the faces first reach them.
    std::vector<int> index(static_cast<size_t>(n[0] + 1) * (n[1] + 1) * (n[2] + 1), -1);
    auto vertex = [&](const int(&c)[3]) {
        int& slot = index[(static_cast<size_t>(c[0]) * (n[1] + 1) + c[1]) * (n[2] + 1) + c[2]];
        if (slot < 0) {
            slot = static_cast<int>(geometry.points.size());
            geometry.points.emplace_back(size[0] * (static_cast<double>(c[0]) / n[0] - 0.5),
                                         size[1] * (static_cast<double>(c[1]) / n[1] - 0.5),
                                         size[2] * (static_cast<double>(c[2]) / n[2] - 0.5));
        }
        return slot;
    };
    for (int axis = 0; axis < 3; ++axis)
        for (int side = 0; side < 2; ++side) {
            // u x v points out of the face: +axis on the high side, -axis on the low one.
            int u = (axis + 1) % 3, v = (axis + 2) % 3;
            if (side == 0)
                std::swap(u, v);
            for (int a = 0; a < n[u]; ++a)
                for (int b = 0; b < n[v]; ++b) {
                    int c0[3], c1[3], c2[3], c3[3];
                    for (int* c : {c0, c1, c2, c3})
                        c[axis] = side ? n[axis] : 0;
                    c0[u] = a, c0[v] = b;
                    c1[u] = a + 1, c1[v] = b;
                    c2[u] = a + 1, c2[v] = b + 1;
                    c3[u] = a, c3[v] = b + 1;
                    addPolygon(geometry, {vertex(c0), vertex(c1), vertex(c2), vertex(c3)});
                }
        }
    return HS::kSuccess;
}

HStatus makeCylinder(const CylinderParameters& p, MeshGeometry& geometry) {
    HStatus status =
        checkParameters({{p.radius, "radius"}, {p.height, "height"}},
                        {{p.subdivisionsAround, 3, "around"}, {p.subdivisionsHeight, 1, "height"}},
                        p.subdivisionsAround * (p.subdivisionsHeight + 1.0) + 2.0);
    if (!status)
        return status;
    geometry = MeshGeometry();
    std::vector<double> heights, radii;
    for (int r = 0; r <= p.subdivisionsHeight; ++r) {
        heights.push_back(p.height * (static_cast<double>(r) / p.subdivisionsHeight - 0.5));
        radii.push_back(p.radius);
    }
    double bottom = -0.5 * p.height, top = 0.5 * p.height;
    makeRings(heights, radii, p.subdivisionsAround, &bottom, &top, geometry);
    return HS::kSuccess;
}

HStatus makeSphere(const SphereParameters& p, MeshGeometry& geometry) {
    HStatus status =
        checkParameters({{p.radius, "radius"}},
                        {{p.subdivisionsAround, 3, "around"}, {p.subdivisionsHeight, 2, "height"}},
                        p.subdivisionsAround * (p.subdivisionsHeight - 1.0) + 2.0);
    if (!status)
        return status;
    geometry = MeshGeometry();
    std::vector<double> heights, radii;
    for (int r = 1; r < p.subdivisionsHeight; ++r) {
        double polar = kPi * r / p.subdivisionsHeight;
        heights.push_back(-p.radius * std::cos(polar));
        radii.push_back(p.radius * std::sin(polar));
    }
    double bottom = -p.radius, top = p.radius;
    makeRings(heights, radii, p.subdivisionsAround, &bottom, &top, geometry);
    return HS::kSuccess;
}

NodePtr createMeshObject(Scene& scene, MeshGeometry geometry, const std::string& name,
                         HStatus* status) {
    HStatus checked = MeshData::validate(geometry);
    NodePtr transform;
    if (checked)
        transform = scene.createNode("transform", name, nullptr, &checked);
    NodePtr shape;
    if (checked)
        shape = scene.createNode("mesh", transform->name() + "Shape", transform.get(), &checked);
    if (checked)
        checked = scene.setMeshGeometry(*shape, std::move(geometry));
    if (status)
        *status = checked;
    return checked ? transform : nullptr;
}

} // namespace runtime
