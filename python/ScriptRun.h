// ScriptRun: runs text of the command language for a Python caller: with undo on (so that
// vorel.undo() takes it back) and without echo, keeping everything the host writes to the
// script output meanwhile, for the module to hand to Python once the host is done (Python code
// never runs inside the host's callbacks).
#pragma once

#include "HCommandMessage.h"
#include "HStatus.h"
#include "lang/CommandResult.h"

#include <string>
#include <vector>

namespace pyhost {

struct ScriptMessage {
    HCommandMessage::MessageType type;
    std::string text;
};

struct ScriptOutcome {
    HStatus status;
    // The last statement's result; none after a failure.
    runtime::CommandResult result;
    std::vector<ScriptMessage> messages;

    // The errors the host wrote, one a line, or the status's own text when it wrote none.
    std::string errorText() const;
};

ScriptOutcome runScript(const std::string& text);

// text as a double-quoted string of the command language (a path, a name).
std::string quoted(const std::string& text);

} // namespace pyhost
