#include "files/GltfGeometryReader.h"

#include <QString>
#include <climits>
#include <cmath>
#include <map>
#include <tiny_gltf.h>
namespace runtime {

namespace {

std::string primitiveName(int mesh, int primitive) {
    return "mesh " + std::to_string(mesh) + " primitive " + std::to_string(primitive);
}

bool allFinite(const std::vector<double>& values) {
    for (double value : values)
        if (!std::isfinite(value))
            return false;
    return true;
}

// The vertex indices of a primitive: its indices accessor, or 0..n-1 when it has none.
bool primitiveIndices(const tinygltf::Primitive& primitive, int vertexCount,
                      GltfAccessorReader& accessors, std::vector<std::uint32_t>& indices,
                      std::string& problem) {
    if (primitive.indices < 0) {
        indices.resize(static_cast<std::size_t>(vertexCount));
        for (int v = 0; v < vertexCount; ++v)
            indices[v] = static_cast<std::uint32_t>(v);
        return true;
    }
    if (!accessors.readIntegers(primitive.indices, 1, indices, problem))
        return false;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        if (indices[i] >= static_cast<std::uint32_t>(vertexCount)) {
            problem = "accessor " + std::to_string(primitive.indices) + " has index " +
                      std::to_string(indices[i]) + " at position " + std::to_string(i) +
                      ", beyond the primitive's " + std::to_string(vertexCount) + " vertices";
            return false;
        }
    }
    return true;
}

// Appends the triangles that the primitive's drawing mode makes of `indices`, their vertex
// indices moved by `base`.
bool appendTriangles(int mode, const std::vector<std::uint32_t>& indices, int base, SceneMesh& mesh,
                     std::string& problem) {
    const std::size_t n = indices.size();
    auto triangle = [&](std::size_t a, std::size_t b, std::size_t c) {
        mesh.polygonSizes.push_back(3);
        for (std::size_t i : {a, b, c})
            mesh.polygonVertices.push_back(base + static_cast<int>(indices[i]));
    };
    switch (mode) {
    case TINYGLTF_MODE_POINTS:
    case TINYGLTF_MODE_LINE:
    case TINYGLTF_MODE_LINE_LOOP:
    case TINYGLTF_MODE_LINE_STRIP:
        return true; // vertices without faces
    case TINYGLTF_MODE_TRIANGLES:
        for (std::size_t i = 0; i + 2 < n; i += 3)
            triangle(i, i + 1, i + 2);
        return true;
    case TINYGLTF_MODE_TRIANGLE_STRIP:
        for (std::size_t i = 0; i + 2 < n; ++i)
            i % 2 == 0 ? triangle(i, i + 1, i + 2) : triangle(i, i + 2, i + 1);
        return true;
    case TINYGLTF_MODE_TRIANGLE_FAN:
        for (std::size_t i = 0; i + 2 < n; ++i)
            triangle(i + 1, i + 2, 0);
        return true;
    default:
        problem = "drawing mode " + std::to_string(mode) + " is not a glTF mode";
        return false;
    }
}

int attributeOf(const tinygltf::Primitive& primitive, const std::string& name) {
    auto it = primitive.attributes.find(name);
    return it == primitive.attributes.end() ? -1 : it->second;
}

// The numbers n of the primitive's JOINTS_n / WEIGHTS_n sets; each must come as a pair.
bool weightSets(const tinygltf::Primitive& primitive, std::vector<std::pair<int, int>>& sets,
                std::string& problem) {
    std::map<int, std::pair<int, int>> found; // set number -> (joints, weights) accessors
    for (const auto& [name, accessor] : primitive.attributes) {
        const bool joints = name.rfind("JOINTS_", 0) == 0;
        const bool weights = name.rfind("WEIGHTS_", 0) == 0;
        if (!joints && !weights)
            continue;
        const std::string number = name.substr(joints ? 7 : 8);
        if (number.empty() || number.size() > 3 ||
            number.find_first_not_of("0123456789") != std::string::npos) {
            problem = "attribute " + name + " is not a valid set name";
            return false;
        }
        auto& pair = found.try_emplace(std::stoi(number), -1, -1).first->second;
        (joints ? pair.first : pair.second) = accessor;
    }
    sets.clear();
    for (const auto& [number, pair] : found) {
        if (pair.first < 0 || pair.second < 0) {
            problem =
                "set " + std::to_string(number) + " has JOINTS without WEIGHTS or the reverse";
            return false;
        }
        sets.push_back(pair);
    }
    return true;
}

} // namespace

