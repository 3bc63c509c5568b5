#include "HArgParser.h"

#include "lang/HCommandAccess.h"

#include <cctype>
#include <cstring>

namespace {

using Types = std::vector<HSyntax::ArgType>;

const char* describe(HSyntax::ArgType type) {
    switch (type) {
    case HSyntax::kBoolean:
        return "a truth value";
    case HSyntax::kLong:
        return "an integer";
    case HSyntax::kUnsigned:
        return "a non-negative integer";
    case HSyntax::kDouble:
        return "a number";
    default:
        return "a value";
    }
}

// Whether arguments[index] reads as a value of the type.
bool fits(HSyntax::ArgType type, const HArgList& arguments, unsigned index) {
    HStatus status;
    switch (type) {
    case HSyntax::kBoolean:
        arguments.asBool(index, &status);
        break;
    case HSyntax::kLong:
        arguments.asInt(index, &status);
        break;
    case HSyntax::kUnsigned:
        return arguments.asInt(index, &status) >= 0 && status;
    case HSyntax::kDouble:
        arguments.asDouble(index, &status);
        break;
    default:
        break;
    }
    return static_cast<bool>(status);
}

bool namesSomething(const Types& types) {
    for (HSyntax::ArgType type : types)
        if (type != HSyntax::kString && type != HSyntax::kSelectionItem)
            return false;
    return true;
}

HString count(unsigned n, const char* singular, const char* plural) {
    return HString().set(static_cast<double>(n)) + " " + (n == 1 ? singular : plural);
}

// The index-th value of the flag's first use, read as the member function reads it.
template <typename T>
T flagValue(const HArgParser& parser, const char* flag, unsigned index, HStatus* status,
            T (HArgList::*read)(unsigned, HStatus*) const) {
    HArgList values;
    HStatus found = parser.getFlagArgumentList(flag, 0, values);
    if (!found) {
        if (status)
            *status = found;
        return T();
    }
    return (values.*read)(index, status);
}

bool isModeName(const char* flag, const char* shortName, const char* longName) {
    const char* bare = flag[0] == '-' ? flag + 1 : flag;
    return std::strcmp(bare, shortName) == 0 || std::strcmp(bare, longName) == 0;
}

} // namespace

HArgParser::HArgParser(const HSyntax& syntax, const HArgList& arguments, HStatus* status)
    : m_syntax(syntax), m_query(false), m_edit(false) {
    const HStringArray& words = HCommandAccess::words(arguments);
    const unsigned n = words.length();
    auto isFlagWord = [&](unsigned i) {
        const char* text = words[i].asChar();
        return text[0] == '-' && std::isalpha(static_cast<unsigned char>(text[1])) &&
               !HCommandAccess::isLiteral(arguments, i);
    };
    auto fail = [&](const HString& message) {
        m_uses.clear();
        m_commandArguments.clear();
        m_query = m_edit = false;
        if (status)
            *status = HStatus(HS::kInvalidParameter, message);
    };

    // The mode decides whether flags take their values, so it is read first. A command may
    // declare its own -q or -e; then they are ordinary flags.
    for (unsigned i = 0; i < n; ++i) {
        if (!isFlagWord(i))
            continue;
        const HString& word = words[i];
        if (HCommandAccess::findFlag(syntax, word.asChar()) >= 0)
            continue;
        bool query = isModeName(word.asChar(), "q", "query");
        bool edit = isModeName(word.asChar(), "e", "edit");
        if ((query && !syntax.canQuery()) || (edit && !syntax.canEdit())) {
            fail("Invalid flag: " + word);
            return;
        }
        m_query = m_query || query;
        m_edit = m_edit || edit;
    }
    if (m_query && m_edit) {
        fail("Query and edit mode cannot be used together.");
        return;
    }

    const Types& positional = HCommandAccess::positionalArguments(syntax);
    for (unsigned i = 0; i < n;) {
        const HString& word = words[i];
        if (!isFlagWord(i)) {
            unsigned position = m_commandArguments.length();
            if (position < positional.size() && !fits(positional[position], arguments, i)) {
                fail("Argument " + HString().set(position + 1.0) + " needs " +
                     describe(positional[position]) + ", not \"" + word + "\".");
                return;
            }
            m_commandArguments.append(word);
            ++i;
            continue;
        }
        int flag = HCommandAccess::findFlag(syntax, word.asChar());
        if (flag < 0) {
            if (isModeName(word.asChar(), "q", "query") || isModeName(word.asChar(), "e", "edit")) {
                ++i;
                continue;
            }
            fail("Invalid flag: " + word);
            return;
        }
        const Types& types = HCommandAccess::flagArguments(syntax, static_cast<unsigned>(flag));
        FlagUse use{static_cast<unsigned>(flag), HArgList()};
        unsigned taken = (!m_query || namesSomething(types)) ? types.size() : 0;
        if (i + taken >= n && taken > 0) {
            fail("Flag " + word + " needs " + count(taken, "value", "values") + ".");
            return;
        }
        for (unsigned k = 0; k < taken; ++k) {
            unsigned at = i + 1 + k;
            if (!fits(types[k], arguments, at)) {
                fail("Flag " + word + " needs " + describe(types[k]) + ", not \"" + words[at] +
                     "\".");
                return;
            }
            HCommandAccess::addLiteral(use.values, words[at]);
        }
        m_uses.push_back(use);
        i += 1 + taken;
    }
    if (status)
        *status = HS::kSuccess;
}

