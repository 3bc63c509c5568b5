// HDagPath: the path from the world to one node of the DAG (transforms, joints, shapes).
//
// A cheap value. Short names need only be unique among siblings, so a path, not a name, is
// what identifies a DAG node: fullPathName() gives "|root|child|shape". A path whose node has
// been deleted is not valid; operations on it fail with kInvalidParameter.
#pragma once

#include "HObject.h"
#include "HStatus.h"
#include "HString.h"

class HDagPath {
public:
    HDagPath();

    // Fails with kInvalidParameter when node is null or not a DAG node.
    static HStatus getAPathTo(const HObject& node, HDagPath& path);

    HObject node(HStatus* status = nullptr) const;
    // The node itself when it is a transform, otherwise its parent transform.
    HObject transform(HStatus* status = nullptr) const;
    HString fullPathName(HStatus* status = nullptr) const;
    // The shortest trailing part of the full path that names the node uniquely.
    HString partialPathName(HStatus* status = nullptr) const;

    // Moves the path down to the node's shape. Succeeds without change when the node is a
    // shape; fails (path unchanged) when a transform has no shape or more than one.
    HStatus extendToShape();
    // Moves the path up by count nodes.
    HStatus pop(unsigned count = 1);
    // Moves the path down to a child of its node.
    HStatus push(const HObject& child);

    // Number of nodes below the world on the path (0 for an invalid path).
    unsigned length(HStatus* status = nullptr) const;
    unsigned childCount(HStatus* status = nullptr) const;
    HObject child(unsigned i, HStatus* status = nullptr) const;
    bool isValid(HStatus* status = nullptr) const;
    HFn::Type apiType(HStatus* status = nullptr) const;
    bool hasFn(HFn::Type type, HStatus* status = nullptr) const;

    bool operator==(const HDagPath& other) const;
    bool operator!=(const HDagPath& other) const;

private:
    friend struct HApiAccess;
    HObject m_node;
};
