#include "lang/BuiltInCommand.h"

#include "HGlobal.h"

namespace runtime {

namespace {

std::vector<BuiltInRegistration>& registrations() {
    static std::vector<BuiltInRegistration> commands;
    return commands;
}

} // namespace

bool registerBuiltInCommand(const char* name, CommandCreator creator, SyntaxCreator syntax) {
    registrations().push_back({name, creator, syntax});
    return true;
}

const std::vector<BuiltInRegistration>& builtInCommands() {
    return registrations();
}

HStatus commandError(const HString& message, HS::StatusCode code) {
    HGlobal::displayError(message);
    return HStatus(code, message);
}

HStatus noObjectMatches(const HString& name) {
    return commandError("No object matches name: " + name, HS::kInvalidParameter);
}

} // namespace runtime
