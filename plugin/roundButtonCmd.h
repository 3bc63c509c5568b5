// roundButtonCmd: the window's undoable command object for the precision rounding: the table's
// rounded weights of every loaded vertex written into the skin clusters. It carries out the same
// preparation, write and undo as the matching vorelCmd flag, on its own lists; it is never
// registered with the host. The window creates one object and deletes it. Failures are reported as
// fixed sentences through the host's messages.
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

class roundButtonCmd : public windowEditCommand<roundButtonCmd> {
public:
    roundButtonCmd(vorelWindow* window, weightTableModel* model);
    ~roundButtonCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

private:
    WeightRows weightRows;
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HObjectArray shapeComponents;
    QList<HDoubleArray> newWeights;
    QList<HObject> setComponents;
    QList<int> influenceCounts;
    QList<HDoubleArray> oldWeights;
};
