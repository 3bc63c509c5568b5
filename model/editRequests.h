// editRequests: the edits the model hands to "vorelCmd", as values. The model builds a request
// from its table and the selection, keeps it as its pending request (one place) and runs the
// command; the command takes the request as it is, so that the edit it keeps for undo and redo
// never depends on what the table shows later.
//
// A request names what it edits by identity (shape index, vertex number, influence index in
// the shape's skin cluster), found by the model when it builds the request; -1 marks what the
// model could not find, which the command reports with its own messages. The table row and
// column of each cell travel too, so that the table can refresh exactly the rows the edit
// wrote.
#pragma once

#include "HDagPath.h"
#include "HString.h"
#include "weightRowList.h"

#include <QList>
#include <QModelIndexList>
#include <QVector>

// What one cell names in the scene; -1 where the table does not say.
struct CellIdentity {
    int shape = -1;
    int vertex = -1;
    int influence = -1;
};

// Typed values ("vorelCmd -setData") or a slider drag over cells ("vorelCmd -dragSlider"): each
// cell of `pendingCells` gets the value at the same position of `pendingValues`.
struct CellValuesRequest {
    QModelIndexList pendingCells;
    QList<double> pendingValues;
    // Parallel to pendingCells.
    QVector<CellIdentity> identities;
};

// The rows "vorelCmd -numMax" limits to `maxInfluences` weights above zero: per row of
// `pendingRows` inside the table, its shape, its vertex and the values the table shows.
struct LimitedRow {
    int row = -1;
    int shape = -1;
    int vertex = -1;
    WeightRow values;
};
struct LimitRequest {
    QList<int> pendingRows;
    int maxInfluences = 0;
    QVector<LimitedRow> rows;
};

// Flood replace ("vorelCmd -replace"): `floodValue` into the influence of column
// `pendingColumn` on every vertex of the shapes `pendingShapes`.
struct FloodRequest {
    QList<int> pendingShapes;
    int pendingColumn = 0;
    double floodValue = 0.0;
};

// The drag of a whole column ("vorelCmd -dragSliderColumn"): every vertex to `sliderValue`, or
// by `sliderDelta` from the value the table shows, as `sliderAbsolute` says.
struct ColumnDragRequest {
    int pendingColumn = 0;
    double sliderValue = 0.0;
    double sliderDelta = 0.0;
    bool sliderAbsolute = false;
};

// Paint smoothing ("vorelCmd -skinPaintSmooth") of the influence of column `pendingColumn` over
// the cells `pendingCells` of the shapes `pendingShapes`, the columns `pendingLockColumns` locked
// meanwhile.
struct PaintSmoothingRequest {
    QModelIndexList pendingCells;
    QList<int> pendingShapes;
    int pendingColumn = 0;
    double paintSmoothOpacity = 0.0;
    QList<int> pendingLockColumns;
};

// Weight smoothing ("vorelCmd -smoothSkinWeights"): the host command text to run, and the cells
// selected when it was made, with their shapes.
struct WeightSmoothingRequest {
    HString pendingSmoothCommand;
    QModelIndexList pendingCells;
    QList<int> pendingShapes;
};

// A vertex row an edit wrote: its table row as the edit found it, the loaded shape's index and
// path, and the vertex the row held. The table checks them all before it refreshes the row from
// the scene, since it may show other shapes, or the same in another order, by then.
struct WrittenRow {
    WrittenRow() = default;
    WrittenRow(int row, int shape, int vertex) : row(row), shape(shape), vertex(vertex) {}

    int row = -1;
    int shape = -1;
    int vertex = -1;
    HDagPath shapePath;
};
