// paintSmoothSequence: smoothing one influence over chosen vertices with the host's skin paint
// tool, as "vorelCmd -skinPaintSmooth" and the window's smoothing command both do it. The
// sequence first records every chosen vertex's weights (for undo), then selects the vertices,
// sets the paint tool to smooth the influence with the opacity and floods it once, and puts
// the tool, the component selection modes and the selection back as they were.
//
// Every host command of the sequence runs with display and undo off; the caller's own undo
// writes the recorded weights back. Fails, having painted nothing, when a row's header holds
// no vertex number ("There is something wrong accessing the vertex number.").
#pragma once

#include "HDoubleArray.h"
#include "HObject.h"
#include "HStatus.h"

#include <QList>
#include <QModelIndexList>

class weightTableModel;

struct PaintSmoothRequest {
    QModelIndexList cells; // the vertex cells to smooth, all in `column`
    QList<int> shapes;     // per cell, its shape index
    int column = 0;        // the influence's table column
    double opacity = 0.0;
    QList<int> lockColumns; // columns whose influences stay locked while painting
};

// What the sequence recorded before painting: per cell its one-vertex component, the weights
// of all its influences and their count.
struct RecordedVertices {
    QList<HObject> components;
    QList<int> shapes;
    QList<HDoubleArray> weights;
    QList<int> influenceCounts;
};

HStatus runPaintSmoothSequence(const weightTableModel& model, const PaintSmoothRequest& request,
                               RecordedVertices& recorded);
