#include "files/GltfAccessors.h"

#include <cstring>
#include <tiny_gltf.h>

namespace runtime {

namespace {

// Where the bytes of a run of elements are: `count` elements of `elementSize` bytes, `stride`
// bytes apart, the first at `first`.
struct ElementRun {
    const unsigned char* first = nullptr;
    std::uint64_t stride = 0;
    std::uint64_t count = 0;
};

// glTF allows strides up to 252 bytes; the largest element (a 4x4 matrix) has 64.
constexpr std::uint64_t kMaxStride = 252;

std::string accessorName(int index) {
    return "accessor " + std::to_string(index);
}

// Checks that `count` elements of `elementSize` bytes, starting `offset` bytes into buffer view
// `viewIndex`, lie inside the view and the view inside its buffer. The elements are `stride`
// bytes apart, or as the view's byteStride says when `stride` is 0.
bool locateInView(const tinygltf::Model& model, int viewIndex, std::uint64_t offset,
                  std::uint64_t count, std::uint64_t elementSize, std::uint64_t stride,
                  ElementRun& run, std::string& problem) {
    if (viewIndex >= static_cast<int>(model.bufferViews.size())) {
        problem = "refers to buffer view " + std::to_string(viewIndex) + ", which does not exist";
        return false;
    }
    const tinygltf::BufferView& view = model.bufferViews[viewIndex];
    if (view.buffer < 0 || view.buffer >= static_cast<int>(model.buffers.size())) {
        problem = "uses buffer view " + std::to_string(viewIndex) + ", whose buffer does not exist";
        return false;
    }
    const std::vector<unsigned char>& data = model.buffers[view.buffer].data;
    if (view.byteOffset > data.size() || view.byteLength > data.size() - view.byteOffset) {
        problem =
            "uses buffer view " + std::to_string(viewIndex) + ", which does not fit its buffer";
        return false;
    }
    if (stride == 0)
        stride = view.byteStride > 0 ? view.byteStride : elementSize;
    if (stride < elementSize || stride > kMaxStride) {
        problem = "has elements of " + std::to_string(elementSize) + " bytes in buffer view " +
                  std::to_string(viewIndex) + " with a stride of " + std::to_string(stride);
        return false;
    }
    // count <= byteLength keeps stride * count from overflowing.
    std::uint64_t needed =
        count == 0
            ? 0
            : (count > view.byteLength ? ~0ull : offset + stride * (count - 1) + elementSize);
    if (needed > view.byteLength) {
        problem = "reads past the end of buffer view " + std::to_string(viewIndex) + " (" +
                  std::to_string(count) + " elements from offset " + std::to_string(offset) +
                  ", the view has " + std::to_string(view.byteLength) + " bytes)";
        return false;
    }
    run.first = data.data() + view.byteOffset + offset;
    run.stride = stride;
    run.count = count;
    return true;
}

template <typename C> C load(const unsigned char* at) {
    C value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

// One component as a number, following the accessor's type and `normalized` flag.
double componentValue(const unsigned char* at, int componentType, bool normalized) {
    switch (componentType) {
    case TINYGLTF_COMPONENT_TYPE_FLOAT:
        return load<float>(at);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return normalized ? load<std::uint8_t>(at) / 255.0 : load<std::uint8_t>(at);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return normalized ? load<std::uint16_t>(at) / 65535.0 : load<std::uint16_t>(at);
    case TINYGLTF_COMPONENT_TYPE_BYTE:
        return normalized ? std::max(load<std::int8_t>(at) / 127.0, -1.0) : load<std::int8_t>(at);
    case TINYGLTF_COMPONENT_TYPE_SHORT:
        return normalized ? std::max(load<std::int16_t>(at) / 32767.0, -1.0)
                          : load<std::int16_t>(at);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
        return load<std::uint32_t>(at);
    default:
        return 0.0;
    }
}

bool isUnsignedInteger(int componentType) {
    return componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE ||
           componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT ||
           componentType == TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT;
}

bool isKnownComponent(int componentType) {
    return isUnsignedInteger(componentType) || componentType == TINYGLTF_COMPONENT_TYPE_BYTE ||
           componentType == TINYGLTF_COMPONENT_TYPE_SHORT ||
           componentType == TINYGLTF_COMPONENT_TYPE_FLOAT;
}

template <typename T>
void decodeRun(const ElementRun& run, int components, int componentType, bool normalized,
               std::uint64_t componentSize, T* out) {
    for (std::uint64_t e = 0; e < run.count; ++e) {
        const unsigned char* element = run.first + e * run.stride;
        for (int c = 0; c < components; ++c)
            out[e * components + c] = static_cast<T>(
                componentValue(element + c * componentSize, componentType, normalized));
    }
}

} // namespace

long long GltfAccessorReader::count(int index) const {
    if (index < 0 || index >= static_cast<int>(m_model.accessors.size()))
        return -1;
    return static_cast<long long>(m_model.accessors[index].count);
}

bool GltfAccessorReader::readNumbers(int index, int components, std::vector<double>& values,
                                     std::string& problem) {
    return read(index, components, false, values, problem);
}

bool GltfAccessorReader::readIntegers(int index, int components, std::vector<std::uint32_t>& values,
                                      std::string& problem) {
    return read(index, components, true, values, problem);
}

template <typename T>
bool GltfAccessorReader::read(int index, int components, bool integers, std::vector<T>& values,
                              std::string& problem) {
    if (index < 0 || index >= static_cast<int>(m_model.accessors.size())) {
        problem = accessorName(index) + " does not exist";
        return false;
    }
    const tinygltf::Accessor& accessor = m_model.accessors[index];
    const std::string name = accessorName(index);
    if (tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(accessor.type)) != components) {
        problem = name + " has " +
                  std::to_string(
                      tinygltf::GetNumComponentsInType(static_cast<std::uint32_t>(accessor.type))) +
                  " components per element, " + std::to_string(components) + " are needed";
        return false;
    }
    if (!isKnownComponent(accessor.componentType) ||
        (integers && !isUnsignedInteger(accessor.componentType))) {
        problem = name + " has component type " + std::to_string(accessor.componentType) +
                  (integers ? ", unsigned integers are needed" : ", which is not a glTF type");
        return false;
    }
    const std::uint64_t componentSize = static_cast<std::uint64_t>(
        tinygltf::GetComponentSizeInBytes(static_cast<std::uint32_t>(accessor.componentType)));
    const std::uint64_t elementSize = componentSize * components;
    const std::uint64_t count = accessor.count;
    if (!m_budget.take(count, sizeof(T) * components)) {
        problem =
            name + " has " + std::to_string(count) + " elements: " + m_budget.exceededProblem();
        return false;
    }
    values.assign(static_cast<std::size_t>(count) * components, T(0));
    const bool normalized = accessor.normalized && !integers;

