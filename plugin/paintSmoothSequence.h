// paintSmoothSequence: smoothing one influence over chosen vertices with the host's skin paint
// tool, as "vorelCmd -skinPaintSmooth" and the window's smoothing command both do it. The
// sequence first records every chosen vertex's weights (for undo), then selects the vertices,
// sets the paint tool to smooth the influence with the opacity and floods it once, and puts
// the tool, the component selection modes and the selection back as they were.
//
// The request names everything by identity (skin cluster, shape path, the row's name as the
// table showed it when the edit was made), so running it again paints the same vertices
// whatever the table shows by then. Every host command of the sequence runs with display and
// undo off; the caller's own undo writes the recorded weights back. Fails, having painted
// nothing, when a row name holds no vertex number ("There is something wrong accessing the
// vertex number.").
#pragma once

#include "HDagPath.h"
#include "HDoubleArray.h"
#include "HObject.h"
#include "HStatus.h"
#include "HString.h"

#include <QList>

// One vertex to smooth.
struct PaintSmoothVertex {
    HObject skinCluster;
    HDagPath shapePath;
    HString rowName; // "vtx[N]"
};

struct PaintSmoothRequest {
    QList<PaintSmoothVertex> vertices;
    HString influence; // the smoothed influence's name, as its column showed it
    double opacity = 0.0;
    QList<HString> lockInfluences; // influences kept locked while painting, by name
};

// What the sequence recorded before painting: per vertex its one-vertex component, the
// weights of all its influences and their count.
struct RecordedVertices {
    QList<HObject> components;
    QList<HDoubleArray> weights;
    QList<int> influenceCounts;
};

HStatus runPaintSmoothSequence(const PaintSmoothRequest& request, RecordedVertices& recorded);
