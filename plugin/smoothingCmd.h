// smoothingCmd: the two smoothing edits. Paint smoothing ("vorelCmd -skinPaintSmooth") smooths
// one influence over the chosen vertices with the host's skin paint tool (paintSmoothSequence.h),
// recording the vertices' weights first so that undo writes them back. Weight smoothing
// ("vorelCmd -smoothSkinWeights") runs the host command text the model prepared with undo on,
// so the host's undo queue keeps that smoothing inside this edit's entry; the table then reads
// all of its rows again, since the host does not say which vertices it smoothed.
//
// Each prepare step refuses, asking for a reload, when the model is not preparing that
// smoothing. The model (not owned) is kept for the table's refresh after each redo and undo.
#pragma once

#include "HSelectionList.h"
#include "HString.h"
#include "editCommand.h"
#include "paintSmoothSequence.h"

#include <QVector>

class smoothingCmd : public editCommand {
public:
    bool preparePaint(weightTableModel& model);
    bool prepareWeightSmoothing(weightTableModel& model);
    HStatus redoIt() override;
    HStatus undoIt() override;

private:
    HStatus paint();
    HStatus smoothWeights();

    bool painting = false;
    PaintSmoothRequest paintRequest;
    // Per painted vertex, its row.
    QVector<WrittenRow> paintedRows;
    // Weight smoothing: whether the model handed over cells, which the edit cannot write as
    // values (it says so before smoothing); the command text; the scene's selection when it was
    // prepared, which a redo puts back, since the host smooths the selected vertices.
    bool handedCells = false;
    HString smoothCommand;
    HSelectionList smoothSelection;
    bool smoothedOnce = false;
    weightTableModel* tableModel = nullptr;
};
