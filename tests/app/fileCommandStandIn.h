// fileCommandStandIn: a `file` command for the tests of the File menu, so that they check what
// the menu asks of the command without reading or writing scene files.
//
// While a FileCommandStandIn lives it replaces any `file` command. It records each call's
// arguments as one text ("-force -new", "-open /tmp/a b.vscene"), answers `-q -sceneName` with
// the name set by `-rename` (or sceneName), clears the modified mark on `-save`, empties the
// scene on `-new` and `-open`, and refuses `-new` and `-open` of a modified scene without
// `-force` with "The scene has unsaved changes.", as the real command does, and `-open` of a
// file that does not exist. failSave makes `-save` fail.
#pragma once

#include "ScopedCommand.h"

#include <QString>
#include <QStringList>

namespace appfixture {

struct FileCommandState {
    QStringList calls;
    QString sceneName;
    bool failSave = false;
};

class FileCommandStandIn {
public:
    FileCommandStandIn();
    ~FileCommandStandIn();

    FileCommandState& state();

private:
    ScopedCommand m_command;
};

} // namespace appfixture
