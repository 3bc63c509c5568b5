// HObjectArray: an array of HObject handles. See HArray for the common operations.
#pragma once

#include "HArray.h"
#include "HObject.h"

class HObjectArray : public HArray<HObject> {
public:
    using HArray<HObject>::HArray;
};
