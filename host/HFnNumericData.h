// HFnNumericData: the value types a numeric attribute can hold.
#pragma once

class HFnNumericData {
public:
    enum Type { kInvalid = 0, kBoolean, kInt, kDouble };
};
