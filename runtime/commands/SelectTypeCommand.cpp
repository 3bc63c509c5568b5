// selectType: the component selection modes the viewport's picking honours. -alc
// (-allComponents) B and -v (-vertex) B set them; with -q the command gives the asked mode as
// 0 or 1 (the first one asked when several are). -ocm (-objectComponent) names the group
// these modes belong to and may be given or left out. The modes are settings, not scene
// changes: nothing is recorded for undo.
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "scene/Selection.h"

namespace {

using runtime::reportFailure;

struct Mode {
    const char* flag;
    bool (runtime::Selection::*get)() const;
    void (runtime::Selection::*set)(bool);
};

const Mode kModes[] = {
    {"allComponents", &runtime::Selection::allComponents, &runtime::Selection::setAllComponents},
    {"vertex", &runtime::Selection::vertices, &runtime::Selection::setVertices},
};

class SelectTypeCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-ocm", "-objectComponent");
        syntax.addFlag("-alc", "-allComponents", HSyntax::kBoolean);
        syntax.addFlag("-v", "-vertex", HSyntax::kBoolean);
        syntax.enableQuery();
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        runtime::Selection& selection = runtime::selection();
        if (runtime::commandObjects(parser).length() > 0)
            return reportFailure("selectType", "It takes no objects, only its flags.");
        bool given = false;
        for (const Mode& mode : kModes) {
            if (!parser.isFlagSet(mode.flag))
                continue;
            if (parser.isQuery()) {
                setResult((selection.*mode.get)() ? 1 : 0);
                return HS::kSuccess;
            }
            (selection.*mode.set)(parser.flagArgumentBool(mode.flag, 0));
            given = true;
        }
        if (!given)
            return reportFailure("selectType", "Give -allComponents or -vertex.");
        return HS::kSuccess;
    }
};

const bool registered = runtime::registerBuiltInCommand(
    "selectType", runtime::createCommand<SelectTypeCommand>, &SelectTypeCommand::createSyntax);

} // namespace
