#include "lang/HCommandAccess.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

bool sameName(const HString& declared, const char* name) {
    // Declared names carry their dash; callers may leave it out.
    const char* bare = declared.asChar() + 1;
    if (name[0] == '-')
        ++name;
    return std::strcmp(bare, name) == 0;
}

} // namespace

unsigned HCommandAccess::flagCount(const HSyntax& syntax) {
    return static_cast<unsigned>(syntax.m_flags.size());
}

const HString& HCommandAccess::flagShortName(const HSyntax& syntax, unsigned flag) {
    assert(flag < syntax.m_flags.size());
    return syntax.m_flags[flag].shortName;
}

const HString& HCommandAccess::flagLongName(const HSyntax& syntax, unsigned flag) {
    assert(flag < syntax.m_flags.size());
    return syntax.m_flags[flag].longName;
}

const std::vector<HSyntax::ArgType>& HCommandAccess::flagArguments(const HSyntax& syntax,
                                                                   unsigned flag) {
    assert(flag < syntax.m_flags.size());
    return syntax.m_flags[flag].arguments;
}

bool HCommandAccess::flagIsNamed(const HSyntax& syntax, unsigned flag, const char* name) {
    assert(flag < syntax.m_flags.size());
    if (!name)
        return false;
    const HSyntax::Flag& declared = syntax.m_flags[flag];
    return sameName(declared.shortName, name) || sameName(declared.longName, name);
}

int HCommandAccess::findFlag(const HSyntax& syntax, const char* name) {
    for (unsigned i = 0; i < syntax.m_flags.size(); ++i)
        if (flagIsNamed(syntax, i, name))
            return static_cast<int>(i);
    return -1;
}

const std::vector<HSyntax::ArgType>& HCommandAccess::positionalArguments(const HSyntax& syntax) {
    return syntax.m_arguments;
}

void HCommandAccess::setSyntax(HPxCommand& command, const HSyntax& syntax) {
    command.m_syntax = syntax;
}

const HStringArray& HCommandAccess::words(const HArgList& arguments) {
    return arguments.m_arguments;
}

void HCommandAccess::addLiteral(HArgList& arguments, const HString& value) {
    arguments.m_literals.push_back(arguments.m_arguments.length());
    arguments.m_arguments.append(value);
}

bool HCommandAccess::isLiteral(const HArgList& arguments, unsigned index) {
    const std::vector<unsigned>& literals = arguments.m_literals;
    return std::binary_search(literals.begin(), literals.end(), index);
}
