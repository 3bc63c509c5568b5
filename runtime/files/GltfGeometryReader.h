// Decoding the geometry of a loaded glTF document into its description form: a mesh's points
// and polygons (its primitives one after the other, vertex order kept), the weights of a skin
// on it (every JOINTS_n / WEIGHTS_n set, as stored), and a skin's inverse bind matrices.
//
// Every function checks what it reads (indices against vertex counts, joints against the skin,
// counts against the data) and fails with a problem text naming the mesh, primitive or skin.
#pragma once

#include "files/GltfAccessors.h"
#include "files/GltfSource.h"
#include "files/SceneDescription.h"

#include <string>
#include <vector>

namespace tinygltf {
class Model;
}

namespace runtime {

bool readGltfMesh(const tinygltf::Model& model, int meshIndex, GltfAccessorReader& accessors,
                  SceneMesh& mesh, std::vector<PrimitiveSpan>& spans, std::string& problem);

// The weights of every vertex of mesh `meshIndex` (laid out as `spans`) for a skin of
// `jointCount` joints. Zero weights are left out; a joint repeated on a vertex adds up.
bool readGltfSkinWeights(const tinygltf::Model& model, int meshIndex,
                         const std::vector<PrimitiveSpan>& spans, int jointCount,
                         GltfAccessorReader& accessors, SparseSkinWeights& weights,
                         std::string& problem);

// One matrix per joint of skin `skinIndex`; identity matrices when the skin gives none.
bool readGltfInverseBindMatrices(const tinygltf::Model& model, int skinIndex,
                                 GltfAccessorReader& accessors, std::vector<Matrix4>& matrices,
                                 std::string& problem);

} // namespace runtime
