// HIntArray: an array of integers, such as vertex or influence indices. See HArray for the common
// operations.
#pragma once

#include "HArray.h"

class HIntArray : public HArray<int> {
public:
    using HArray<int>::HArray;
};