bool HArgParser::isFlagSet(const char* flag, HStatus* status) const {
    if (status)
        *status = HS::kSuccess;
    if (findFlag(flag) >= 0)
        return true;
    if (!flag || HCommandAccess::findFlag(m_syntax, flag) >= 0)
        return false;
    return (m_query && isModeName(flag, "q", "query")) || (m_edit && isModeName(flag, "e", "edit"));
}

unsigned HArgParser::numberOfFlagsUsed() const {
    return static_cast<unsigned>(m_uses.size()) + (m_query ? 1 : 0) + (m_edit ? 1 : 0);
}

unsigned HArgParser::numberOfFlagUses(const char* flag) const {
    unsigned uses = 0;
    for (const FlagUse& use : m_uses)
        if (HCommandAccess::flagIsNamed(m_syntax, use.flag, flag))
            ++uses;
    return uses;
}

bool HArgParser::isQuery(HStatus* status) const {
    if (status)
        *status = HS::kSuccess;
    return m_query;
}

bool HArgParser::isEdit(HStatus* status) const {
    if (status)
        *status = HS::kSuccess;
    return m_edit;
}

int HArgParser::flagArgumentInt(const char* flag, unsigned index, HStatus* status) const {
    return flagValue(*this, flag, index, status, &HArgList::asInt);
}

double HArgParser::flagArgumentDouble(const char* flag, unsigned index, HStatus* status) const {
    return flagValue(*this, flag, index, status, &HArgList::asDouble);
}

bool HArgParser::flagArgumentBool(const char* flag, unsigned index, HStatus* status) const {
    return flagValue(*this, flag, index, status, &HArgList::asBool);
}

HString HArgParser::flagArgumentString(const char* flag, unsigned index, HStatus* status) const {
    return flagValue(*this, flag, index, status, &HArgList::asString);
}

HStatus HArgParser::getFlagArgumentList(const char* flag, unsigned use, HArgList& values) const {
    unsigned seen = 0;
    for (const FlagUse& given : m_uses) {
        if (!HCommandAccess::flagIsNamed(m_syntax, given.flag, flag))
            continue;
        if (seen++ == use) {
            values = given.values;
            return HS::kSuccess;
        }
    }
    return HStatus(HS::kInvalidParameter,
                   HString("The flag ") + (flag ? flag : "") + " was not given.");
}

unsigned HArgParser::numberOfCommandArguments() const {
    return m_commandArguments.length();
}

HString HArgParser::commandArgumentString(unsigned index, HStatus* status) const {
    return HArgList(m_commandArguments).asString(index, status);
}

int HArgParser::commandArgumentInt(unsigned index, HStatus* status) const {
    return HArgList(m_commandArguments).asInt(index, status);
}

double HArgParser::commandArgumentDouble(unsigned index, HStatus* status) const {
    return HArgList(m_commandArguments).asDouble(index, status);
}

HStatus HArgParser::getObjects(HStringArray& objects) const {
    objects = m_commandArguments;
    return HS::kSuccess;
}

int HArgParser::findFlag(const char* name) const {
    for (unsigned i = 0; i < m_uses.size(); ++i)
        if (HCommandAccess::flagIsNamed(m_syntax, m_uses[i].flag, name))
            return static_cast<int>(i);
    return -1;
}
