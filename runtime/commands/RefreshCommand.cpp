// refresh: redraws what shows the scene now. -f (-force) is accepted: every refresh is
// immediate.
#include "commands/CommandSupport.h"
#include "core/DisplayRefresh.h"
#include "lang/BuiltInCommand.h"

namespace {

class RefreshCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-f", "-force");
        return syntax;
    }
    HStatus doIt(const HArgList& args) override {
        if (runtime::commandObjects(HArgParser(syntax(), args)).length() > 0)
            return runtime::reportFailure("refresh", "It takes no objects.");
        runtime::host().get<runtime::DisplayRefresh>().request();
        return HS::kSuccess;
    }
};

const bool registered = runtime::registerBuiltInCommand(
    "refresh", runtime::createCommand<RefreshCommand>, &RefreshCommand::createSyntax);

} // namespace
