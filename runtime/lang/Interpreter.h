// Interpreter: runs texts of the command language, statement by statement.
//
// For each statement it finds the command in the CommandRegistry ("Cannot find procedure
// "NAME"." when there is none), builds its HArgList (running backquoted commands and putting in
// their results), checks the arguments against the command's syntax ("NAME: Invalid flag: -x",
// without creating a doIt), creates the command object and calls doIt, which may set the
// statement's result. The UndoQueue brackets every invocation, so commands run from inside a
// doIt are recorded into the running command's entry. The first failing statement stops the
// text; every error is written to the script output (a command that fails without saying why
// gets "NAME: " and its status's text), and the failed status is returned.
//
// A text that does not parse runs nothing. Invocations may nest (a doIt may run statements);
// each has its own result. Nesting deeper than kMaxDepth fails instead of exhausting the stack.
#pragma once

#include "HArgList.h"
#include "HStatus.h"
#include "HString.h"
#include "core/HostContext.h"
#include "lang/CommandResult.h"
#include "lang/ScriptParser.h"

#include <vector>

namespace runtime {

struct CommandEntry;

struct RunOptions {
    // Echo the text to the script output (kHistory) before it runs.
    bool display = false;
    // Record what the commands change in the undo queue.
    bool undo = false;
    // Write each statement's result to the script output (kResult), as the script editor shows.
    bool showResults = false;
};

class Interpreter : public HostModule {
public:
    static constexpr unsigned kMaxDepth = 200;

    // result, when given, receives the last statement's result (none after a failure).
    HStatus run(const HString& text, const RunOptions& options, CommandResult* result = nullptr);

    // The result of the invocation that is running (HPxCommand::setResult); ignored when none is.
    void setResult(const CommandResult& result);

private:
    HStatus runScript(const Script& script, const RunOptions& options, CommandResult& last);
    HStatus runStatement(const ScriptStatement& statement, const RunOptions& options,
                         CommandResult& result);
    HStatus buildArguments(const ScriptStatement& statement, const RunOptions& options,
                           HArgList& arguments);
    HStatus invoke(const CommandEntry& entry, const ScriptStatement& statement,
                   const HArgList& arguments, const RunOptions& options, CommandResult& result);

    std::vector<CommandResult*> m_results;
};

} // namespace runtime
