// smoothCmd: the window's undoable command object for a paint-tool smoothing of one influence over
// the chosen vertices, through the host's skin paint tool in its smooth mode, the vertices'
// previous weights kept for undo. It carries out the same preparation, write and undo as the
// matching vorelCmd flag, on its own lists; it is never registered with the host. The window
// creates one object and deletes it. Failures are reported as fixed sentences through the host's
// messages.
#pragma once

#include "HArgList.h"
#include "HDoubleArray.h"
#include "HObject.h"
#include "HStatus.h"
#include "windowEditCommand.h"

#include <QList>
#include <QModelIndexList>

class smoothCmd : public windowEditCommand<smoothCmd> {
public:
    smoothCmd(vorelWindow* window, weightTableModel* model);
    ~smoothCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

private:
    QList<int> lockColumns;
    QModelIndexList cells;
    QList<int> shapes;
    int column = 0;
    double opacity = 0.0;
    QList<HObject> components;
    QList<HDoubleArray> oldWeights;
    QList<int> influenceCounts;
};
