// HDoubleArray: an array of doubles, such as skin weights. See HArray for the common operations.
#pragma once

#include "HArray.h"

class HDoubleArray : public HArray<double> {
public:
    using HArray<double>::HArray;
};
