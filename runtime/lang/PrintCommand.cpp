// print: writes its arguments, separated by spaces, as one line of the script output. It has
// no syntax, so every argument is printed as given, flags and all.
#include "lang/BuiltInCommand.h"

namespace {

class PrintCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        HString line;
        for (unsigned i = 0; i < args.length(); ++i) {
            if (i > 0)
                line += ' ';
            line += args.asString(i);
        }
        displayInfo(line);
        return HS::kSuccess;
    }
};

const bool registered =
    runtime::registerBuiltInCommand("print", runtime::createCommand<PrintCommand>);

} // namespace
