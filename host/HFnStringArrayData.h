// HFnStringArrayData: makes and reads string array data objects, the values of typed
// attributes of type HFnData::kStringArray.
//
// A data object is a value owned by the host and shared by handle: create() makes a new one
// each time, so storing it with HPlug::setValue never aliases an earlier value.
#pragma once

#include "HFnBase.h"
#include "HStringArray.h"

class HFnStringArrayData : public HFnBase {
public:
    HFnStringArrayData();
    explicit HFnStringArrayData(const HObject& data, HStatus* status = nullptr);

    HFn::Type type() const override;
    HStatus setObject(const HObject& data) override;

    HObject create(const HStringArray& strings, HStatus* status = nullptr);
    HObject create(HStatus* status = nullptr);
    HStringArray array(HStatus* status = nullptr) const;
    HStatus set(const HStringArray& strings);
    unsigned length(HStatus* status = nullptr) const;
};
