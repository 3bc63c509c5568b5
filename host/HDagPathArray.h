// HDagPathArray: an array of HDagPath values. See HArray for the common operations.
#pragma once

#include "HArray.h"
#include "HDagPath.h"

class HDagPathArray : public HArray<HDagPath> {
public:
    using HArray<HDagPath>::HArray;
};
