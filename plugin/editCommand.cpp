#include "editCommand.h"

#include "weightTableModel.h"

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
