// setCellDataCmd: the window's undoable command object for typed cell values: the cells of the
// table view's current selection are written with the values the model prepared, each vertex
// normalised, the row's other locked cells kept. It carries out the same preparation, write and
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
#include <QModelIndexList>

class setCellDataCmd : public windowEditCommand<setCellDataCmd> {
public:
    setCellDataCmd(vorelWindow* window, weightTableModel* model);
    ~setCellDataCmd() override;
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
