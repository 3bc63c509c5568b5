// HFnNumericAttribute: makes attribute definitions holding a bool, an int or a double.
//
// create() fails with kInvalidParameter (and returns null) for an empty name or an invalid type.
#pragma once

#include "HFnAttribute.h"
#include "HFnNumericData.h"

class HFnNumericAttribute : public HFnAttribute {
public:
    HFnNumericAttribute();
    explicit HFnNumericAttribute(const HObject& attribute, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& attribute) override;

    HObject create(const HString& fullName, const HString& briefName, HFnNumericData::Type type,
                   double defaultValue = 0.0, HStatus* status = nullptr);
    HFnNumericData::Type unitType(HStatus* status = nullptr) const;
    double defaultValue(HStatus* status = nullptr) const;
};
