// weightEditSteps: the base of the window's undoable edit commands. It holds what one weight
// edit prepares from the window's model (copies of the loaded shapes, the table and the lock
// lists; the components, influences and values to write) and the steps that prepare, write
// and undo each kind of edit: limiting a row's influences, rounding, flood replace, cell
// values, and the drag of a whole column.
//
// Every write raises the skin cluster's "normalizeWeights" from 0 to 1 for the call (except
// rounding, which writes every influence of every vertex) and keeps the weights it replaced,
// in write order; undoing writes those back in the same order. A command object owns all its
// lists and holds no pointer into the model: the steps take the model as an argument.
//
// Failures are reported through the host's messages as fixed sentences; a prepare step that
// fails leaves its lists half filled, and the command then runs no write for it. Statuses of
// the writes are not checked on the way; each step returns the status of its last write.
#pragma once

#include "HDagPath.h"
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HObject.h"
#include "HObjectArray.h"
#include "HPxCommand.h"
#include "HStatus.h"
#include "weightRows.h"

#include <QList>
#include <QModelIndexList>
#include <initializer_list>

class weightTableModel;

class weightEditSteps : public HPxCommand {
protected:
    // The model's loaded shapes, table and lock lists, taken before any preparation.
    void copyModel(weightTableModel& model);

    // Preparations; false after a message (or silently where the edit has nothing to do).
    bool prepareLimit(const weightTableModel& model);
    bool prepareRound(const weightTableModel& model);
    bool prepareReplace(const weightTableModel& model);
    // `checkRows` reports negative rows with their own message; without it they fail as
    // shape header rows do.
    bool prepareCells(const weightTableModel& model, const QModelIndexList& editedCells,
                      const QList<double>& values, bool checkRows);
    HStatus prepareColumnDrag(const weightTableModel& model);

    // Writes. `refreshEachWrite` hands every changed cell to the model's read-back.
    HStatus writeLimit(weightTableModel& model, bool refreshEachWrite);
    HStatus writeRound();
    HStatus writeFlood();
    // The influences of the row's other locked cells are locked for each write; `undoLocks`
    // records those lock commands in the host's undo queue.
    HStatus writeCells(bool undoLocks);
    HStatus writeColumn();

    // Undo of the edits that wrote whole shapes (flood, column drag, rounding) or single
    // vertices (limits, cell values).
    HStatus restoreShapes(bool guarded);
    HStatus restoreVertices();

    // A redo's writes run with the model's automatic reloading off; afterwards the model's
    // table is rebuilt from the scene and the reloading put back as it was.
    static bool suspendAutoUpdate(weightTableModel& model);
    static void refreshAfterRedo(weightTableModel& model, bool autoUpdate);
    // After an undo: the model's table rebuilt from the scene and copied as the next redo's.
    void refreshAfterUndo(weightTableModel& model, bool updateColumns);

private:
    bool listsReady(std::initializer_list<bool> filled);
    HObject wholeShapeComponent(unsigned shape) const;

protected:
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HObjectArray shapeComponents;
    HDagPathArray influencePaths;
    WeightRows weightRows;
    QList<QList<int>> lockedCells;
    QList<int> lockedColumns;

    QList<HDoubleArray> oldWeights;

    QList<HObject> editComponents;
    QList<int> editShapes;
    QList<int> influenceCounts;
    QList<int> overLimitRows;
    QList<int> nonZeroCounts;
    int maxInfluences = 0;
    QList<HDoubleArray> newWeights;
    QList<HObject> setComponents;
    double floodValue = 0.0;
    QList<HObject> clusterNodes;
    QList<HDagPath> targetPaths;
    int targetColumn = 0;
    QList<int> influenceIndices;
    QList<double> cellValues;
    QModelIndexList cells;
    QList<HIntArray> columnInfluences;
};
