#include "writtenWeights.h"

#include "HFnSkinCluster.h"
#include "commandModelAccess.h"
#include "weightWriting.h"

#include <memory>

HStatus writtenWeights::restore() const {
    HStatus status = HS::kFailure;
    for (const Entry& entry : entries) {
        std::unique_ptr<weightWriting::NormalisationGuard> normalisation;
        if (entry.normalisationGuard)
            normalisation.reset(new weightWriting::NormalisationGuard(entry.cluster));
        status = HFnSkinCluster(entry.cluster)
                     .setWeights(entry.shape, entry.component,
                                 commandModelAccess::allInfluences(entry.influenceCount),
                                 entry.oldWeights, true);
    }
    return status;
}

QVector<WrittenRow> writtenWeights::rows() const {
    QVector<WrittenRow> rows;
    for (const Entry& entry : entries)
        for (WrittenRow row : entry.rows) {
            row.shapePath = entry.shape;
            rows.append(row);
        }
    if (rowsUnknown)
        rows.append(WrittenRow());
    return rows;
}
