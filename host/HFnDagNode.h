// HFnDagNode: the operations of DAG nodes (transforms, joints, shapes): their place in the
// hierarchy, their full path name and their dormant (wireframe) colour.
//
// Attach it to a DAG node or a DAG path; anything else fails with kInvalidParameter.
#pragma once

#include "HColor.h"
#include "HDagPath.h"
#include "HFnDependencyNode.h"

class HFnDagNode : public HFnDependencyNode {
public:
    HFnDagNode();
    explicit HFnDagNode(const HObject& node, HStatus* status = nullptr);
    explicit HFnDagNode(const HDagPath& path, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& node) override;
    HStatus setObject(const HDagPath& path);

    HString fullPathName(HStatus* status = nullptr) const;
    HString partialPathName(HStatus* status = nullptr) const;
    HStatus getPath(HDagPath& path) const;
    HDagPath dagPath(HStatus* status = nullptr) const;

    // A DAG node has one parent; the world's children have none (parentCount() is 0).
    unsigned parentCount(HStatus* status = nullptr) const;
    HObject parent(unsigned i, HStatus* status = nullptr) const;
    unsigned childCount(HStatus* status = nullptr) const;
    HObject child(unsigned i, HStatus* status = nullptr) const;

    // The colour the node is drawn with when not selected: for a joint with useObjectColor
    // on, the palette colour at objectColor; otherwise the default colour of its type.
    HColor dormantColor(HStatus* status = nullptr) const;
};
