// HFnAttribute: the operations shared by attribute definitions (objects made by
// HFnNumericAttribute, HFnTypedAttribute and HFnCompoundAttribute before they are added to a
// node with HFnDependencyNode::addAttribute).
//
// A definition may be changed only until it has been added to a node; later changes fail with
// kInvalidParameter.
#pragma once

#include "HFnBase.h"
#include "HString.h"

class HFnAttribute : public HFnBase {
public:
    HFnAttribute();
    explicit HFnAttribute(const HObject& attribute, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& attribute) override;

    HString name(HStatus* status = nullptr) const;
    HString shortName(HStatus* status = nullptr) const;
    // An array attribute holds sparse elements by logical index.
    HStatus setArray(bool isArray);
    bool isArray(HStatus* status = nullptr) const;
    // The compound attribute this one is a child of, or null.
    HObject parent(HStatus* status = nullptr) const;
};
