// HFnSingleIndexedComponent: makes and reads components that pick elements of a shape by one
// index each, such as mesh vertices (HFn::kMeshVertComponent, "body.vtx[3]").
//
// A component lists its elements in the order they were added; adding an element that is
// already there changes nothing. The component object is shared by handle: every function set
// attached to it sees the same elements. Negative elements fail with kInvalidParameter.
#pragma once

#include "HFnBase.h"
#include "HIntArray.h"

class HFnSingleIndexedComponent : public HFnBase {
public:
    HFnSingleIndexedComponent();
    explicit HFnSingleIndexedComponent(const HObject& component, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& component) override;

    // A new empty component of the given kind (kMeshVertComponent, kMeshEdgeComponent or
    // kMeshPolygonComponent), attached to this function set.
    HObject create(HFn::Type componentType, HStatus* status = nullptr);
    HFn::Type componentType(HStatus* status = nullptr) const;

    HStatus addElement(int element);
    HStatus addElements(const HIntArray& elements);
    int element(unsigned index, HStatus* status = nullptr) const;
    unsigned elementCount(HStatus* status = nullptr) const;
    bool isEmpty(HStatus* status = nullptr) const;
    HStatus getElements(HIntArray& elements) const;
};
