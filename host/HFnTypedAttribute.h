// HFnTypedAttribute: makes attribute definitions holding a string or a string array.
//
// The default is a data object made with the matching data function set (for a string array,
// HFnStringArrayData::create), or null for an empty default. create() fails with
// kInvalidParameter for an empty name, an invalid type, or default data of another type.
#pragma once

#include "HFnAttribute.h"
#include "HFnData.h"

class HFnTypedAttribute : public HFnAttribute {
public:
    HFnTypedAttribute();
    explicit HFnTypedAttribute(const HObject& attribute, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& attribute) override;

    HObject create(const HString& fullName, const HString& briefName, HFnData::Type type,
                   const HObject& defaultData = HObject::kNullObj, HStatus* status = nullptr);
    HFnData::Type attrType(HStatus* status = nullptr) const;
};
