// HArgParser: reads an HArgList against a command's HSyntax: which flags were given, with
// which values, and the arguments left after the flags.
//
// Construction fails with kInvalidParameter, and the message the host prints, for an unknown
// flag ("Invalid flag: -x"), a flag value of the wrong type or a missing one, or -q/-e on a
// command whose syntax does not enable them. Flags may be named short or long, with or without
// the dash. Asking for the value of a flag that was not given fails with kInvalidParameter.
//
// An argument is a flag when it starts with a dash and a letter ("-1" and "-0.5" are numbers)
// and is not one the host marked as a value (a quoted string, a substituted result, an argument
// of a procedure call). Flags may stand anywhere among the arguments; each takes the values its
// syntax declares from the arguments after it. In query mode only flags whose values are strings
// take them (the name of what is asked about); the others take none, since their value is what
// the query answers.
#pragma once

#include "HArgList.h"
#include "HStatus.h"
#include "HStringArray.h"
#include "HSyntax.h"

#include <vector>

class HArgParser {
public:
    HArgParser(const HSyntax& syntax, const HArgList& arguments, HStatus* status = nullptr);

    bool isFlagSet(const char* flag, HStatus* status = nullptr) const;
    unsigned numberOfFlagsUsed() const;
    // How often a flag was given (a flag may be repeated: "-t a -t b").
    unsigned numberOfFlagUses(const char* flag) const;
    bool isQuery(HStatus* status = nullptr) const;
    bool isEdit(HStatus* status = nullptr) const;

    // The index-th value of the flag's first use (or of its use-th use).
    int flagArgumentInt(const char* flag, unsigned index, HStatus* status = nullptr) const;
    double flagArgumentDouble(const char* flag, unsigned index, HStatus* status = nullptr) const;
    bool flagArgumentBool(const char* flag, unsigned index, HStatus* status = nullptr) const;
    HString flagArgumentString(const char* flag, unsigned index, HStatus* status = nullptr) const;
    HStatus getFlagArgumentList(const char* flag, unsigned use, HArgList& values) const;

    // The arguments after the flags (object names, values).
    unsigned numberOfCommandArguments() const;
    HString commandArgumentString(unsigned index, HStatus* status = nullptr) const;
    int commandArgumentInt(unsigned index, HStatus* status = nullptr) const;
    double commandArgumentDouble(unsigned index, HStatus* status = nullptr) const;
    HStatus getObjects(HStringArray& objects) const;

private:
    struct FlagUse {
        unsigned flag;
        HArgList values;
    };
    int findFlag(const char* name) const;

    HSyntax m_syntax;
    std::vector<FlagUse> m_uses;
    HStringArray m_commandArguments;
    bool m_query;
    bool m_edit;
};
