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

// The position of the smallest positive weight of the row (the leftmost of equal ones), or 0
// when none is positive.
int smallestPositive(const WeightRow& row) {
    int found = 0;
    for (int i = 1; i < row.size(); ++i)
        if (row.at(i) > 0.0 && (found == 0 || row.at(i) < row.at(found)))
            found = i;
    return found;
}

} // namespace

HStatus vorelCmd::writeLimitInfluences() {
    oldWeights.clear();
    if (overLimitRows.isEmpty() || editShapes.isEmpty() || influenceCounts.isEmpty() ||
        editComponents.isEmpty() || nonZeroCounts.isEmpty())
        return notSetUp();
    HStatus status;
    for (int i = 0; i < overLimitRows.size(); ++i) {
        const int r = overLimitRows[i];
        const unsigned shape = static_cast<unsigned>(editShapes[i]);
        HFnSkinCluster cluster(skinClusters[shape]);
        const InfluenceColumns lookups = limitColumns.value(editShapes[i]);
        // The row as doIt found it, then as each removal leaves it.
        WeightRow working = weightRows.at(r);
        const int excess = nonZeroCounts[i] - maxInfluences;
        const bool repeating = i < removedColumns.size();
        if (!repeating)
            removedColumns.append(QList<int>());
        for (int round = 0; round < excess; ++round) {
            const int column = repeating && round < removedColumns[i].size()
                                   ? removedColumns[i][round]
                                   : smallestPositive(working) - 1;
            if (!repeating)
                removedColumns[i].append(column);
            const int influence = column >= 0 && column < lookups.influenceOfColumn.size()
                                      ? lookups.influenceOfColumn[column]
                                      : -1;
            if (influence == -1) {
                HGlobal::displayInfo("Could not find the influence.");
                return HS::kFailure;
            }
            HDoubleArray old;
            {
                NormalisationGuard normalisation(skinClusters[shape]);
                // Only the first removal's old weights are kept: undo returns the row to where
                // it was before the command.
                status = cluster.setWeights(shapePaths[shape], editComponents[i],
                                            static_cast<unsigned>(influence), 0.0, true,
                                            round == 0 ? &old : nullptr);
            }
            if (round == 0)
                oldWeights.append(old);
            HDoubleArray weights;
            unsigned count = 0;
            cluster.getWeights(shapePaths[shape], editComponents[i], weights, count);
            for (unsigned k = 0; k < count && k < weights.length() &&
                                 k < unsigned(lookups.columnOfInfluence.size());
                 ++k) {
                const int c = lookups.columnOfInfluence[int(k)];
                if (c >= 0 && c + 1 < working.size())
                    working[c + 1] = weights[k];
            }
            influenceRemoved(r, column);
        }
    }
    return status;
}

HStatus vorelCmd::writeRound() {
    oldWeights.clear();
    if (newWeights.isEmpty() || setComponents.isEmpty() || influenceCounts.isEmpty())
        return notSetUp();
    HStatus status;
    for (int i = 0; i < setComponents.size() && static_cast<unsigned>(i) < shapePaths.length();
         ++i) {
        const unsigned shape = static_cast<unsigned>(i);
        HDoubleArray old;
        status = HFnSkinCluster(skinClusters[shape])
                     .setWeights(shapePaths[shape], setComponents[i],
                                 allInfluences(static_cast<unsigned>(influenceCounts[i])),
                                 newWeights[i], true, &old);
        oldWeights.append(old);
    }
    return status;
}

HStatus vorelCmd::writeFloodReplace() {
    oldWeights.clear();
    if (clusterNodes.isEmpty() || targetPaths.isEmpty() || influenceIndices.isEmpty() ||
        influenceCounts.isEmpty() || setComponents.isEmpty())
        return notSetUp();
    HStatus status;
    for (int i = 0; i < targetPaths.size(); ++i) {
        HDoubleArray old;
        NormalisationGuard normalisation(clusterNodes[i]);
        status =
            HFnSkinCluster(clusterNodes[i])
                .setWeights(targetPaths[i], setComponents[i],
                            static_cast<unsigned>(influenceIndices[i]), floodValue, true, &old);
        oldWeights.append(old);
    }
    return status;
}

HStatus vorelCmd::refuseCellsWithoutValues() {
    // Only a weight smoothing records cells here (typed and dragged cells are the held edit's);
    // the cell step that its cells let run finds nothing to write and says so.
    oldWeights.clear();
    return notSetUp();
}

HStatus vorelCmd::writeColumnDrag() {
    oldWeights.clear();
    if (targetPaths.isEmpty() || clusterNodes.isEmpty() || columnInfluences.isEmpty() ||
        influenceCounts.isEmpty() || newWeights.isEmpty() || setComponents.isEmpty())
        return notSetUp();
    HStatus status;
    for (int i = 0; i < targetPaths.size(); ++i) {
        HDoubleArray old;
        {
            // Locked influences keep their weights; these locks stay out of the undo queue.
            InfluenceLockGuard locks(influencePathNames(influencePaths, lockedColumns), false);
            NormalisationGuard normalisation(clusterNodes[i]);
            status = HFnSkinCluster(clusterNodes[i])
                         .setWeights(targetPaths[i], setComponents[i], columnInfluences[i],
                                     newWeights[i], true, &old);
        }
        oldWeights.append(old);
    }
    return status;
}

void vorelCmd::influenceRemoved(int, int) {}

HStatus vorelCmd::restoreShapeWrites() {
    HStatus status = HS::kFailure;
    for (int i = 0; i < oldWeights.size() && i < targetPaths.size() && i < influenceCounts.size();
         ++i) {
        NormalisationGuard normalisation(clusterNodes[i]);
        status = HFnSkinCluster(clusterNodes[i])
                     .setWeights(targetPaths[i], setComponents[i],
                                 allInfluences(static_cast<unsigned>(influenceCounts[i])),
                                 oldWeights[i], true);
    }
    return status;
}

HStatus vorelCmd::restoreRound() {
    HStatus status = HS::kFailure;
    for (int i = 0; i < oldWeights.size() && i < setComponents.size() &&
                    i < influenceCounts.size() && static_cast<unsigned>(i) < shapePaths.length();
         ++i) {
        const unsigned shape = static_cast<unsigned>(i);
        status = HFnSkinCluster(skinClusters[shape])
                     .setWeights(shapePaths[shape], setComponents[i],
                                 allInfluences(static_cast<unsigned>(influenceCounts[i])),
                                 oldWeights[i], true);
    }
    return status;
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
