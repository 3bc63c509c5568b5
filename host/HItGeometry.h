// HItGeometry: visits the points of a shape's geometry: every point in index order, or the
// points of a component in the component's order. For meshes the points are the vertices.
//
// Construction on something without geometry fails with kInvalidParameter and gives an
// iterator that is done at once.
#pragma once

#include "HDagPath.h"
#include "HObject.h"
#include "HPoint.h"
#include "HStatus.h"

#include <memory>

struct HGeometryIteratorData;

class HItGeometry {
public:
    explicit HItGeometry(const HDagPath& path, const HObject& component = HObject::kNullObj,
                         HStatus* status = nullptr);
    explicit HItGeometry(const HObject& shapeNode, HStatus* status = nullptr);
    ~HItGeometry();

    int index(HStatus* status = nullptr) const;
    HPoint position(HStatus* status = nullptr) const;
    HStatus next();
    bool isDone(HStatus* status = nullptr) const;
    int count(HStatus* status = nullptr) const;
    HStatus reset();

private:
    std::unique_ptr<HGeometryIteratorData> m_data;
};
