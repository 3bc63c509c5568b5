#include "CommandRunner.h"

#include "HGlobal.h"
#include "HQtUtil.h"
#include "core/HostContext.h"
#include "lang/CommandRegistry.h"
#include "lang/Interpreter.h"
#include "lang/ScriptParser.h"

namespace app {

HStatus CommandRunner::run(const QString& text, bool showResults) {
    HString script = HQtUtil::toHString(text);
    runtime::Interpreter& interpreter = runtime::host().get<runtime::Interpreter>();
    runtime::RunOptions options;
    options.display = true;
    options.undo = true;
    options.showResults = showResults;
    runtime::ParsedScript parsed = runtime::parseScript(script);
    HStatus status;
    if (!parsed.ok()) {
        status = interpreter.run(script, options);
    } else {
        // Statement by statement, so that each is echoed as it runs, not the whole text first.
        for (const runtime::ScriptStatement& statement : parsed.script.statements) {
            status = interpreter.run(statement.text, options);
            if (!status)
                break;
        }
    }
    emit finished();
    return status;
}

QString CommandRunner::query(const QString& text, HStatus* status) {
    return HQtUtil::toQString(
        HGlobal::executeCommandStringResult(HQtUtil::toHString(text), false, false, status));
}

QString CommandRunner::quoted(const QString& text) {
    QString escaped = text;
    escaped.replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n").replace('\t', "\\t");
    return '"' + escaped + '"';
}

bool CommandRunner::exists(const char* command) {
    return runtime::host().get<runtime::CommandRegistry>().find(command) != nullptr;
}

} // namespace app
