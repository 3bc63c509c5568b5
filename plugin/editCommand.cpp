#include "editCommand.h"

#include "HFnSkinCluster.h"
#include "weightTableModel.h"
#include "weightWriting.h"

#include <memory>

HStatus editCommand::writeTarget(const WriteTarget& target, const HostWrite& write) {
    writtenWeights::Entry entry;
    HStatus status;
    {
        weightWriting::InfluenceLockGuard locks(target.lockedInfluences, target.recordLocks);
        std::unique_ptr<weightWriting::NormalisationGuard> normalisation;
        if (target.normalisationGuard)
            normalisation.reset(new weightWriting::NormalisationGuard(target.cluster));
        HFnSkinCluster cluster(target.cluster);
        status = write(cluster, &entry.oldWeights);
    }
    entry.cluster = target.cluster;
    entry.shape = target.shape;
    entry.component = target.component;
    entry.influenceCount = target.influenceCount;
    entry.normalisationGuard = target.normalisationGuard;
    entry.rows = target.rows;
    written.append(std::move(entry));
    return status;
}

HStatus editCommand::writeAndRefresh(weightTableModel* model,
                                     const std::function<HStatus()>& write) {
    const bool savedAutoUpdate = weightTableModel::getAutoUpdate();
    // The writes and lock commands change the scene; the table must not reload meanwhile.
    if (model)
        model->setAutoUpdate(false);
    written.clear();
    if (model)
        model->setWritingScene(true);
    const HStatus status = write();
    if (model) {
        model->setWritingScene(false);
        model->refreshWrittenRows(written.rows());
        model->setUpColumn();
        model->setAutoUpdate(savedAutoUpdate);
    }
    return status;
}

HStatus editCommand::restoreAndRefresh(weightTableModel* model, bool hiddenColumns) {
    if (model)
        model->setWritingScene(true);
    const HStatus status = written.restore();
    if (model) {
        model->setWritingScene(false);
        model->refreshWrittenRows(written.rows());
        if (hiddenColumns)
            model->setUpColumn();
    }
    return status;
}
