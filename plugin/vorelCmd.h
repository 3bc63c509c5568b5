// vorelCmd: the plug-in's one host command. Without flags it opens the Vorel window (created
// once, under the host's main window) and shows it. With one of its flags (the eight edits of
// the window's controls, and -paste) it performs the edit that the window's model prepared in
// its hand-over members: doIt copies what it needs from editorModel, redoIt writes it through
// the skin clusters and keeps the weights it replaced, undoIt writes those back. One object stands
// for one edit; the host owns it (its undo queue keeps it) and it owns all its lists.
//
// doIt records everything the writes need by identity (skin clusters, shape paths, vertex
// numbers, influence indices and the table rows it worked from); redoIt and undoIt read only
// that record, never the table, which may show other shapes by then. The model is told of
// the result (its table rebuilt from the scene), nothing more.
//
// Failures are reported as fixed sentences through the host's messages. A flag form run
// before the window exists is refused with an error, since there is no model to read.
#pragma once

#include "HArgList.h"
#include "HDagPath.h"
#include "HDagPathArray.h"
#include "HDoubleArray.h"
#include "HIntArray.h"
#include "HObject.h"
#include "HObjectArray.h"
#include "HPxCommand.h"
#include "HSelectionList.h"
#include "HStatus.h"
#include "HString.h"
#include "HSyntax.h"
#include "editCommand.h"
#include "paintSmoothSequence.h"
#include "shapeWritesCmd.h"
#include "weightRows.h"

#include <QHash>
#include <QList>
#include <QModelIndexList>
#include <QVector>
#include <memory>

class vorelCmd : public HPxCommand {
public:
    vorelCmd();
    ~vorelCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

protected:
    // The window's edit command classes perform single edits with these same steps.

    // The model's loaded objects, table and lock lists, copied before any preparation.
    void copyModel();

    // Prepare steps (vorelCmdPrepare.cpp, vorelCmdSmoothing.cpp): each fills the lists its
    // write step needs; false when the edit cannot be prepared.
    bool prepareLimitInfluences();
    bool prepareRound();
    bool prepareReplace();
    // Typed (-setData) or dragged (-dragSlider) cells: the edit object that performs them.
    bool prepareCells(bool typed);
    bool prepareColumnDrag();
    // Makes the edit class `Command` (one of the whole-shape writes) and prepares it.
    template <typename Command>
    bool holdShapeWrites(bool (shapeWritesCmd::*prepare)(weightTableModel&));
    bool preparePaintSmoothing();
    bool prepareWeightSmoothing();
    // The pasted cells grouped by vertex row (vorelCmdPaste.cpp).
    bool preparePaste();

    // Write steps (vorelCmdWrite.cpp, vorelCmdSmoothing.cpp), run by redoIt in a fixed order.
    HStatus refuseCellsWithoutValues();
    HStatus writePaintSmoothing();
    HStatus writeWeightSmoothing();
    HStatus writePaste();

    // Writes the kept weights back, vertex by vertex.
    HStatus restoreVertexWrites();

    // The edit performed, for the kinds that have their own class; redoIt and undoIt forward
    // to it.
    std::unique_ptr<editCommand> edit;

    // Copies of the model's loaded objects and lock lists, taken by every flagged doIt.
    HObjectArray skinClusters;
    HDagPathArray shapePaths;
    HObjectArray shapeComponents;
    HDagPathArray influencePaths;
    WeightRows weightRows;
    QList<QList<int>> lockedCells;
    QList<int> lockedColumns;

    // What the writes replaced, in write order.
    QList<HDoubleArray> oldWeights;

    // Prepared lists of the edits.
    QList<HObject> editComponents;
    QList<int> editShapes;
    QList<int> influenceCounts;
    // The cells a smoothing recorded.
    QModelIndexList cells;

    // Paste: per written vertex (in editShapes and editComponents), the influences and values
    // pasted, and the columns of the row's locked cells, which keep their weights.
    QList<HIntArray> pasteInfluences;
    QList<HDoubleArray> pasteValues;
    QList<QList<int>> pasteLockColumns;

    // Smoothing: the vertices, influence, opacity and lock influences of a paint-tool
    // smoothing, and the host command text of a skin-cluster smoothing.
    PaintSmoothRequest paintSmoothing;
    HString smoothCommand;
    // The scene's selection when the skin-cluster smoothing was prepared, which a redo puts
    // back: the host smooths the selected vertices of the cluster (all when none is selected).
    HSelectionList smoothSelection;
    bool smoothedOnce = false;
    bool paintSmoothPending;
    bool weightSmoothPending;
};

// The creator and syntax the plug-in registers the command with.
HPxCommand* createCommand();
HSyntax createSyntax();
