// paintSmoothStroke: one smoothing of one influence with the host's skin paint tool, over the
// vertices of chosen cells, and its undo. The window's model hands over the cells, their
// shapes, the influence column, the opacity and the columns of locked cells in the painted
// rows; prepare() keeps the cells of that column that hold the influence. paint() records every
// vertex's weights, switches the tool to smoothing, floods it once and puts the tool, the
// component picking modes, the selection and the temporary influence locks back as they were.
// restore() writes the recorded weights back exactly.
//
// Both vorelCmd's -skinPaintSmooth and the window's smoothCmd run a stroke, so the sequence
// exists once. Every host command of paint() runs without echo and without undo: the undo of
// the stroke is restore(). A row header that does not name a vertex stops paint() with an
// information message and a failure; statuses of the tool commands are not checked, the last
// one is returned.
#pragma once

#include "HDagPath.h"
#include "HDoubleArray.h"
#include "HObject.h"
#include "HStatus.h"

#include <QList>
#include <QModelIndexList>

class weightTableModel;

class paintSmoothStroke {
public:
    // Copies the model's hand-over members of a paint smoothing.
    void prepare(const weightTableModel& model);
    HStatus paint(const weightTableModel& model);
    HStatus restore() const;

private:
    QList<int> lockColumns;
    QModelIndexList cells;
    // Per cell, its shape index.
    QList<int> shapes;
    int column = 0;
    double opacity = 0.0;

    // Per cell, what paint() read before painting: the vertex, the cluster and shape it was
    // read from, and the weights of all influences.
    QList<HObject> components;
    QList<HObject> clusters;
    QList<HDagPath> shapePaths;
    QList<HDoubleArray> oldWeights;
    QList<unsigned> influenceCounts;
};
