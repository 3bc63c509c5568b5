#include "HSyntax.h"

namespace {

bool isFlagName(const char* name) {
    return name && name[0] == '-' && name[1] != '\0';
}

bool isArgType(HSyntax::ArgType type) {
    return type > HSyntax::kInvalidArgType && type <= HSyntax::kSelectionItem;
}

} // namespace

HSyntax::HSyntax() : m_query(false), m_edit(false) {}

HStatus HSyntax::addFlag(const char* shortName, const char* longName, ArgType arg1, ArgType arg2,
                         ArgType arg3, ArgType arg4, ArgType arg5, ArgType arg6) {
    if (!isFlagName(shortName) || !isFlagName(longName))
        return HStatus(HS::kInvalidParameter, "A flag name starts with a dash.");
    for (const Flag& flag : m_flags)
        if (flag.longName == longName)
            return HStatus(HS::kInvalidParameter,
                           HString("The flag ") + longName + " is declared twice.");
    Flag flag{shortName, longName, {}};
    // The values end at the first kNoArg.
    for (ArgType type : {arg1, arg2, arg3, arg4, arg5, arg6}) {
        if (type == kNoArg)
            break;
        if (!isArgType(type))
            return HStatus(HS::kInvalidParameter, "Unknown argument type.");
        flag.arguments.push_back(type);
    }
    m_flags.push_back(flag);
    return HS::kSuccess;
}

HStatus HSyntax::addArg(ArgType arg) {
    if (!isArgType(arg) || arg == kNoArg)
        return HStatus(HS::kInvalidParameter, "Unknown argument type.");
    m_arguments.push_back(arg);
    return HS::kSuccess;
}

HStatus HSyntax::enableQuery(bool enable) {
    m_query = enable;
    return HS::kSuccess;
}

HStatus HSyntax::enableEdit(bool enable) {
    m_edit = enable;
    return HS::kSuccess;
}

bool HSyntax::canQuery() const {
    return m_query;
}

bool HSyntax::canEdit() const {
    return m_edit;
}
