// StagedWeightArrays: weight arrays that a program running the host in its own process (the
// Python module) hands to the command language by number, so that a whole cluster's weights
// reach a command (setSkinWeights) without being written out as text.
//
// The program stages an array, runs the command with the number it got, and releases the
// number. The staged values are borrowed: the program keeps them alive and unchanged until it
// releases them. A number is never given out twice in the life of the host.
#pragma once

#include "core/HostContext.h"

#include <cstddef>
#include <map>
#include <vector>

namespace runtime {

struct StagedWeightArray {
    // rows x columns doubles, row-major: one row per vertex, one column per influence.
    const double* values = nullptr;
    std::size_t rows = 0;
    std::size_t columns = 0;
    // The vertex of each row, when everyVertex is false; otherwise row n is vertex n.
    std::vector<int> vertices;
    bool everyVertex = true;
};

class StagedWeightArrays : public HostModule {
public:
    // The number the array is staged under (1 or more).
    unsigned stage(StagedWeightArray array);
    void release(unsigned number);
    // Null when nothing is staged under the number.
    const StagedWeightArray* find(unsigned number) const;

private:
    std::map<unsigned, StagedWeightArray> m_arrays;
    unsigned m_last = 0;
};

} // namespace runtime