    if (accessor.bufferView >= 0) {
        ElementRun run;
        if (!locateInView(m_model, accessor.bufferView, accessor.byteOffset, count, elementSize, 0,
                          run, problem)) {
            problem = name + " " + problem;
            return false;
        }
        decodeRun(run, components, accessor.componentType, normalized, componentSize,
                  values.data());
    }
    if (!accessor.sparse.isSparse)
        return true;

    // Sparse elements replace single elements of the base; their indices must rise strictly.
    const auto& sparse = accessor.sparse;
    if (sparse.count < 0 || static_cast<std::uint64_t>(sparse.count) > count ||
        sparse.indices.bufferView < 0 || sparse.values.bufferView < 0 ||
        sparse.indices.byteOffset < 0 || sparse.values.byteOffset < 0 ||
        !isUnsignedInteger(sparse.indices.componentType)) {
        problem = name + " has a malformed sparse part";
        return false;
    }
    const std::uint64_t indexSize = static_cast<std::uint64_t>(tinygltf::GetComponentSizeInBytes(
        static_cast<std::uint32_t>(sparse.indices.componentType)));
    ElementRun indexRun;
    ElementRun valueRun;
    if (!locateInView(m_model, sparse.indices.bufferView, sparse.indices.byteOffset, sparse.count,
                      indexSize, indexSize, indexRun, problem) ||
        !locateInView(m_model, sparse.values.bufferView, sparse.values.byteOffset, sparse.count,
                      elementSize, elementSize, valueRun, problem)) {
        problem = name + " (sparse part) " + problem;
        return false;
    }
    std::int64_t previous = -1;
    for (std::uint64_t s = 0; s < indexRun.count; ++s) {
        auto target = static_cast<std::int64_t>(
            componentValue(indexRun.first + s * indexSize, sparse.indices.componentType, false));
        if (target <= previous || static_cast<std::uint64_t>(target) >= count) {
            problem = name + " has sparse indices out of range or out of order";
            return false;
        }
        previous = target;
        ElementRun one{valueRun.first + s * elementSize, elementSize, 1};
        decodeRun(one, components, accessor.componentType, normalized, componentSize,
                  values.data() + target * components);
    }
    return true;
}

} // namespace runtime
