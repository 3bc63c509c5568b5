// sheetScene: the viewport tests' scene: a flat 4 x 4 plane ("sheet", 5 x 5 vertices one unit
// apart, lifted to y = 1 so that the grid stays below it) bound to two root joints, "left" at
// x = -2 and "right" at x = 2, with exact weights: left 1 on the vertices with x < 0, 0 on
// those with x > 0, and 0.5 on the middle column. Built through the command language.
#pragma once

#include "HStatus.h"
#include "scene/Node.h"

#include <QVector3D>
#include <string>

namespace viewporttest {

struct Sheet {
    runtime::NodePtr shape;
    runtime::NodePtr cluster;
    runtime::NodePtr left;
    runtime::NodePtr right;

    // The vertex at (x, 1, z); asserts that there is one.
    unsigned vertexAt(double x, double z) const;
    double leftWeight(unsigned vertex) const;
};

// Fails the calling test when a command fails.
Sheet makeSheet();

// Runs statements without echo or undo; fails the calling test when one fails.
void run(const std::string& statements);

// "sheet.vtx[N]".
std::string vertexName(unsigned vertex);

} // namespace viewporttest
