// TerminalOutput: writes the script output to the terminal while it lives, as batch mode
// shows it: echoed commands, information and `print` as the bare text and warnings as
// "// Warning: TEXT" on stdout; errors as "// Error: TEXT" on stderr. Results are not written
// (batch mode shows values only through `print`).
//
// With errorsOnly, only warnings and errors are written, both to stderr: for runs whose window
// no one sees (--screenshot). Each line is flushed at once, so the two streams interleave in
// the order the messages were written.
#pragma once

#include "HCommandMessage.h"

namespace app {

class TerminalOutput {
public:
    enum Mode { kEverything, kErrorsOnly };

    explicit TerminalOutput(Mode mode);
    ~TerminalOutput();
    TerminalOutput(const TerminalOutput&) = delete;
    TerminalOutput& operator=(const TerminalOutput&) = delete;

private:
    static void write(const HString& text, HCommandMessage::MessageType type, void* self);

    Mode m_mode;
    HCallbackId m_callback;
};

} // namespace app
