// The skin paint tool's commands: pntAttrPaintOperation (the operation), pntSkinSelectInfluence
// (the painted influence) and pntAttrSkinPaintCtx (the context command: its settings, and
// -clear, which floods the selected vertices). Only a flood changes the scene, and each flood
// is one undo step; the settings are not recorded (ToolContexts.h).
#include "HArgParser.h"
#include "commands/CommandSupport.h"
#include "core/DisplayRefresh.h"
#include "lang/BuiltInCommand.h"
#include "scene/Scene.h"
#include "scene/Selection.h"
#include "tools/SkinPaintFlood.h"
#include "tools/ToolContexts.h"

#include <vector>

namespace {

using runtime::reportFailure;
using runtime::ToolContexts;

HSyntax noFlags() {
    return HSyntax();
}

HStatus invalid(const HString& message) {
    return HStatus(HS::kInvalidParameter, message);
}

// A command of the form NAME CONTEXT VALUE that sets one paint setting from VALUE.
using SettingFunction = HStatus (*)(const HString& value);

template <const char* const* Name, const char* const* ValueName, SettingFunction Set>
class PaintSettingCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList& args) override {
        HStatus status =
            args.length() == 2
                ? ToolContexts::expectSkinPaintContext(args.asString(0))
                : invalid(HString("Give the skin paint context and ") + *ValueName + ".");
        if (status)
            status = Set(args.asString(1));
        return status ? status : reportFailure(*Name, status);
    }
};

HStatus setOperation(const HString& name) {
    runtime::PaintOperation operation;
    if (!runtime::paintOperationFromName(name, operation))
        return invalid("Unknown paint operation \"" + name +
                       "\"; use Replace, Add, Scale or Smooth.");
    runtime::toolContexts().skinPaint().operation = operation;
    return HS::kSuccess;
}

HStatus setInfluence(const HString& name) {
    HStatus status;
    runtime::NodePtr joint = runtime::scene().findNode(name.str(), &status);
    if (!joint)
        return status;
    if (!joint->hasFn(HFn::kTransform))
        return invalid("\"" + name + "\" is not a joint.");
    runtime::toolContexts().skinPaint().influence = joint;
    runtime::host().get<runtime::DisplayRefresh>().changed();
    return HS::kSuccess;
}

const char* const kOperationCommand = "pntAttrPaintOperation";
const char* const kOperationValue = "an operation";
const char* const kInfluenceCommand = "pntSkinSelectInfluence";
const char* const kInfluenceValue = "a joint";

// pntAttrPaintOperation CONTEXT OPERATION
using PaintOperationCommand =
    PaintSettingCommand<&kOperationCommand, &kOperationValue, setOperation>;
// pntSkinSelectInfluence CONTEXT JOINT
using SelectInfluenceCommand =
    PaintSettingCommand<&kInfluenceCommand, &kInfluenceValue, setInfluence>;

// pntAttrSkinPaintCtx -e [-skinPaintMode 0|1] [-opacity V] [-clear] CONTEXT, or -q with one of
// -skinPaintMode, -opacity, -influence.
class SkinPaintContextCommand : public runtime::SceneEditCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-spm", "-skinPaintMode", HSyntax::kLong);
        syntax.addFlag("-op", "-opacity", HSyntax::kDouble);
        syntax.addFlag("-clr", "-clear");
        syntax.addFlag("-inf", "-influence");
        syntax.enableQuery(true);
        syntax.enableEdit(true);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        HStatus status = checkContext(parser);
        if (status)
            status = parser.isQuery() ? query(parser) : edit(parser);
        return status ? status : reportFailure(ToolContexts::kSkinPaintCommand, status);
    }

