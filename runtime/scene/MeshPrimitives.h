// MeshPrimitives: generators for the basic meshes (plane, cube, cylinder, sphere), centred at
// the origin, with outward-facing polygons, and the one call that puts a mesh into the scene
// as a transform with a mesh shape under it.
//
// Generators check their parameters: sizes must be positive finite numbers and
// subdivisions at least 1 (3 around a cylinder or sphere, 2 from pole to pole); a mesh of
// more than kMaxPrimitiveVertices vertices is refused instead of exhausting memory.
#pragma once

#include "HStatus.h"
#include "scene/MeshData.h"
#include "scene/Node.h"

#include <string>

namespace runtime {

class Scene;

constexpr unsigned kMaxPrimitiveVertices = 20000000;

// In the XZ plane, facing +Y: width along X, height along Z.
struct PlaneParameters {
    double width = 1.0, height = 1.0;
    int subdivisionsX = 10, subdivisionsY = 10;
};
struct CubeParameters {
    double width = 1.0, height = 1.0, depth = 1.0;
    int subdivisionsX = 1, subdivisionsY = 1, subdivisionsZ = 1;
};
// Along Y, closed with a fan of triangles at each end.
struct CylinderParameters {
    double radius = 1.0, height = 2.0;
    int subdivisionsAround = 20, subdivisionsHeight = 1;
};
struct SphereParameters {
    double radius = 1.0;
    int subdivisionsAround = 20, subdivisionsHeight = 20;
};

HStatus makePlane(const PlaneParameters& parameters, MeshGeometry& geometry);
HStatus makeCube(const CubeParameters& parameters, MeshGeometry& geometry);
HStatus makeCylinder(const CylinderParameters& parameters, MeshGeometry& geometry);
HStatus makeSphere(const SphereParameters& parameters, MeshGeometry& geometry);

// A transform called name (made unique) with a mesh shape name + "Shape" under it, holding
// the geometry. Returns the transform.
NodePtr createMeshObject(Scene& scene, MeshGeometry geometry, const std::string& name,
                         HStatus* status = nullptr);

} // namespace runtime
