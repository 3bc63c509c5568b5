// dragSliderCmd: the window's undoable command object for a slider drag over the selected cells,
// written like typed cell values. It carries out the same preparation, write and undo as the
// matching vorelCmd flag, on its own lists; it is never registered with the host. The window
// creates one object and deletes it. Failures are reported as fixed sentences through the host's
// messages.
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
#include <QModelIndexList>

class dragSliderCmd : public windowEditCommand<dragSliderCmd> {
public:
    dragSliderCmd(vorelWindow* window, weightTableModel* model);
    ~dragSliderCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

private:
    WeightRows weightRows;
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HDagPathArray influencePaths;
    QList<QList<int>> lockedCells;
    QList<double> cellValues;
    QModelIndexList cells;
    QList<int> editShapes;
    QList<HObject> editComponents;
    QList<int> influenceIndices;
    QList<int> influenceCounts;
    QList<HDoubleArray> oldWeights;
};
