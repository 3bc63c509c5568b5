// HItMeshVertex: visits the vertices of a mesh: every vertex in index order, or the vertices
// of a vertex component in the component's order.
//
// Construction on something that is not a mesh (or a transform with one mesh shape) fails
// with kInvalidParameter and gives an iterator that is done at once. Component elements that
// are not vertices of the mesh are skipped.
#pragma once

#include "HDagPath.h"
#include "HObject.h"
#include "HPoint.h"
#include "HStatus.h"

#include <memory>

struct HGeometryIteratorData;

class HItMeshVertex {
public:
    explicit HItMeshVertex(const HDagPath& path, const HObject& component = HObject::kNullObj,
                           HStatus* status = nullptr);
    explicit HItMeshVertex(const HObject& meshNode, HStatus* status = nullptr);
    ~HItMeshVertex();

    int index(HStatus* status = nullptr) const;
    // Position of the vertex in object space.
    HPoint position(HStatus* status = nullptr) const;
    HStatus next();
    bool isDone(HStatus* status = nullptr) const;
    // Number of vertices this iterator visits.
    int count(HStatus* status = nullptr) const;
    HStatus reset();

private:
    std::unique_ptr<HGeometryIteratorData> m_data;
};
