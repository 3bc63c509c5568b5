// HGeometryIteratorData: the state behind HItMeshVertex and HItGeometry: the mesh visited and
// the vertices to visit (all of them in index order, or a component's in its order, taken
// when the iterator is made so later changes to the component do not disturb the walk).
//
// Construction fails on anything without mesh geometry and gives an iterator that is done at
// once; a mesh deleted during the walk makes position() fail.
#pragma once

#include "HDagPath.h"
#include "HObject.h"
#include "HPoint.h"
#include "HStatus.h"
#include "scene/Node.h"

#include <vector>

struct HGeometryIteratorData {
    HGeometryIteratorData(const HObject& node, const HObject& component, HStatus* status);

    // The operations of both iterator classes.
    int index(HStatus* status) const;
    HPoint point(HStatus* status) const;
    HStatus next();
    bool isDone(HStatus* status = nullptr) const;
    int count(HStatus* status = nullptr) const;
    HStatus reset();

    runtime::NodePtr mesh;
    bool all = true;
    unsigned vertexCount = 0;
    std::vector<int> vertices;
    unsigned position = 0;
};
