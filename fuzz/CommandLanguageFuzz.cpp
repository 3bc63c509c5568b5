// Feeds texts of the command language to the parser and, when they parse, runs them in the host
// on a new scene with undo recording on. Statements that reach outside the host (files, plug-ins)
// are not run: an input naming such a command anywhere, backquotes included, is only parsed.
// Whatever the text, the host must answer with a status and messages, never a crash or a hang;
// a failed run must have said why.
#include "FuzzHost.h"
#include "core/HostContext.h"
#include "core/ScriptOutput.h"
#include "document/SceneDocument.h"
#include "lang/Interpreter.h"
#include "lang/ScriptParser.h"

#include <set>
#include <string>

namespace {

bool reachesOutside(const runtime::Script& script) {
    static const std::set<std::string> outside = {"file", "loadPlugin", "unloadPlugin"};
    for (const runtime::ScriptStatement& statement : script.statements) {
        if (outside.count(statement.command.str()))
            return true;
        for (const runtime::ScriptArgument& argument : statement.arguments)
            if (argument.script && reachesOutside(*argument.script))
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
    if (reachesOutside(parsed.script))
        return 0;

    runtime::HostContext& host = runtime::host();
    host.get<runtime::SceneDocument>().newScene();
    const unsigned errorsBefore = host.get<runtime::ScriptOutput>().errorCount();
    runtime::RunOptions options;
    options.undo = true;
    const HStatus status = host.get<runtime::Interpreter>().run(text, options);
    if (!status)
        FUZZ_EXPECT(host.get<runtime::ScriptOutput>().errorCount() > errorsBefore);
    return 0;
}
