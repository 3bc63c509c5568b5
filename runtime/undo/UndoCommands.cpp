// The commands of the undo queue: undo, redo, flushUndo and undoInfo -q -undoName/-redoName.
// None of them is recorded itself.
#include "HArgParser.h"
#include "lang/BuiltInCommand.h"
#include "undo/UndoQueue.h"

namespace {

runtime::UndoQueue& queue() {
    return runtime::host().get<runtime::UndoQueue>();
}

HSyntax noFlags() {
    return HSyntax();
}

// Nothing to undo is a warning, not a failure: the script goes on.
class UndoCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        queue().undo();
        return HS::kSuccess;
    }
};

class RedoCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        queue().redo();
        return HS::kSuccess;
    }
};

class FlushUndoCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        queue().flush();
        return HS::kSuccess;
    }
};

class UndoInfoCommand : public HPxCommand {
public:
    static HSyntax createSyntax() {
        HSyntax syntax;
        syntax.addFlag("-un", "-undoName");
        syntax.addFlag("-rn", "-redoName");
        syntax.enableQuery(true);
        return syntax;
    }

    HStatus doIt(const HArgList& args) override {
        HArgParser parser(syntax(), args);
        if (parser.isQuery() && parser.isFlagSet("undoName"))
            setResult(queue().undoName());
        else if (parser.isQuery() && parser.isFlagSet("redoName"))
            setResult(queue().redoName());
        else
            return runtime::commandError("undoInfo: Query -undoName or -redoName with -q.");
        return HS::kSuccess;
    }
};

const bool registered =
    runtime::registerBuiltInCommand("undo", runtime::createCommand<UndoCommand>, noFlags) &&
    runtime::registerBuiltInCommand("redo", runtime::createCommand<RedoCommand>, noFlags) &&
    runtime::registerBuiltInCommand("flushUndo", runtime::createCommand<FlushUndoCommand>,
                                    noFlags) &&
    runtime::registerBuiltInCommand("undoInfo", runtime::createCommand<UndoInfoCommand>,
                                    &UndoInfoCommand::createSyntax);

} // namespace
