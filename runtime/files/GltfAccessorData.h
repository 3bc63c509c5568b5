// The data of the accessors the glTF writer makes: points, triangle indices, inverse bind
// matrices and weight sets, packed as glTF stores them (little-endian floats and unsigned
// integers) with the bounds glTF asks for.
#pragma once

#include "files/GltfBinaryPlan.h"
#include "files/GltfWeightSets.h"
#include "files/SceneDescription.h"

#include <array>
#include <cstdint>
#include <vector>

namespace runtime {

// Points [first, first + count) as float VEC3, with the exact min and max of the floats.
AccessorData positionData(const std::vector<std::array<double, 3>>& points, int first, int count);

// The polygons cut into triangles (fans from each polygon's first vertex) as SCALAR indices,
// 16-bit when the vertex count allows; empty when there are no triangles.
std::vector<std::uint32_t> triangulate(const SceneMesh& mesh);
AccessorData indexData(const std::vector<std::uint32_t>& indices, int vertexCount);

AccessorData inverseBindMatrixData(const std::vector<Matrix4>& matrices);

// Set `set` of `sets` as JOINTS (8-bit indices when `jointCount` allows, else 16-bit) and as
// float WEIGHTS.
AccessorData jointsData(const WeightSets& sets, int set, int jointCount);
AccessorData weightsData(const WeightSets& sets, int set);

} // namespace runtime
