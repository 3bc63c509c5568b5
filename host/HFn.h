// HFn: the kinds of object the host interface knows, as fixed type numbers.
//
// HObject::apiType() returns the most specific kind; HObject::hasFn() follows the kind
// hierarchy (a joint has kJoint, kTransform, kDagNode and kDependencyNode). The numbers are
// part of the interface: plug-ins compare them, so they never change.
#pragma once

class HFn {
public:
    enum Type {
        kInvalid = 0,
        kBase = 1,
        kNamedObject = 2,
        kDependencyNode = 4,
        kDagNode = 107,
        kTransform = 110,
        kJoint = 121,
        kShape = 248,
        kMesh = 296,
        kGroupId = 358,
        kSet = 471,
        kComponent = 520,
        kSingleIndexedComponent = 521,
        kMeshEdgeComponent = 551,
        kMeshPolygonComponent = 552,
        kMeshVertComponent = 554,
        kAttribute = 560,
        kNumericAttribute = 561,
        kTypedAttribute = 562,
        kCompoundAttribute = 563,
        kMessageAttribute = 564,
        kData = 580,
        kStringData = 581,
        kStringArrayData = 582,
        kGeometryFilter = 680,
        kSkinClusterFilter = 687,
        kPlugin = 900,
    };
};
