// quantizeWeights: one vertex's weights as whole steps of 1/steps, pure, so that an engine
// that stores weights in 8 or 16 bits (steps 255 or 65535) loses nothing more.
//
// Afterwards every weight is k / steps (the double nearest to it, as k / double(steps) gives
// it) and the k of the vertex add up to exactly `steps`. Locked influences (locks: one entry
// per influence, non-zero where locked) keep their weights, so each must be a whole step
// already; the unlocked weights share the steps the locked ones leave in proportion to their
// weights, each taking the whole steps of its share and the steps left over going to the
// largest remainders (of equal ones, the lower influence index first). Weights of no step are
// dropped. Returns false, leaving the entries as they were, when a locked weight is not a
// whole step, the locked weights take more than `steps`, or steps are left and the unlocked
// weights hold nothing to share them by. Entries come and go sorted by influence; steps >= 1.
#pragma once

#include "scene/SkinWeightCleanup.h"

#include <vector>

namespace runtime {

bool quantizeWeights(VertexEntries& entries, const std::vector<char>& locks, unsigned steps);

// The number of whole steps of 1/steps in weight when it is one, -1 otherwise.
long long wholeSteps(double weight, unsigned steps);

} // namespace runtime
