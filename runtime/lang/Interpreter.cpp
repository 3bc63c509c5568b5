#include "lang/Interpreter.h"

#include "HArgParser.h"
#include "HGlobal.h"
#include "core/ScriptOutput.h"
#include "lang/BuiltInCommand.h"
#include "lang/CommandRegistry.h"
#include "lang/HCommandAccess.h"
#include "undo/UndoQueue.h"

#include <memory>

namespace runtime {

namespace {

const bool registered = registerHostModule(
    kLanguageRank, [](HostContext&) { return std::unique_ptr<HostModule>(new Interpreter); });

} // namespace

HStatus Interpreter::run(const HString& text, const RunOptions& options, CommandResult* result) {
    if (options.display)
        host().get<ScriptOutput>().write(text, HCommandMessage::kHistory);
    ParsedScript parsed = parseScript(text);
    HStatus status = parsed.ok() ? HStatus(HS::kSuccess) : commandError(parsed.error);
    CommandResult last;
    if (status)
        status = runScript(parsed.script, options, last);
    if (result)
        *result = status ? last : CommandResult();
    return status;
}

void Interpreter::setResult(const CommandResult& result) {
    if (!m_results.empty())
        *m_results.back() = result;
}

HStatus Interpreter::runScript(const Script& script, const RunOptions& options,
                               CommandResult& last) {
    for (const ScriptStatement& statement : script.statements) {
        HStatus status = runStatement(statement, options, last);
        if (!status)
            return status;
        if (options.showResults && !last.isNone())
            host().get<ScriptOutput>().write(last.toText(), HCommandMessage::kResult);
    }
    return HS::kSuccess;
}

HStatus Interpreter::runStatement(const ScriptStatement& statement, const RunOptions& options,
                                  CommandResult& result) {
    result = CommandResult();
    std::shared_ptr<const CommandEntry> found =
        host().get<CommandRegistry>().find(statement.command);
    if (!found)
        return commandError("Cannot find procedure \"" + statement.command + "\".", HS::kNotFound);
    const CommandEntry& entry = *found;
    if (m_results.size() >= kMaxDepth)
        return commandError(entry.name + ": commands nest too deeply.");
    HArgList arguments;
    HStatus status = buildArguments(statement, options, arguments);
    if (!status)
        return status;
    return invoke(entry, statement, arguments, options, result);
}

HStatus Interpreter::buildArguments(const ScriptStatement& statement, const RunOptions& options,
                                    HArgList& arguments) {
    for (const ScriptArgument& argument : statement.arguments) {
        switch (argument.kind) {
        case ScriptArgument::kWord:
            // In a procedure call every argument is a value.
            if (statement.procedureCall)
                HCommandAccess::addLiteral(arguments, argument.text);
            else
                arguments.addArg(argument.text);
            break;
        case ScriptArgument::kString:
            HCommandAccess::addLiteral(arguments, argument.text);
            break;
        case ScriptArgument::kSubstitution: {
            RunOptions inner;
            inner.undo = options.undo;
            CommandResult value;
            HStatus status = runScript(*argument.script, inner, value);
            if (!status)
                return status;
            for (const HString& text : value.toTexts())
                HCommandAccess::addLiteral(arguments, text);
            break;
        }
        }
    }
    return HS::kSuccess;
}

HStatus Interpreter::invoke(const CommandEntry& entry, const ScriptStatement& statement,
                            const HArgList& arguments, const RunOptions& options,
                            CommandResult& result) {
    std::unique_ptr<HPxCommand> command(entry.creator());
    if (!command)
        return commandError(entry.name + ": the command could not be created.");
    if (entry.syntax) {
        HCommandAccess::setSyntax(*command, *entry.syntax);
        if (command->hasSyntax()) {
            HStatus parsed;
            HArgParser(*entry.syntax, arguments, &parsed);
            if (!parsed)
                return commandError(entry.name + ": " + parsed.errorString(),
                                    HS::kInvalidParameter);
        }
    }

    ScriptOutput& output = host().get<ScriptOutput>();
    UndoQueue& queue = host().get<UndoQueue>();
    unsigned errorsBefore = output.errorCount();
    HStatus status;
    {
        CommandRegistry::Running running(host().get<CommandRegistry>(), entry.owner);
        m_results.push_back(&result);
        queue.beginCommand();
        status = command->doIt(arguments);
        m_results.pop_back();
        // A failed command is kept too: it may have changed something before it failed, and
        // only its undoIt knows what.
        std::unique_ptr<HPxCommand> kept;
        if (options.undo && command->isUndoable())
            kept = std::move(command);
        queue.endCommand(std::move(kept), entry.owner, statement.text);
        command.reset();
    }
    if (status)
        return status;
    result = CommandResult();
    if (output.errorCount() == errorsBefore)
        HGlobal::displayError(entry.name + ": " + status.errorString());
    return status;
}

} // namespace runtime
