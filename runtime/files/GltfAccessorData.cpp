#include "files/GltfAccessorData.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace runtime {

namespace {

constexpr int kUnsignedByte = 5121;
constexpr int kUnsignedShort = 5123;
constexpr int kUnsignedInt = 5125;
constexpr int kFloat = 5126;

template <typename T> void append(std::vector<unsigned char>& bytes, T value) {
    unsigned char raw[sizeof(T)];
    std::memcpy(raw, &value, sizeof(T));
    bytes.insert(bytes.end(), raw, raw + sizeof(T));
}

} // namespace

AccessorData positionData(const std::vector<std::array<double, 3>>& points, int first, int count) {
    AccessorData data;
    data.componentType = kFloat;
    data.type = "VEC3";
    data.count = static_cast<std::size_t>(count);
    data.target = kVertexDataTarget;
    data.bytes.reserve(static_cast<std::size_t>(count) * 12);
    std::array<float, 3> low;
    std::array<float, 3> high;
    low.fill(std::numeric_limits<float>::max());
    high.fill(std::numeric_limits<float>::lowest());
    for (int v = first; v < first + count; ++v)
        for (int c = 0; c < 3; ++c) {
            const float value = static_cast<float>(points[v][c]);
            low[c] = std::min(low[c], value);
            high[c] = std::max(high[c], value);
            append(data.bytes, value);
        }
    data.min = {low[0], low[1], low[2]};
    data.max = {high[0], high[1], high[2]};
    return data;
}

std::vector<std::uint32_t> triangulate(const SceneMesh& mesh) {
    std::vector<std::uint32_t> indices;
    std::size_t corner = 0;
    for (int size : mesh.polygonSizes) {
        for (int k = 1; k + 1 < size; ++k)
            for (int c : {0, k, k + 1})
                indices.push_back(static_cast<std::uint32_t>(mesh.polygonVertices[corner + c]));
        corner += static_cast<std::size_t>(size);
    }
    return indices;
}

AccessorData indexData(const std::vector<std::uint32_t>& indices, int vertexCount) {
    AccessorData data;
    // The largest value of each type means "restart" and is not allowed as an index.
    const bool narrow = vertexCount < 65535;
    data.componentType = narrow ? kUnsignedShort : kUnsignedInt;
    data.type = "SCALAR";
    data.count = indices.size();
    data.target = kIndexDataTarget;
    data.bytes.reserve(indices.size() * (narrow ? 2 : 4));
    for (std::uint32_t index : indices)
        narrow ? append(data.bytes, static_cast<std::uint16_t>(index)) : append(data.bytes, index);
    return data;
}

AccessorData inverseBindMatrixData(const std::vector<Matrix4>& matrices) {
    AccessorData data;
    data.componentType = kFloat;
    data.type = "MAT4";
    data.count = matrices.size();
    data.bytes.reserve(matrices.size() * 64);
    for (const Matrix4& matrix : matrices)
        for (double value : matrix)
            append(data.bytes, static_cast<float>(value));
    return data;
}

AccessorData jointsData(const WeightSets& sets, int set, int jointCount) {
    AccessorData data;
    const bool narrow = jointCount <= 256;
    data.componentType = narrow ? kUnsignedByte : kUnsignedShort;
    data.type = "VEC4";
    data.count = static_cast<std::size_t>(sets.vertexCount);
    data.target = kVertexDataTarget;
    const std::size_t begin = static_cast<std::size_t>(set) * sets.vertexCount * 4;
    const std::size_t end = begin + static_cast<std::size_t>(sets.vertexCount) * 4;
    data.bytes.reserve((end - begin) * (narrow ? 1 : 2));
    for (std::size_t i = begin; i < end; ++i)
        narrow ? append(data.bytes, static_cast<std::uint8_t>(sets.joints[i]))
               : append(data.bytes, sets.joints[i]);
    return data;
}

AccessorData weightsData(const WeightSets& sets, int set) {
    AccessorData data;
    data.componentType = kFloat;
    data.type = "VEC4";
    data.count = static_cast<std::size_t>(sets.vertexCount);
    data.target = kVertexDataTarget;
    const std::size_t begin = static_cast<std::size_t>(set) * sets.vertexCount * 4;
    const std::size_t count = static_cast<std::size_t>(sets.vertexCount) * 4;
    data.bytes.resize(count * sizeof(float));
    std::memcpy(data.bytes.data(), sets.weights.data() + begin, data.bytes.size());
    return data;
}

} // namespace runtime
