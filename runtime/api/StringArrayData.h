// StringArrayData: a string array value handed around as an HObject (HFnStringArrayData,
// HPlug::getValue/setValue of string array attributes). Each is a separate value: reading a
// plug makes a new one, so changing it never changes the plug until it is written back.
#pragma once

#include "api/HObjectData.h"
#include "scene/Value.h"

namespace runtime {

struct StringArrayData : HObjectData {
    explicit StringArrayData(StringList values = StringList()) : strings(std::move(values)) {}
    HFn::Type apiType() const override { return HFn::kStringArrayData; }

    StringList strings;
};

} // namespace runtime
