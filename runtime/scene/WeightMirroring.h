// WeightMirroring: how weights cross a symmetry plane, pure: which influence stands for which
// on the other side, going by the joints' names, and one vertex's weights seen from the other
// side.
//
// Counterparts are found by side names: for a pair (A, B), a joint whose name holds A has as
// counterpart the joint whose name is the same with that A replaced by B, and the other way
// round ("arm_L" and "arm_R" for "_L" and "_R"). The pairs are tried in order, and each
// occurrence of a side name in turn; the first joint found wins. Joints are paired at most
// once, in influence order, so the result is its own inverse; a joint without a counterpart
// stands for itself.
#pragma once

#include "scene/SkinWeightCleanup.h"

#include <string>
#include <vector>

namespace runtime {

struct SideNames {
    std::string first;
    std::string second;
};

// Left/Right, left/right, _L/_R, _l/_r, L_/R_, l_/r_, .L/.R, .l/.r.
const std::vector<SideNames>& defaultSideNames();

// For each of the names, the index of its counterpart among them.
std::vector<unsigned> counterpartInfluences(const std::vector<std::string>& names,
                                            const std::vector<SideNames>& sides);

// The weights with each influence replaced by its counterpart, sorted by influence.
VertexEntries mirroredWeights(const VertexEntries& entries,
                              const std::vector<unsigned>& counterparts);
// The mean of the weights and their mirrored weights, sorted by influence: weights that are
// the same seen from either side.
VertexEntries symmetricWeights(const VertexEntries& entries,
                               const std::vector<unsigned>& counterparts);

} // namespace runtime
