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

void undo() {
    queue().undo();
}
void redo() {
    queue().redo();
}
void flush() {
    queue().flush();
}

// undo, redo and flushUndo. Nothing to undo or redo is a warning, not a failure: the script
// goes on.
template <void (*Action)()> class QueueCommand : public HPxCommand {
public:
    HStatus doIt(const HArgList&) override {
        Action();
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
    runtime::registerBuiltInCommand("undo", runtime::createCommand<QueueCommand<undo>>, noFlags) &&
    runtime::registerBuiltInCommand("redo", runtime::createCommand<QueueCommand<redo>>, noFlags) &&
    runtime::registerBuiltInCommand("flushUndo", runtime::createCommand<QueueCommand<flush>>,
                                    noFlags) &&
    runtime::registerBuiltInCommand("undoInfo", runtime::createCommand<UndoInfoCommand>,
                                    &UndoInfoCommand::createSyntax);

} // namespace
