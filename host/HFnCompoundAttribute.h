// HFnCompoundAttribute: makes attribute definitions that group child attributes in a fixed
// order ("objectGroups" with its children 0, 1, 2).
//
// addChild() fails with kInvalidParameter for a null attribute, one that already has a parent,
// or a name already used by a sibling.
#pragma once

#include "HFnAttribute.h"

class HFnCompoundAttribute : public HFnAttribute {
public:
    HFnCompoundAttribute();
    explicit HFnCompoundAttribute(const HObject& attribute, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& attribute) override;

    HObject create(const HString& fullName, const HString& briefName, HStatus* status = nullptr);
    HStatus addChild(const HObject& child);
    unsigned numChildren(HStatus* status = nullptr) const;
    HObject child(unsigned index, HStatus* status = nullptr) const;
};
