// HGlobal's command functions: running texts of the command language and handing back the
// last statement's result in the type the caller asks for.
#include "HGlobal.h"
#include "core/HostContext.h"
#include "lang/Interpreter.h"

namespace {

HStatus execute(const HString& command, bool display, bool undo, runtime::CommandResult* result) {
    if (!runtime::hostRunning()) {
        HStatus status(HS::kFailure, "The host is not running.");
        HGlobal::displayError(status.errorString());
        return status;
    }
    runtime::RunOptions options;
    options.display = display;
    options.undo = undo;
    return runtime::host().get<runtime::Interpreter>().run(command, options, result);
}

template <typename T>
HStatus executeInto(const HString& command, T& value, bool display, bool undo) {
    runtime::CommandResult result;
    HStatus status = execute(command, display, undo, &result);
    if (!status)
        return status;
    status = result.get(value);
    if (!status)
        HGlobal::displayError(status.errorString());
    return status;
}

} // namespace

HStatus HGlobal::executeCommand(const HString& command, bool displayEnabled, bool undoEnabled) {
    return execute(command, displayEnabled, undoEnabled, nullptr);
}

HStatus HGlobal::executeCommand(const HString& command, int& result, bool displayEnabled,
                                bool undoEnabled) {
    return executeInto(command, result, displayEnabled, undoEnabled);
}

HStatus HGlobal::executeCommand(const HString& command, HIntArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return executeInto(command, result, displayEnabled, undoEnabled);
}

HStatus HGlobal::executeCommand(const HString& command, double& result, bool displayEnabled,
                                bool undoEnabled) {
    return executeInto(command, result, displayEnabled, undoEnabled);
}

HStatus HGlobal::executeCommand(const HString& command, HDoubleArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return executeInto(command, result, displayEnabled, undoEnabled);
}

HStatus HGlobal::executeCommand(const HString& command, HString& result, bool displayEnabled,
                                bool undoEnabled) {
    return executeInto(command, result, displayEnabled, undoEnabled);
}

HStatus HGlobal::executeCommand(const HString& command, HStringArray& result, bool displayEnabled,
                                bool undoEnabled) {
    return executeInto(command, result, displayEnabled, undoEnabled);
}

HString HGlobal::executeCommandStringResult(const HString& command, bool displayEnabled,
                                            bool undoEnabled, HStatus* status) {
    runtime::CommandResult result;
    HStatus outcome = execute(command, displayEnabled, undoEnabled, &result);
    if (status)
        *status = outcome;
    return result.toText();
}
