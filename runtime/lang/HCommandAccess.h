// HCommandAccess: the runtime's one way into the private parts of the command classes: the
// flags and positional arguments an HSyntax declares, the syntax an HPxCommand carries, and
// which arguments of an HArgList are values that never read as flags.
//
// Only the command language (the argument parser and the interpreter) uses it; plug-ins never
// see it. A flag position out of range is a programming error and asserts.
#pragma once

#include "HArgList.h"
#include "HPxCommand.h"
#include "HString.h"
#include "HSyntax.h"

#include <vector>

struct HCommandAccess {
    static unsigned flagCount(const HSyntax& syntax);
    static const HString& flagShortName(const HSyntax& syntax, unsigned flag);
    static const HString& flagLongName(const HSyntax& syntax, unsigned flag);
    static const std::vector<HSyntax::ArgType>& flagArguments(const HSyntax& syntax, unsigned flag);
    // True when name, with or without its dash, is the flag's short or long name.
    static bool flagIsNamed(const HSyntax& syntax, unsigned flag, const char* name);
    // The first flag so named, or -1.
    static int findFlag(const HSyntax& syntax, const char* name);
    static const std::vector<HSyntax::ArgType>& positionalArguments(const HSyntax& syntax);

    static void setSyntax(HPxCommand& command, const HSyntax& syntax);

    // The arguments as they are stored, without copying them.
    static const HStringArray& words(const HArgList& arguments);
    // Appends an argument that is a value whatever it looks like.
    static void addLiteral(HArgList& arguments, const HString& value);
    static bool isLiteral(const HArgList& arguments, unsigned index);
};
