// HFnData: the data types a typed attribute can hold.
#pragma once

class HFnData {
public:
    enum Type { kInvalid = 0, kString, kStringArray };
};
