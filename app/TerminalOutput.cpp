#include "TerminalOutput.h"

#include "HMessage.h"
#include "core/ScriptOutput.h"

#include <cstdio>

namespace app {

TerminalOutput::TerminalOutput(Mode mode)
    : m_mode(mode), m_callback(HCommandMessage::addCommandOutputCallback(write, this)) {}

TerminalOutput::~TerminalOutput() {
    HMessage::removeCallback(m_callback);
}

void TerminalOutput::write(const HString& text, HCommandMessage::MessageType type, void* self) {
    Mode mode = static_cast<TerminalOutput*>(self)->m_mode;
    bool problem = type == HCommandMessage::kError || type == HCommandMessage::kWarning;
    if (type == HCommandMessage::kResult || (mode == kErrorsOnly && !problem))
        return;
    bool toStderr = type == HCommandMessage::kError || mode == kErrorsOnly;
    std::FILE* stream = toStderr ? stderr : stdout;
    std::FILE* other = toStderr ? stdout : stderr;
    std::fflush(other);
    HString line = runtime::ScriptOutput::formatLine(text, type);
    std::fwrite(line.asChar(), 1, line.length(), stream);
    std::fputc('\n', stream);
    std::fflush(stream);
}

} // namespace app
