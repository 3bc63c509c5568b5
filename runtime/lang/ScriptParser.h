// ScriptParser: turns a text of the command language into statements, without running anything.
//
// A statement ends at ";" or a line end. It is a command word followed by arguments (words,
// numbers and flags are kept as written; "double-quoted strings" lose their quotes and escapes;
// `backquoted` commands are parsed into a script of their own), or a procedure call
// `name(arg, ...)`, which may span lines. "//" starts a comment to the end of the line. Empty
// statements are skipped.
//
// parseScript is a pure function of its text: it never runs, prints or throws, and on bad text
// (an unterminated string or backquote, a stray parenthesis, a statement that does not start
// with a command name) it gives no statements and a message "Syntax error in line N: ...".
#pragma once

#include "HString.h"

#include <memory>
#include <vector>

namespace runtime {

struct Script;

struct ScriptArgument {
    enum Kind { kWord, kString, kSubstitution };
    Kind kind = kWord;
    // The word, the string's value, or the backquoted text.
    HString text;
    // The parsed backquoted command, for kSubstitution.
    std::shared_ptr<const Script> script;
};

struct ScriptStatement {
    HString command;
    bool procedureCall = false;
    std::vector<ScriptArgument> arguments;
    // The statement as written, from its command word to its last argument.
    HString text;
    unsigned line = 1;
};

struct Script {
    std::vector<ScriptStatement> statements;
};

struct ParsedScript {
    Script script;
    // Empty when the text parsed.
    HString error;
    bool ok() const { return error.isEmpty(); }
};

ParsedScript parseScript(const HString& text);

} // namespace runtime
