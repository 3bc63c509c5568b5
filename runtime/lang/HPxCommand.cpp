#include "HPxCommand.h"

#include "HGlobal.h"
#include "core/HostContext.h"
#include "lang/Interpreter.h"

namespace {

void setRunningResult(const runtime::CommandResult& result) {
    if (runtime::hostRunning())
        runtime::host().get<runtime::Interpreter>().setResult(result);
}

} // namespace

HPxCommand::HPxCommand() = default;
HPxCommand::~HPxCommand() = default;

// Only commands that say they are undoable are ever undone or redone.
HStatus HPxCommand::undoIt() {
    return HStatus(HS::kNotImplemented, "This command cannot be undone.");
}

HStatus HPxCommand::redoIt() {
    return HStatus(HS::kNotImplemented, "This command cannot be redone.");
}

bool HPxCommand::isUndoable() const {
    return false;
}

bool HPxCommand::hasSyntax() const {
    return true;
}

HSyntax HPxCommand::syntax() const {
    return m_syntax;
}

void HPxCommand::clearResult() {
    setRunningResult(runtime::CommandResult());
}
void HPxCommand::setResult(bool result) {
    setRunningResult(result ? 1 : 0);
}
void HPxCommand::setResult(int result) {
    setRunningResult(result);
}
void HPxCommand::setResult(double result) {
    setRunningResult(result);
}
void HPxCommand::setResult(const HString& result) {
    setRunningResult(result);
}
void HPxCommand::setResult(const char* result) {
    setRunningResult(HString(result));
}
void HPxCommand::setResult(const HIntArray& result) {
    setRunningResult(result);
}
void HPxCommand::setResult(const HDoubleArray& result) {
    setRunningResult(result);
}
void HPxCommand::setResult(const HStringArray& result) {
    setRunningResult(result);
}

void HPxCommand::displayInfo(const HString& text) {
    HGlobal::displayInfo(text);
}
void HPxCommand::displayWarning(const HString& text) {
    HGlobal::displayWarning(text);
}
void HPxCommand::displayError(const HString& text) {
    HGlobal::displayError(text);
}
