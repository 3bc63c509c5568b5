// HPlugArray: an array of HPlug values. See HArray for the common operations.
#pragma once

#include "HArray.h"
#include "HPlug.h"

class HPlugArray : public HArray<HPlug> {
public:
    using HArray<HPlug>::HArray;
};
