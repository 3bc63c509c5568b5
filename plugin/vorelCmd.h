// vorelCmd: the plug-in's one host command. Without flags it opens the Vorel window (created
// once, under the host's main window) and shows it. With one of its flags (the eight edits of
// the window's controls, and -paste) it performs the edit that the window's model prepared: doIt
// makes the edit's object (the window's class for that kind of edit where there is one) from
// editorModel's request and holds it; redoIt and undoIt forward to it. Each edit object writes
// through the skin clusters, keeps the weights it replaced, writes them back on undo, and lets
// the table read back the rows it wrote. One command stands for one edit; the host owns it (its
// undo queue keeps it) and it owns its edit.
//
// The first flag whose edit can be prepared is performed; a flag whose preparation fails (it
// said why) lets the next one be tried. A run that prepared nothing is still kept by the host:
// its undo writes nothing, reads the table again and fails; its redo only reads the table again.
//
// Failures are reported as fixed sentences through the host's messages. A flag form run
// before the window exists is refused with an error, since there is no model to read.
#pragma once

#include "HArgList.h"
#include "HPxCommand.h"
#include "HStatus.h"
#include "HSyntax.h"
#include "editCommand.h"

#include <memory>

class vorelCmd : public HPxCommand {
public:
    vorelCmd();
    ~vorelCmd() override;
    HStatus doIt(const HArgList& args) override;
    HStatus undoIt() override;
    HStatus redoIt() override;
    bool isUndoable() const override;

private:
    // Makes the edit of one flag and prepares it from the model; false when it cannot be.
    bool prepareEdit(const char* flag);
    // Reads the whole table again, as a run without an edit does on undo and redo.
    void refreshTable();

    std::unique_ptr<editCommand> edit;
};

// The creator and syntax the plug-in registers the command with.
HPxCommand* createCommand();
HSyntax createSyntax();
