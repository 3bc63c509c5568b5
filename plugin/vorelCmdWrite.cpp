// The write steps of vorelCmd's edits and the undo that writes the kept weights back. Every
// write keeps what it replaced in oldWeights, in write order; every write but the rounding one
// runs inside the normalisation guard. They read only what the prepare steps recorded.
#include "HFnSkinCluster.h"
#include "HGlobal.h"
#include "commandModelAccess.h"
#include "vorelCmd.h"
#include "weightWriting.h"

using namespace commandModelAccess;
using weightWriting::InfluenceLockGuard;
using weightWriting::NormalisationGuard;

namespace {

// Every write step starts by checking its lists; this is what it says when one is empty.
HStatus notSetUp() {
    reportNotSetUp();
    return HS::kFailure;
}

} // namespace

HStatus vorelCmd::refuseCellsWithoutValues() {
    // Only a weight smoothing records cells here (typed and dragged cells are the held edit's);
    // the cell step that its cells let run finds nothing to write and says so.
    oldWeights.clear();
    return notSetUp();
}

HStatus vorelCmd::restoreVertexWrites() {
    // Entries go back in the order they were written, so a vertex written twice ends with the
    // weights it had after its first write.
    HStatus status = HS::kFailure;
    for (int i = 0;
         i < oldWeights.size() && i < editComponents.size() && i < influenceCounts.size(); ++i) {
        const unsigned shape = static_cast<unsigned>(editShapes[i]);
        NormalisationGuard normalisation(skinClusters[shape]);
        status = HFnSkinCluster(skinClusters[shape])
                     .setWeights(shapePaths[shape], editComponents[i],
                                 allInfluences(static_cast<unsigned>(influenceCounts[i])),
                                 oldWeights[i], true);
    }
    return status;
}
