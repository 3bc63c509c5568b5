// HStringArray: an array of HString values. See HArray for the common operations.
#pragma once

#include "HArray.h"
#include "HString.h"

class HStringArray : public HArray<HString> {
public:
    using HArray<HString>::HArray;
};
