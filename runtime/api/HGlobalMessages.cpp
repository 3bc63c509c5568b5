// HGlobal's message functions: information, warnings and errors to the script output.
#include "HGlobal.h"
#include "core/HostContext.h"
#include "core/ScriptOutput.h"

#include <cstdio>

namespace {

void write(const HString& text, HCommandMessage::MessageType type) {
    if (runtime::hostRunning()) {
        runtime::host().get<runtime::ScriptOutput>().write(text, type);
        return;
    }
    // Without a host there is no script output; a message must still not be lost.
    std::fprintf(stderr, "%s\n", runtime::ScriptOutput::formatLine(text, type).asChar());
}

} // namespace

void HGlobal::displayInfo(const HString& text) {
    write(text, HCommandMessage::kInfo);
}
void HGlobal::displayWarning(const HString& text) {
    write(text, HCommandMessage::kWarning);
}
void HGlobal::displayError(const HString& text) {
    write(text, HCommandMessage::kError);
}
