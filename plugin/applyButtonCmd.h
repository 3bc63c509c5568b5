// applyButtonCmd: the window's undoable command object for the maximum influences: every prepared
// row keeps only its largest weights, renormalised. It carries out the same preparation, write and
// undo as the matching vorelCmd flag, on its own lists; it is never registered with the host. The
// window creates one object and deletes it. Failures are reported as fixed sentences through the
// host's messages.
#pragma once

#include "HArgList.h"
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HObject.h"
#include "HObjectArray.h"
#include "HStatus.h"
#include "weightRows.h"
#include "windowEditCommand.h"

#include <QList>

class applyButtonCmd : public windowEditCommand<applyButtonCmd> {
public:
    applyButtonCmd(vorelWindow* window, weightTableModel* model);
    ~applyButtonCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

private:
    WeightRows weightRows;
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    QList<int> requestedRows;
    QList<int> overLimitRows;
    QList<int> nonZeroCounts;
    int maxInfluences = 0;
    QList<int> editShapes;
    QList<HObject> editComponents;
    QList<int> influenceCounts;
    QList<HDoubleArray> oldWeights;
};