private:
    static HStatus checkContext(const HArgParser& parser) {
        if (!parser.isQuery() && !parser.isEdit())
            return invalid("Use -e to change or -q to read the skin paint context.");
        if (parser.numberOfCommandArguments() != 1)
            return invalid("Give the context to change or read (pntAttrSkinContext).");
        return ToolContexts::expectSkinPaintContext(parser.commandArgumentString(0));
    }

    HStatus query(const HArgParser& parser) {
        const runtime::SkinPaintSettings& settings = runtime::toolContexts().skinPaint();
        if (parser.isFlagSet("clear"))
            return invalid("-clear paints; it has no value to query.");
        // -q counts as a flag used: one more besides it.
        if (parser.numberOfFlagsUsed() != 2)
            return invalid("Query one of -skinPaintMode, -opacity or -influence.");
        if (parser.isFlagSet("skinPaintMode")) {
            setResult(settings.paintMode);
        } else if (parser.isFlagSet("opacity")) {
            setResult(settings.opacity);
        } else {
            runtime::NodePtr influence = settings.liveInfluence();
            setResult(HString(influence ? influence->name() : std::string()));
        }
        return HS::kSuccess;
    }

    // Every value is checked, and whether a flood can run, before anything changes.
    HStatus edit(const HArgParser& parser) {
        runtime::ToolContexts& tools = runtime::toolContexts();
        runtime::SkinPaintSettings settings = tools.skinPaint();
        if (parser.isFlagSet("influence"))
            return invalid("-influence can only be queried; select the influence with "
                           "pntSkinSelectInfluence.");
        if (parser.isFlagSet("skinPaintMode")) {
            settings.paintMode = parser.flagArgumentInt("skinPaintMode", 0);
            if (settings.paintMode != 0 && settings.paintMode != 1)
                return invalid("-skinPaintMode takes 0 (pick vertices) or 1 (paint weights).");
        }
        if (parser.isFlagSet("opacity")) {
            settings.opacity = parser.flagArgumentDouble("opacity", 0);
            if (!(settings.opacity >= 0.0 && settings.opacity <= 1.0))
                return invalid("-opacity takes a value from 0 to 1.");
        }
        bool clear = parser.isFlagSet("clear");
        if (clear) {
            HStatus ready = checkReady(tools.current(), settings);
            if (!ready)
                return ready;
        }
        tools.skinPaint() = settings;
        return clear ? flood(settings) : HStatus(HS::kSuccess);
    }

    static HStatus checkReady(const HString& currentContext,
                              const runtime::SkinPaintSettings& settings) {
        if (currentContext != ToolContexts::kSkinPaintContext)
            return invalid("The skin paint tool is not the current tool; make it current with "
                           "PntPaintSkinWeightsTool.");
        if (settings.paintMode != 1)
            return invalid("The skin paint tool picks vertices; set -skinPaintMode 1 to paint.");
        if (!settings.liveInfluence())
            return invalid("No influence is selected to paint; select one with "
                           "pntSkinSelectInfluence.");
        return HS::kSuccess;
    }

    HStatus flood(const runtime::SkinPaintSettings& settings) {
        runtime::NodePtr influence = settings.liveInfluence();
        std::vector<runtime::PaintTarget> targets =
            runtime::paintTargets(runtime::selection().active(), *influence);
        if (targets.empty()) {
            displayWarning("Nothing to paint: no selected vertex belongs to a mesh bound to " +
                           HString(influence->name()) + ".");
            return HS::kSuccess;
        }
        for (const runtime::PaintTarget& target : targets) {
            HStatus status = runtime::floodTarget(m_scene, m_journal, target, settings.operation,
                                                  settings.opacity);
            if (!status)
                return status;
        }
        return HS::kSuccess;
    }
};

const bool registered =
    runtime::registerBuiltInCommand(kOperationCommand,
                                    runtime::createCommand<PaintOperationCommand>, noFlags) &&
    runtime::registerBuiltInCommand(kInfluenceCommand,
                                    runtime::createCommand<SelectInfluenceCommand>, noFlags) &&
    runtime::registerBuiltInCommand(ToolContexts::kSkinPaintCommand,
                                    runtime::createCommand<SkinPaintContextCommand>,
                                    &SkinPaintContextCommand::createSyntax);

} // namespace
