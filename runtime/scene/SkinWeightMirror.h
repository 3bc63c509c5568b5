// mirrorSkinWeights: copies a skin cluster's weights from one side of a plane through the
// origin to the other, in bind-pose world space (SkinBindPose.h).
//
// The plane is x = 0, y = 0 or z = 0; the source side is where that coordinate is above the
// tolerance (positive) or below minus the tolerance (negative), the destination side the
// opposite one. Each listed vertex (null: every vertex) on the destination side takes the
// weights of the source-side or in-plane vertex nearest to its mirror image (the lower index
// among equally near ones), with each influence swapped for its counterpart (WeightMirroring.h);
// an in-plane vertex (within the tolerance of the plane) takes the mean of its weights and
// their swapped weights, the same seen from either side, and lends those to the destination
// side as well. Source-side vertices stay as they are. Mirroring twice gives the first result
// back, bit for bit.
//
// Vertices run through applyVertexRule (SkinWeightPass.h): a vertex whose new weights would
// change a locked weight is left as it is and counted as refused. Fails with kNotFound,
// changing nothing, when destination-side vertices are listed but no vertex lies on the source
// side or in the plane (a mesh of one side only, such as one arm), besides applyVertexRule's
// failures.
#pragma once

#include "HStatus.h"
#include "scene/SkinWeightPass.h"
#include "scene/WeightMirroring.h"

#include <vector>

namespace runtime {

struct MirrorOptions {
    // 0, 1, 2: the plane x = 0, y = 0, z = 0.
    int axis = 0;
    // Whether the positive side is the source.
    bool fromPositive = true;
    double tolerance = 0.001;
    std::vector<SideNames> sides = defaultSideNames();
};

HStatus mirrorSkinWeights(Scene& scene, Node& cluster, const std::vector<int>* vertices,
                          const MirrorOptions& options, VertexWeightRecord* record,
                          RuleCounts& counts);

} // namespace runtime
