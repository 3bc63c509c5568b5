// HSyntax: the flags and arguments a command accepts, and whether it has a query (-q) and an
// edit (-e) mode. A command's syntax function builds one; the host checks every invocation
// against it before the command runs.
//
// Flag names are given with their dash ("-n", "-name"). addFlag fails with kInvalidParameter
// for a name without a dash or a long name used twice (a short name may be shared; the long
// name then tells the flags apart).
#pragma once

#include "HStatus.h"
#include "HString.h"

#include <vector>

class HSyntax {
public:
    enum ArgType {
        kInvalidArgType = 0,
        kNoArg,
        kBoolean,
        kLong,
        kDouble,
        kString,
        kUnsigned,
        kSelectionItem,
    };

    HSyntax();

    HStatus addFlag(const char* shortName, const char* longName, ArgType arg1 = kNoArg,
                    ArgType arg2 = kNoArg, ArgType arg3 = kNoArg, ArgType arg4 = kNoArg,
                    ArgType arg5 = kNoArg, ArgType arg6 = kNoArg);
    // A positional argument after the flags.
    HStatus addArg(ArgType arg);
    HStatus enableQuery(bool enable = true);
    HStatus enableEdit(bool enable = true);
    bool canQuery() const;
    bool canEdit() const;

private:
    friend struct HCommandAccess;
    struct Flag {
        HString shortName;
        HString longName;
        std::vector<ArgType> arguments;
    };
    std::vector<Flag> m_flags;
    std::vector<ArgType> m_arguments;
    bool m_query;
    bool m_edit;
};
