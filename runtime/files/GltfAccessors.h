// GltfAccessorReader: the numbers of glTF accessors, read from a loaded document with every
// offset, stride, count and sparse index checked against the bytes that exist.
//
// The reader borrows the document and the budget; both must outlive it. A read that does not
// fit its buffer view, names a view or buffer that does not exist, has the wrong shape or would
// exceed the budget fails with a problem text that names the accessor, and leaves `values`
// unspecified.
#pragma once

#include "files/ReadBudget.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tinygltf {
class Model;
}

namespace runtime {

class GltfAccessorReader {
public:
    GltfAccessorReader(const tinygltf::Model& model, ReadBudget& budget)
        : m_model(model), m_budget(budget) {}

    // Reads accessor `index`, which must have `components` components per element, as numbers:
    // normalised integers scaled into [0, 1] or [-1, 1], everything else as it is.
    bool readNumbers(int index, int components, std::vector<double>& values, std::string& problem);
    // Reads accessor `index`, whose components must be unsigned integers.
    bool readIntegers(int index, int components, std::vector<std::uint32_t>& values,
                      std::string& problem);
    // Element count of accessor `index`, or -1 when there is no such accessor.
    long long count(int index) const;

private:
    template <typename T>
    bool read(int index, int components, bool integers, std::vector<T>& values,
              std::string& problem);

    const tinygltf::Model& m_model;
    ReadBudget& m_budget;
};

} // namespace runtime
