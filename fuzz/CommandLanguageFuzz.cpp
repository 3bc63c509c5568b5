// Feeds texts of the command language to the parser and, when they parse, runs them in the host
// on a new scene with undo recording on. Statements that reach outside the host (files, plug-ins)
// are not run: an input naming such a command anywhere, backquotes included, is only parsed.
// Whatever the text, the host must answer with a status and messages, never a crash or a hang;
// a failed run must have said why. When the text leaves the undo queue to the host (it names no
// undo command and records fewer entries than the queue holds), undoing everything must give
// back the empty scene it started from.
#include "FuzzHost.h"
#include "core/HostContext.h"
#include "core/ScriptOutput.h"
#include "document/SceneDocument.h"
#include "lang/Interpreter.h"
#include "lang/ScriptParser.h"
#include "scene/Scene.h"
#include "undo/UndoQueue.h"

#include <set>
#include <string>

namespace {

// Whether the script, its backquoted commands included, names one of the commands.
bool names(const runtime::Script& script, const std::set<std::string>& commands) {
    for (const runtime::ScriptStatement& statement : script.statements) {
        if (commands.count(statement.command.str()))
            return true;
        for (const runtime::ScriptArgument& argument : statement.arguments)
            if (argument.script && names(*argument.script, commands))
                return true;
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::startFuzzHost();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const HString text(std::string(reinterpret_cast<const char*>(data), size));
    const runtime::ParsedScript parsed = runtime::parseScript(text);
    if (!parsed.ok()) {
        FUZZ_EXPECT(parsed.script.statements.empty());
        FUZZ_EXPECT(parsed.error.str().rfind("Syntax error in line ", 0) == 0);
        return 0;
    }
    if (names(parsed.script, {"file", "loadPlugin", "unloadPlugin"}))
        return 0;

    runtime::HostContext& host = runtime::host();
    host.get<runtime::SceneDocument>().newScene();
    const unsigned errorsBefore = host.get<runtime::ScriptOutput>().errorCount();
    runtime::RunOptions options;
    options.undo = true;
    const HStatus status = host.get<runtime::Interpreter>().run(text, options);
    if (!status)
        FUZZ_EXPECT(host.get<runtime::ScriptOutput>().errorCount() > errorsBefore);

    runtime::UndoQueue& undoQueue = host.get<runtime::UndoQueue>();
    if (names(parsed.script, {"undo", "redo", "flushUndo"}) ||
        undoQueue.undoCount() >= runtime::UndoQueue::kLimit)
        return 0;
    while (undoQueue.undoCount() > 0)
        undoQueue.undo();
    FUZZ_EXPECT(host.get<runtime::Scene>().nodeCount() == 0);
    return 0;
}
