// The commands that choose the tool: currentCtx, setToolTo, and the skin paint tool's set-up
// commands PntPaintSkinWeightsTool, pntAttrSkinToolScript and pntAttrSkinJointMenu. None of
// them is recorded for undo (ToolContexts.h).
#include "HArgParser.h"
#include "commands/CommandSupport.h"
#include "lang/BuiltInCommand.h"
#include "tools/ToolContexts.h"

namespace {

HSyntax noFlags() {
    return HSyntax();
}

// currentCtx: the current context's name.
class CurrentContextCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        setResult(runtime::toolContexts().current());
        return HS::kSuccess;
    }
};

// setToolTo CONTEXT
class SetToolCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        if (args.length() != 1)
            return runtime::reportFailure("setToolTo", "Give the name of one tool context.");
        HStatus status = runtime::toolContexts().setCurrent(args.asString(0));
        return status ? status : runtime::reportFailure("setToolTo", status);
    }
};

// PntPaintSkinWeightsTool and pntAttrSkinToolScript N: make the skin paint tool current. The
// number of the latter selects among set-ups the host does not distinguish; it must be one.
template <bool TakesSetUpNumber> class SkinPaintToolCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        if (TakesSetUpNumber)
            syntax.addArg(HSyntax::kLong);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        if (TakesSetUpNumber && args.length() != 1)
            return runtime::reportFailure("pntAttrSkinToolScript", "Give one set-up number.");
        return runtime::toolContexts().setCurrent(runtime::ToolContexts::kSkinPaintContext);
    }
};

// pntAttrSkinJointMenu(MENU, CONTEXT): fills the influence menu of the tool's panel; the host
// has no such panel, so it only checks that the context is the skin paint context.
class SkinJointMenuCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        if (args.length() != 2)
            return runtime::reportFailure("pntAttrSkinJointMenu",
                                          "Give a menu name and the skin paint context.");
        HStatus status = runtime::ToolContexts::expectSkinPaintContext(args.asString(1));
        return status ? status : runtime::reportFailure("pntAttrSkinJointMenu", status);
    }
};

const bool registered =
    runtime::registerBuiltInCommand("currentCtx", runtime::createCommand<CurrentContextCommand>,
                                    noFlags) &&
    runtime::registerBuiltInCommand("setToolTo", runtime::createCommand<SetToolCommand>, noFlags) &&
    runtime::registerBuiltInCommand("PntPaintSkinWeightsTool",
                                    runtime::createCommand<SkinPaintToolCommand<false>>,
                                    &SkinPaintToolCommand<false>::createSyntax) &&
    runtime::registerBuiltInCommand("pntAttrSkinToolScript",
                                    runtime::createCommand<SkinPaintToolCommand<true>>,
                                    &SkinPaintToolCommand<true>::createSyntax) &&
    runtime::registerBuiltInCommand("pntAttrSkinJointMenu",
                                    runtime::createCommand<SkinJointMenuCommand>, noFlags);

} // namespace
