// limitWeights: the rule of a pipeline's influence limit on one vertex's weights, pure.
//
// The vertex keeps its `limit` largest weights (of equal ones, those of the lower influence
// index) and, of those, the ones of `threshold` or more. The weight it drops goes to the kept
// unlocked weights in proportion to them, so the vertex keeps its sum. Locked influences (locks:
// one entry per influence, non-zero where locked; shorter lists leave the rest unlocked) keep
// their weights. When that cannot be done (a locked weight would be dropped, or weight would
// be dropped with no kept unlocked weight to take it) the function returns false and leaves
// the entries as they were. Entries come and go sorted by influence.
#pragma once

#include "scene/SkinWeightCleanup.h"

#include <vector>

namespace runtime {

bool limitWeights(VertexEntries& entries, const std::vector<char>& locks, unsigned limit,
                  double threshold);

} // namespace runtime
