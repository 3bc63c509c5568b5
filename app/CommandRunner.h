// CommandRunner: runs what the user asked for (typed statements, menu entries, clicks in the
// outliner, the start-up commands) through the command language, and tells the window when it
// is done so that titles, menus and labels catch up.
//
// Every statement is echoed to the script output as it runs and recorded for undo, as if the
// user had typed it; the first failing statement stops the rest and its error is already in
// the script output when run() returns. A text that does not parse runs nothing and is echoed
// whole with the syntax error. finished() is emitted after every run, failed or not.
#pragma once

#include "HStatus.h"

#include <QObject>
#include <QString>

namespace app {

class CommandRunner : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // showResults writes each statement's result as "// Result: VALUE" (the script editor).
    HStatus run(const QString& text, bool showResults = false);
    // Runs a command that only asks something (no echo, no undo); its result as text. Errors
    // still go to the script output.
    static QString query(const QString& text, HStatus* status = nullptr);

    // text as a double-quoted string of the command language (a path, a name).
    static QString quoted(const QString& text);

    // Whether the command language has a command of this name now (plug-ins come and go).
    static bool exists(const char* command);

signals:
    void finished();
};

} // namespace app
