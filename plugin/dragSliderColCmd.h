// dragSliderColCmd: the window's undoable command object for a slider drag of a whole influence
// column, every loaded shape bound to the influence written at once, locked influences kept. It
// carries out the same preparation, write and undo as the matching vorelCmd flag, on its own lists;
// it is never registered with the host. The window creates one object and deletes it. Failures are
// reported as fixed sentences through the host's messages.
#pragma once

#include "HArgList.h"
#include "HDagPath.h"
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HObject.h"
#include "HObjectArray.h"
#include "HStatus.h"
#include "weightRows.h"
#include "windowEditCommand.h"

#include <QList>

class dragSliderColCmd : public windowEditCommand<dragSliderColCmd> {
public:
    dragSliderColCmd(vorelWindow* window, weightTableModel* model);
    ~dragSliderColCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

private:
    WeightRows weightRows;
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HObjectArray shapeComponents;
    HDagPathArray influencePaths;
    QList<int> lockedColumns;
    int targetColumn = 0;
    double sliderValue = 0.0;
    double sliderDelta = 0.0;
    bool sliderAbsolute = false;
    QList<HDagPath> targetPaths;
    QList<HObject> clusterNodes;
    QList<HObject> setComponents;
    QList<HIntArray> columnInfluences;
    QList<int> influenceCounts;
    QList<HDoubleArray> newWeights;
    QList<HDoubleArray> oldWeights;
};
