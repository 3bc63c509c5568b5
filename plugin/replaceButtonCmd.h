// replaceButtonCmd: the window's undoable command object for a flood replace: one influence of one
// shape set to one value on every vertex. It carries out the same preparation, write and undo as
// the matching vorelCmd flag, on its own lists; it is never registered with the host. The window
// creates one object and deletes it. Failures are reported as fixed sentences through the host's
// messages.
#pragma once

#include "HArgList.h"
#include "HDagPath.h"
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HObject.h"
#include "HObjectArray.h"
#include "HStatus.h"
#include "weightRows.h"
#include "windowEditCommand.h"

#include <QList>

class replaceButtonCmd : public windowEditCommand<replaceButtonCmd> {
public:
    replaceButtonCmd(vorelWindow* window, weightTableModel* model);
    ~replaceButtonCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

private:
    WeightRows weightRows;
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HObjectArray shapeComponents;
    double floodValue = 0.0;
    int targetColumn = 0;
    QList<int> floodShapes;
    QList<HObject> clusterNodes;
    QList<HDagPath> targetPaths;
    QList<int> influenceIndices;
    QList<int> influenceCounts;
    QList<HObject> setComponents;
    QList<HDoubleArray> oldWeights;
};