bool readGltfMesh(const tinygltf::Model& model, int meshIndex, GltfAccessorReader& accessors,
                  SceneMesh& mesh, std::vector<PrimitiveSpan>& spans, std::string& problem) {
    const tinygltf::Mesh& source = model.meshes[meshIndex];
    mesh = SceneMesh{};
    mesh.name = source.name;
    mesh.sourceIndex = meshIndex;
    spans.clear();
    std::vector<double> positions;
    std::vector<std::uint32_t> indices;
    for (int p = 0; p < static_cast<int>(source.primitives.size()); ++p) {
        const tinygltf::Primitive& primitive = source.primitives[p];
        const int base = mesh.vertexCount();
        const int positionAccessor = attributeOf(primitive, "POSITION");
        if (positionAccessor < 0) {
            spans.push_back({base, 0}); // nothing to show, nothing to skin
            continue;
        }
        if (!accessors.readNumbers(positionAccessor, 3, positions, problem)) {
            problem = primitiveName(meshIndex, p) + ": " + problem;
            return false;
        }
        const std::size_t count = positions.size() / 3;
        if (!allFinite(positions) || count > static_cast<std::size_t>(INT_MAX - base)) {
            problem =
                primitiveName(meshIndex, p) + " has positions that are not finite or too many";
            return false;
        }
        for (std::size_t v = 0; v < count; ++v)
            mesh.points.push_back({positions[3 * v], positions[3 * v + 1], positions[3 * v + 2]});
        spans.push_back({base, static_cast<int>(count)});
        if (!primitiveIndices(primitive, static_cast<int>(count), accessors, indices, problem) ||
            !appendTriangles(primitive.mode, indices, base, mesh, problem)) {
            problem = primitiveName(meshIndex, p) + ": " + problem;
            return false;
        }
    }
    return true;
}

bool readGltfSkinWeights(const tinygltf::Model& model, int meshIndex,
                         const std::vector<PrimitiveSpan>& spans, int jointCount,
                         GltfAccessorReader& accessors, SparseSkinWeights& weights,
                         std::string& problem) {
    const tinygltf::Mesh& mesh = model.meshes[meshIndex];
    weights.clear();
    std::vector<std::pair<int, int>> sets;
    std::vector<std::vector<std::uint32_t>> joints;
    std::vector<std::vector<double>> values;
    for (int p = 0; p < static_cast<int>(mesh.primitives.size()); ++p) {
        const int count = spans[p].vertexCount;
        const std::string where = primitiveName(meshIndex, p);
        if (!weightSets(mesh.primitives[p], sets, problem)) {
            problem = where + ": " + problem;
            return false;
        }
        joints.resize(sets.size());
        values.resize(sets.size());
        for (std::size_t s = 0; s < sets.size(); ++s) {
            if (!accessors.readIntegers(sets[s].first, 4, joints[s], problem) ||
                !accessors.readNumbers(sets[s].second, 4, values[s], problem)) {
                problem = where + ": " + problem;
                return false;
            }
            if (joints[s].size() != 4u * count || values[s].size() != 4u * count) {
                problem = where + " has weight sets whose count differs from its " +
                          std::to_string(count) + " vertices";
                return false;
            }
        }
        for (int v = 0; v < count; ++v) {
            weights.startVertex();
            for (std::size_t s = 0; s < sets.size(); ++s) {
                for (int c = 0; c < 4; ++c) {
                    const double weight = values[s][4 * v + c];
                    if (weight == 0.0)
                        continue;
                    const std::uint32_t joint = joints[s][4 * v + c];
                    if (!std::isfinite(weight)) {
                        problem = where + " vertex " + std::to_string(v) + " has the weight " +
                                  QString::number(weight).toStdString() +
                                  ", which is not a finite number";
                        return false;
                    }
                    if (joint >= static_cast<std::uint32_t>(jointCount)) {
                        problem = where + " vertex " + std::to_string(v) + " has joint " +
                                  std::to_string(joint) + " with weight " +
                                  QString::number(weight).toStdString() + ", but the skin has " +
                                  std::to_string(jointCount) + " joints";
                        return false;
                    }
                    weights.add(static_cast<int>(joint), weight);
                }
            }
        }
    }
    return true;
}

bool readGltfInverseBindMatrices(const tinygltf::Model& model, int skinIndex,
                                 GltfAccessorReader& accessors, std::vector<Matrix4>& matrices,
                                 std::string& problem) {
    const tinygltf::Skin& skin = model.skins[skinIndex];
    const std::size_t jointCount = skin.joints.size();
    matrices.assign(jointCount, identityMatrix());
    if (skin.inverseBindMatrices < 0)
        return true;
    std::vector<double> values;
    if (!accessors.readNumbers(skin.inverseBindMatrices, 16, values, problem)) {
        problem = "skin " + std::to_string(skinIndex) + ": " + problem;
        return false;
    }
    if (values.size() < 16 * jointCount || !allFinite(values)) {
        problem = "skin " + std::to_string(skinIndex) + " has " +
                  std::to_string(values.size() / 16) + " inverse bind matrices for " +
                  std::to_string(jointCount) + " joints, or matrices that are not finite";
        return false;
    }
    for (std::size_t j = 0; j < jointCount; ++j)
        std::copy(values.begin() + 16 * j, values.begin() + 16 * (j + 1), matrices[j].begin());
    return true;
}

} // namespace runtime
