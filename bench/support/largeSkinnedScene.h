// largeSkinnedScene: the scene the file benchmarks read and write, and how much memory the
// process has taken.
//
// largeSkinnedGrid() is a grid of 400 x 250 = 100,000 vertices in XZ with a chain of 64 joints
// along X; each vertex is weighted to its eight nearest joints, more to the nearer ones.
#pragma once

#include "files/SceneDescription.h"

namespace benchscene {

constexpr int kGridJoints = 64;
constexpr int kWeightsPerVertex = 8;

runtime::SceneDescription largeSkinnedGrid();

// The process's resident memory now (VmRSS) and its peak (VmHWM), in MB.
double residentMegabytes();
double peakMegabytes();
// Starts a new peak of resident memory (Linux: writing 5 to clear_refs).
void resetPeakMemory();

} // namespace benchscene
