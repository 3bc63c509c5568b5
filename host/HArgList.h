// HArgList: the arguments a command was given, in order, as the command language parsed them
// (flags included: "-sw", "0.1", "-swi", "5", "cluster1").
//
// A plain value. Reading an argument past the end, or one that does not convert to the asked
// type, fails with kInvalidParameter and gives 0, false or an empty string. The host remembers
// which arguments were written as quoted strings or substituted results: those are values, never
// flags, even when they start with a dash.
#pragma once

#include "HStatus.h"
#include "HString.h"
#include "HStringArray.h"

#include <vector>

class HArgList {
public:
    HArgList();
    explicit HArgList(const HStringArray& arguments);

    unsigned length(HStatus* status = nullptr) const;
    HString asString(unsigned index, HStatus* status = nullptr) const;
    int asInt(unsigned index, HStatus* status = nullptr) const;
    double asDouble(unsigned index, HStatus* status = nullptr) const;
    // "true", "on", "yes" and non-zero numbers are true; "false", "off", "no" and 0 are false.
    bool asBool(unsigned index, HStatus* status = nullptr) const;

    HStatus addArg(const HString& argument);
    HStatus addArg(int argument);
    HStatus addArg(double argument);

private:
    friend struct HCommandAccess;
    HStringArray m_arguments;
    // Positions of the arguments that are values whatever they look like.
    std::vector<unsigned> m_literals;
};
